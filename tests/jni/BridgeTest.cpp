#include "jni/Bridge.h"

#include "effects/metaball/Metaball2DRenderer.h"
#include "effects/vector/VectorGraphicRenderer.h"
#include "effects/water/IntensityMapBuilder.h"
#include "effects/water/ShallowWater.h"
#include "effects/water/ShallowWaterIterative.h"
#include "tests/support/FailingMalloc.h"
#include "tests/support/GLTest.h"

#include <cstdint>
#include <functional>
#include <gmock/gmock.h>

#define NATIVE(name) Java_com_vyn_effect_tidalume_##name
#define METHOD(name, ...) void NATIVE(name)(JNIEnv*, jclass, jlong, __VA_ARGS__);
#define LIFE(Effect)                                                                                                   \
    jlong NATIVE(Effect##_Alloc)(JNIEnv*, jclass);                                                                     \
    void NATIVE(Effect##_Free)(JNIEnv*, jclass, jlong);
#define FOR_EACH_EFFECT(apply)                                                                                         \
    apply(CometRenderer) apply(IntensityMapBuilder) apply(Metaball2DRenderer) apply(MetaballRenderer)                  \
        apply(NormalMapBuilder) apply(ShallowWater) apply(ShallowWaterIterative) apply(ShallowWaterRenderer)           \
            apply(VectorGraphicRenderer)

extern "C" {
FOR_EACH_EFFECT(LIFE)
void NATIVE(GlobalProperty_setDEBUGLOG)(JNIEnv*, jclass, jboolean);
void NATIVE(GlobalProperty_setBINARYSHADER)(JNIEnv*, jclass, jboolean);
void NATIVE(GlobalProperty_setROOTDIR)(JNIEnv*, jclass, jstring);
METHOD(IntensityMapBuilder_addDropLine, jfloatArray, jfloatArray, jfloat, jfloat, jfloat)
METHOD(Metaball2DRenderer_addMetaballs, jfloatArray, jint)
METHOD(Metaball2DRenderer_render, jfloatArray)
METHOD(ShallowWater_addDrop, jfloatArray, jfloat, jfloat)
METHOD(ShallowWater_addDropLine, jfloatArray, jfloatArray, jfloat, jfloat)
METHOD(ShallowWaterIterative_addDrop, jfloatArray, jfloat, jfloat, jfloat)
METHOD(ShallowWaterIterative_addDropLine, jfloatArray, jfloatArray, jfloat, jfloat, jfloat)
METHOD(VectorGraphicRenderer_renderRadialGradient, jfloat, jfloat, jfloat, jfloatArray, jfloat, jfloatArray)
METHOD(VectorGraphicRenderer_renderCircle, jfloat, jfloat, jfloat, jfloatArray)
METHOD(VectorGraphicRenderer_renderBitmapCircle, jfloat, jfloat, jfloat, jfloatArray, jint)
}

namespace {

using Asked = std::vector<std::string>;

/// What the wrappers ask of the virtual machine, written down. Java arrays and strings are the C ones they show.
Asked asked;
float first[6] = {48.0F, 30.0F, 20.0F, 0.5F};
float second[6] = {10.0F, 50.0F, 20.0F, 0.5F};
const void* unpinnable = nullptr;

template <typename Object, typename Element>
Element* pin(JNIEnv*, Object object, jboolean*) {
    const void* address = object;
    asked.emplace_back(address == second ? "pin second" : "pin");
    return address == unpinnable ? nullptr : reinterpret_cast<Element*>(object);
}

void releaseFloats(JNIEnv*, jfloatArray array, jfloat* elements, jint mode) {
    EXPECT_EQ(elements, reinterpret_cast<jfloat*>(array));
    asked.push_back((elements == second ? "release second " : "release ") + std::to_string(mode));
}

void releaseString(JNIEnv*, jstring string, const char* characters) {
    EXPECT_EQ(characters, reinterpret_cast<const char*>(string));
    asked.emplace_back("release");
}

class BridgeTest : public GLTest {
  protected:
    BridgeTest() {
        unpinnable = nullptr;
        asked.clear();
        functions.GetFloatArrayElements = pin<jfloatArray, jfloat>;
        functions.ReleaseFloatArrayElements = releaseFloats;
        functions.GetStringUTFChars = pin<jstring, const char>;
        functions.ReleaseStringUTFChars = releaseString;
        env.functions = &functions;
    }

    Asked takeAsked() { return std::exchange(asked, {}); }

    JNINativeInterface_ functions = {};
    JNIEnv env = {};
};

TEST_F(BridgeTest, HandlesAreSignExtended) {
    EXPECT_EQ(tidalume::signExtended(uint32_t{0x80000001}), -0x7FFFFFFF);
    EXPECT_EQ(tidalume::signExtended(uint32_t{0x7FFFFFFF}), 0x7FFFFFFF);
    const auto address = static_cast<uintptr_t>(0xB400007082345678); // the lower half of it on 32 bits
    auto* tagged = reinterpret_cast<int*>(address);
    EXPECT_EQ(tidalume::toHandle(tagged), static_cast<jlong>(static_cast<intptr_t>(address)));
    EXPECT_EQ(tidalume::fromHandle<int>(tidalume::toHandle(tagged)), tagged);
}

TEST_F(BridgeTest, WithoutMemoryTheHandleIsZeroAndFreeingItDoesNothing) {
    const auto test = [&](auto* Alloc, auto* Free) {
        failingMalloc(0);
        const jlong handle = Alloc(&env, nullptr);
        EXPECT_TRUE(failingMalloc(-1));
        EXPECT_EQ(handle, 0);
        Free(&env, nullptr, handle);
    };
#define TEST_LIFE(Effect) test(NATIVE(Effect##_Alloc), NATIVE(Effect##_Free));
    FOR_EACH_EFFECT(TEST_LIFE)
}

TEST_F(BridgeTest, AnyNonZeroByteSwitchesASettingOn) {
    for (const int byte : {1, 0, 2, 0, 128, 0}) {
        NATIVE(GlobalProperty_setDEBUGLOG)(&env, nullptr, static_cast<jboolean>(byte));
        NATIVE(GlobalProperty_setBINARYSHADER)(&env, nullptr, static_cast<jboolean>(255 * byte));
        EXPECT_EQ(GlobalProperty::DEBUG_LOG, byte != 0);
        EXPECT_EQ(GlobalProperty::BINARY_SHADER, byte != 0);
    }
}

TEST_F(BridgeTest, ADirectoryFitsWholeOrIsIgnored) {
    const std::string longest(1023, 'x');
    const std::tuple<std::string, std::string, const char*> rows[] = {
        {longest, longest, "longest"},
        {std::string(1024, 'y'), longest, "too long"},
        {"/short/", "/short/", "nothing of a longer one stays behind"},
    };
    for (const auto& [directory, expected, name] : rows) {
        NATIVE(GlobalProperty_setROOTDIR)
        (&env, nullptr, reinterpret_cast<jstring>(const_cast<char*>(directory.data())));
        EXPECT_EQ(takeAsked(), (Asked{"pin", "release"})) << name;
        EXPECT_EQ(GlobalProperty::ROOT_DIR, expected) << name;
    }
    NATIVE(GlobalProperty_setROOTDIR)(&env, nullptr, nullptr);
    EXPECT_EQ(takeAsked(), Asked{});
    char refused[] = "/refused/";
    unpinnable = refused;
    NATIVE(GlobalProperty_setROOTDIR)(&env, nullptr, reinterpret_cast<jstring>(refused));
    EXPECT_EQ(takeAsked(), Asked{"pin"});
    EXPECT_STREQ(GlobalProperty::ROOT_DIR, "/short/");
}

/// Arrays are pinned in parameter order up to one that is null or fails, since its exception may be pending, and
/// released in reverse with what was written. Without one nothing is drawn.
TEST_F(BridgeTest, PinsAndReleasesArrays) {
    IntensityMapBuilder heights;
    Metaball2DRenderer metaballs;
    ShallowWater pond;
    ShallowWaterIterative water;
    VectorGraphicRenderer graphics;
    metaballs.init(1.0F);
    metaballs.setScreenSize(width, height);
    const auto ready = [](auto&... effects) { ((effects.init(), effects.setScreenSize(width, height)), ...); };
    ready(heights, pond, water, graphics);

    const auto draws = [&](auto* native, auto& effect, auto... arguments) {
        return !glRecorder().record([&] { native(&env, nullptr, tidalume::toHandle(&effect), arguments...); }).empty();
    };
    using Array = jfloatArray;
    const std::function<bool(Array)> ofOne[] = {
        [&](Array a) { return draws(NATIVE(Metaball2DRenderer_addMetaballs), metaballs, a, 1); },
        [&](Array a) { return draws(NATIVE(Metaball2DRenderer_render), metaballs, a); },
        [&](Array a) { return draws(NATIVE(ShallowWater_addDrop), pond, a, 8.F, 1.F); },
        [&](Array a) { return draws(NATIVE(ShallowWaterIterative_addDrop), water, a, 8.F, 1.F, 1.F); },
        [&](Array a) { return draws(NATIVE(VectorGraphicRenderer_renderCircle), graphics, 9.F, 9.F, 9.F, a); },
        [&](Array a) { return draws(NATIVE(VectorGraphicRenderer_renderBitmapCircle), graphics, 9.F, 9.F, 9.F, a, 0); },
    };
    const std::function<bool(Array, Array)> ofTwo[] = {
        [&](Array a, Array b) { return draws(NATIVE(IntensityMapBuilder_addDropLine), heights, a, b, 8.F, 1.F, 1.F); },
        [&](Array a, Array b) { return draws(NATIVE(ShallowWater_addDropLine), pond, a, b, 8.F, 1.F); },
        [&](Array a, Array b) { return draws(NATIVE(ShallowWaterIterative_addDropLine), water, a, b, 8.F, 1.F, 1.F); },
        [&](Array a, Array b) {
            return draws(NATIVE(VectorGraphicRenderer_renderRadialGradient), graphics, 9.F, 9.F, 2.F, a, 9.F, b);
        },
    };
    auto* const a = reinterpret_cast<jfloatArray>(first);
    auto* const b = reinterpret_cast<jfloatArray>(second);
    const auto check = [&](const auto& call, const void* refused, bool drawn, const Asked& expected) {
        unpinnable = refused;
        EXPECT_EQ(call(), drawn);
        EXPECT_EQ(takeAsked(), expected);
    };
    for (const auto& call : ofOne) {
        SCOPED_TRACE(&call - ofOne);
        check([&] { return call(a); }, nullptr, true, {"pin", "release 0"});
        check([&] { return call(nullptr); }, nullptr, false, {});
        check([&] { return call(a); }, a, false, {"pin"});
    }
    for (const auto& call : ofTwo) {
        SCOPED_TRACE(&call - ofTwo);
        check([&] { return call(a, b); }, nullptr, true, {"pin", "pin second", "release second 0", "release 0"});
        check([&] { return call(a, nullptr); }, nullptr, false, {"pin", "release 0"});
        check([&] { return call(a, b); }, b, false, {"pin", "pin second", "release 0"});
        check([&] { return call(nullptr, b); }, nullptr, false, {});
        check([&] { return call(a, b); }, a, false, {"pin"});
    }
    log.take();
}

} // namespace
