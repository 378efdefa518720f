// A hostile caller on a GL that costs next to nothing: objects of all classes and calls of their functions, in any
// order and with odd arguments, on contexts that are lost now and then. Reads beyond arrays and leaked memory are the
// sanitizers' to see.

#include "effects/comet/CometRenderer.h"
#include "effects/metaball/MetaballRenderer.h"
#include "effects/vector/VectorGraphicRenderer.h"
#include "effects/water/IntensityMapBuilder.h"
#include "effects/water/NormalMapBuilder.h"
#include "effects/water/ShallowWater.h"
#include "effects/water/ShallowWaterIterative.h"
#include "effects/water/ShallowWaterRenderer.h"
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
#include <memory>
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

template <typename Effect, typename Result, typename... Types>
Call call(Result (Effect::*function)(Types...), int floats = 0) {
    return [=](void* effect, Choices& choices) {
        const std::tuple<Argument<Types>...> arguments{Argument<Types>(choices, floats)...};
        std::apply([&](const auto&... each) { (static_cast<Effect*>(effect)->*function)(each.value...); }, arguments);
    };
}

struct Kind {
    std::shared_ptr<void> (*make)();
    Call forget;
    std::vector<Call> calls; ///< `init` and `setScreenSize` first
};

template <typename Effect>
Kind kind(std::vector<Call> others) {
    std::vector<Call> calls = {call(&Effect::init), call(&Effect::setScreenSize)};
    calls.insert(calls.end(), others.begin(), others.end());
    return {[]() -> std::shared_ptr<void> { return std::make_shared<Effect>(); }, call(&Effect::GLContextDestroyed),
            calls};
}

/// Floats for no more balls than there are; the last ball's two unused ones are not there.
void addMetaballs(void* effect, Choices& choices) {
    const auto count = choices.ConsumeIntegralInRange<unsigned int>(1, 3);
    const Argument<float*> balls(choices, static_cast<int>(6 * count - 2));
    static_cast<Metaball2DRenderer*>(effect)->addMetaballs(balls.value, count);
}

/// A huge number of passes is no error, only long.
void setIterationCount(void* effect, Choices& choices) {
    static_cast<ShallowWaterIterative*>(effect)->setIterationCount(choices.ConsumeIntegralInRange(-2, 16));
}

const std::vector<Kind> kinds = {
    kind<Metaball2DRenderer>(
        {addMetaballs, call(&Metaball2DRenderer::render, 4), call(&Metaball2DRenderer::getTexture)}),
    kind<MetaballRenderer>(
        {call(&MetaballRenderer::push), call(&MetaballRenderer::update), call(&MetaballRenderer::render)}),
    kind<CometRenderer>({call(&CometRenderer::push), call(&CometRenderer::render), call(&CometRenderer::updateMesh),
                         call(&CometRenderer::getCore1X), call(&CometRenderer::getCore2Y)}),
    kind<VectorGraphicRenderer>(
        {call(&VectorGraphicRenderer::setBlendEquation), call(&VectorGraphicRenderer::setBlendFunction),
         call(&VectorGraphicRenderer::renderRadialGradient, 4), call(&VectorGraphicRenderer::renderCircle, 4),
         call(&VectorGraphicRenderer::renderBitmapCircle, 4), call(&VectorGraphicRenderer::renderBitmapRectangle),
         call(&VectorGraphicRenderer::renderRotatedAlphaMaskedBitmapRectangle)}),
    kind<IntensityMapBuilder>({call(&IntensityMapBuilder::addDropLine, 2),
                               call(&IntensityMapBuilder::addHorizontalWave), call(&IntensityMapBuilder::getTexture)}),
    kind<NormalMapBuilder>({call(&NormalMapBuilder::setHeightMax), call(&NormalMapBuilder::build)}),
    kind<ShallowWater>({call(&ShallowWater::addDrop, 2), call(&ShallowWater::addDropLine, 2),
                        call(&ShallowWater::update), call(&ShallowWater::getTexture)}),
    kind<ShallowWaterIterative>({setIterationCount, call(&ShallowWaterIterative::addDrop, 2),
                                 call(&ShallowWaterIterative::addDropLine, 2),
                                 call(&ShallowWaterIterative::addHorizontalWave), call(&ShallowWaterIterative::update),
                                 call(&ShallowWaterIterative::getTexture)}),
    kind<ShallowWaterRenderer>({call(&ShallowWaterRenderer::setTexture), call(&ShallowWaterRenderer::setBGFlip),
                                call(&ShallowWaterRenderer::render)}),
};

template <typename Value>
auto& pick(Choices& choices, Value& values) {
    return values[choices.ConsumeIntegralInRange<size_t>(0, values.size() - 1)];
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
        for (int i = 0; i < std::min(steps, 2); ++i)
            kind.calls[static_cast<size_t>(i)](objects.back().effect.get(), choices);
    } else if (choice < 6) {
        objects.erase(objects.begin());
    } else if (choice < 7) {
        for (const Object& object : objects)
            object.kind->forget(object.effect.get(), choices);
        bareGLReset();
    } else {
        const Object& object = pick(choices, objects);
        pick(choices, object.kind->calls)(object.effect.get(), choices);
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
