// A hostile caller on a GL that costs next to nothing: objects of all classes and calls of all their functions, in any
// order and with odd arguments, on contexts that are lost now and then. The sanitizers find reads beyond arrays and
// leaked memory.

#include "EffectHeaders.inc"
#include "foundation/GlobalProperty.h"
#include "testing/BareGL.h"

#include <android/log.h>

#include <cassert>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <fuzzer/FuzzedDataProvider.h>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

namespace {

using Choices = FuzzedDataProvider;

bool isOdd(Choices& choices) {
    return choices.ConsumeIntegralInRange(0, 5) == 5;
}

/// An argument, chosen by its type. Arrays hold as many floats as are read.
template <typename Type>
struct Argument {
    Argument(Choices& choices, int /*floats*/) {
        using Limits = std::numeric_limits<Type>;
        if constexpr (std::is_same_v<Type, bool>)
            value = choices.ConsumeBool();
        else if constexpr (std::is_integral_v<Type>)
            value = isOdd(choices) ? choices.PickValueInArray<Type>({0, Limits::min(), Limits::max(), 1U << 20})
                                   : choices.ConsumeIntegralInRange<Type>(0, 160);
        else
            value = isOdd(choices)
                        ? choices.PickValueInArray<Type>({0, -1, Limits::denorm_min(), Limits::max(), Limits::lowest(),
                                                          Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN()})
                        : static_cast<Type>(choices.ConsumeIntegral<unsigned char>()) / 2;
    }
    Type value;
};

template <>
struct Argument<float*> {
    Argument(Choices& choices, int floats) : numbers(new float[static_cast<size_t>(floats)]), value(numbers.get()) {
        for (int i = 0; i < floats; ++i)
            value[i] = Argument<float>(choices, 0).value;
    }
    std::unique_ptr<float[]> numbers;
    float* value;
};

/// A function of an effect, called with chosen arguments.
using Call = std::function<void(void* effect, Choices&)>;

/// An array holds a point where something is dropped, elsewhere a color.
template <typename Effect, typename Result, typename... Types>
Call call(Result (Effect::*function)(Types...), const std::string& name) {
    const int floats = name.rfind("addDrop", 0) == 0 ? 2 : 4;
    return [=](void* effect, Choices& choices) {
        const std::tuple<Argument<Types>...> arguments{Argument<Types>(choices, floats)...};
        std::apply([&](const auto&... each) { (static_cast<Effect*>(effect)->*function)(each.value...); }, arguments);
    };
}

/// Floats for no more balls than there are; the last ball's two unused ones are not there.
Call call(void (Metaball2DRenderer::*addMetaballs)(float*, unsigned int), const std::string& /*name*/) {
    return [=](void* effect, Choices& choices) {
        const auto count = choices.ConsumeIntegralInRange<unsigned int>(1, 3);
        const Argument<float*> balls(choices, static_cast<int>(6 * count - 2));
        (static_cast<Metaball2DRenderer*>(effect)->*addMetaballs)(balls.value, count);
    };
}

/// A huge number of passes is no error, only long.
Call call(void (ShallowWaterIterative::*setIterationCount)(int), const std::string& /*name*/) {
    return [=](void* effect, Choices& choices) {
        (static_cast<ShallowWaterIterative*>(effect)->*setIterationCount)(choices.ConsumeIntegralInRange(-2, 16));
    };
}

struct Kind {
    std::shared_ptr<void> (*make)();
    Call forget;
    std::map<std::string, Call> calls; ///< but to forget
};

std::vector<Kind> allKinds() {
    std::vector<Kind> kinds;
#define KIND(Class)                                                                                                    \
    kinds.push_back({[]() -> std::shared_ptr<void> { return std::make_shared<Class>(); },                              \
                     call(&Class::GLContextDestroyed, "GLContextDestroyed"),                                           \
                     {}});
#define CALL(Class, function) kinds.back().calls[#function] = call(&Class::function, #function);
#include "EffectCalls.inc"
    return kinds;
}

const std::vector<Kind> kinds = allKinds();

template <typename Values>
auto& pick(Choices& choices, Values& values) {
    return *std::next(values.begin(), choices.ConsumeIntegralInRange<std::ptrdiff_t>(0, values.size() - 1));
}

struct Object {
    const Kind* kind;
    std::shared_ptr<void> effect;
};

void step(std::vector<Object>& objects, Choices& choices) {
    const int choice = choices.ConsumeIntegralInRange(0, 31);
    if (objects.empty() || choice < 4) {
        const Kind& kind = pick(choices, kinds);
        objects.push_back({&kind, kind.make()});
        const int steps = choices.ConsumeIntegralInRange(0, 5); // below 2 calls come too early
        if (steps > 0) kind.calls.at("init")(objects.back().effect.get(), choices);
        if (steps > 1) kind.calls.at("setScreenSize")(objects.back().effect.get(), choices);
    } else if (choice < 6) {
        objects.erase(objects.begin());
    } else if (choice < 7) {
        for (const Object& object : objects)
            object.kind->forget(object.effect.get(), choices);
        bareGLReset();
    } else {
        const Object& object = pick(choices, objects);
        pick(choices, object.kind->calls).second(object.effect.get(), choices);
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    __android_log_set_logger([](const __android_logger_data*, const char*) {});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    srand48(1);
    bareGLReset();
    Choices choices(data, size);
    GlobalProperty::BINARY_SHADER = choices.ConsumeIntegralInRange(0, 31) == 31;
    std::strcpy(GlobalProperty::ROOT_DIR, "/absent/");
    std::vector<Object> objects;
    while (choices.remaining_bytes() > 0)
        step(objects, choices);
    objects.clear();
    assert(bareGLLiveObjects() == 0 && "a GL object was leaked");
    return 0;
}
