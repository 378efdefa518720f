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
#define SETTING(name, Argument) void NATIVE(GlobalProperty_##name)(JNIEnv*, jclass, Argument);
#define LIFE(Effect)                                                                                                   \
    jlong NATIVE(Effect##_Alloc)(JNIEnv*, jclass);                                                                     \
    void NATIVE(Effect##_Free)(JNIEnv*, jclass, jlong);
#define METHOD(name, ...) void NATIVE(name)(JNIEnv*, jclass, jlong, __VA_ARGS__);

extern "C" {
SETTING(setDEBUGLOG, jboolean)
SETTING(setBINARYSHADER, jboolean)
SETTING(setROOTDIR, jstring)
LIFE(CometRenderer)
LIFE(IntensityMapBuilder)
LIFE(Metaball2DRenderer)
LIFE(MetaballRenderer)
LIFE(NormalMapBuilder)
LIFE(ShallowWater)
LIFE(ShallowWaterIterative)
LIFE(ShallowWaterRenderer)
LIFE(VectorGraphicRenderer)
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

using testing::ElementsAre;
using testing::IsEmpty;

/// What the wrappers ask of the virtual machine, written down. Java arrays and strings are the C ones they show.
std::vector<std::string> asked;
float first[6] = {48.0F, 30.0F, 20.0F, 0.5F};
float second[6] = {10.0F, 50.0F, 20.0F, 0.5F};
const void* unpinnable = nullptr;

std::string nameOf(const void* array) {
    return array == first ? "first" : array == second ? "second" : "string";
}

jfloat* pinFloats(JNIEnv*, jfloatArray array, jboolean*) {
    asked.push_back("pin " + nameOf(array));
    return array == unpinnable ? nullptr : reinterpret_cast<jfloat*>(array);
}

void releaseFloats(JNIEnv*, jfloatArray array, jfloat* elements, jint mode) {
    EXPECT_EQ(elements, reinterpret_cast<jfloat*>(array));
    asked.push_back("release " + nameOf(array) + " " + std::to_string(mode));
}

const char* pinString(JNIEnv*, jstring string, jboolean*) {
    asked.push_back("pin " + nameOf(string));
    return string == unpinnable ? nullptr : reinterpret_cast<const char*>(string);
}

void releaseString(JNIEnv*, jstring string, const char* characters) {
    EXPECT_EQ(characters, reinterpret_cast<const char*>(string));
    asked.push_back("release " + nameOf(string));
}

class BridgeTest : public GLTest {
  protected:
    BridgeTest() {
        unpinnable = nullptr;
        asked.clear();
        functions.GetFloatArrayElements = pinFloats;
        functions.ReleaseFloatArrayElements = releaseFloats;
        functions.GetStringUTFChars = pinString;
        functions.ReleaseStringUTFChars = releaseString;
        env.functions = &functions;
    }

    std::vector<std::string> takeAsked() { return std::exchange(asked, {}); }

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
#define ALLOC_FREE(Effect)                                                                                             \
    { NATIVE(Effect##_Alloc), NATIVE(Effect##_Free) }
    const std::pair<decltype(&NATIVE(CometRenderer_Alloc)), decltype(&NATIVE(CometRenderer_Free))> lives[] = {
        ALLOC_FREE(CometRenderer),         ALLOC_FREE(IntensityMapBuilder),  ALLOC_FREE(Metaball2DRenderer),
        ALLOC_FREE(MetaballRenderer),      ALLOC_FREE(NormalMapBuilder),     ALLOC_FREE(ShallowWater),
        ALLOC_FREE(ShallowWaterIterative), ALLOC_FREE(ShallowWaterRenderer), ALLOC_FREE(VectorGraphicRenderer)};
    for (const auto& [Alloc, Free] : lives) {
        failingMalloc(0);
        const jlong handle = Alloc(&env, nullptr);
        EXPECT_TRUE(failingMalloc(-1));
        EXPECT_EQ(handle, 0);
        Free(&env, nullptr, handle);
    }
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
    const auto set = [&](std::string directory) {
        NATIVE(GlobalProperty_setROOTDIR)(&env, nullptr, reinterpret_cast<jstring>(directory.data()));
        return takeAsked();
    };
    const std::string longest(1023, 'x');
    EXPECT_THAT(set(longest), ElementsAre("pin string", "release string"));
    EXPECT_EQ(GlobalProperty::ROOT_DIR, longest);
    EXPECT_THAT(set(std::string(1024, 'y')), ElementsAre("pin string", "release string"));
    EXPECT_EQ(GlobalProperty::ROOT_DIR, longest);
    set("/short/");
    EXPECT_STREQ(GlobalProperty::ROOT_DIR, "/short/") << "nothing of a longer one stays behind";

    NATIVE(GlobalProperty_setROOTDIR)(&env, nullptr, nullptr);
    EXPECT_THAT(takeAsked(), IsEmpty());
    char refused[] = "/refused/";
    unpinnable = refused;
    NATIVE(GlobalProperty_setROOTDIR)(&env, nullptr, reinterpret_cast<jstring>(refused));
    EXPECT_THAT(takeAsked(), ElementsAre("pin string"));
    EXPECT_STREQ(GlobalProperty::ROOT_DIR, "/short/");
}

/// Arrays are pinned in parameter order up to one that fails, and released in reverse with what was written. Without
/// one nothing is drawn.
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

    using Arrays = std::function<void(jfloatArray, jfloatArray)>;
#define CALL(effect, name, ...)                                                                                        \
    [&](jfloatArray a, [[maybe_unused]] jfloatArray b) {                                                               \
        NATIVE(name)(&env, nullptr, tidalume::toHandle(&(effect)), __VA_ARGS__);                                       \
    }
    const std::pair<const char*, Arrays> ofOne[] = {
        {"addMetaballs", CALL(metaballs, Metaball2DRenderer_addMetaballs, a, 1)},
        {"render", CALL(metaballs, Metaball2DRenderer_render, a)},
        {"addDrop", CALL(pond, ShallowWater_addDrop, a, 8, 1)},
        {"iterative addDrop", CALL(water, ShallowWaterIterative_addDrop, a, 8, 1, 1)},
        {"renderCircle", CALL(graphics, VectorGraphicRenderer_renderCircle, 9, 9, 9, a)},
        {"renderBitmapCircle", CALL(graphics, VectorGraphicRenderer_renderBitmapCircle, 9, 9, 9, a, 0)},
    };
    const std::pair<const char*, Arrays> ofTwo[] = {
        {"heights addDropLine", CALL(heights, IntensityMapBuilder_addDropLine, a, b, 8, 1, 1)},
        {"pond addDropLine", CALL(pond, ShallowWater_addDropLine, a, b, 8, 1)},
        {"iterative addDropLine", CALL(water, ShallowWaterIterative_addDropLine, a, b, 8, 1, 1)},
        {"renderRadialGradient", CALL(graphics, VectorGraphicRenderer_renderRadialGradient, 9, 9, 2, a, 9, b)},
    };
    auto* const a = reinterpret_cast<jfloatArray>(first);
    auto* const b = reinterpret_cast<jfloatArray>(second);
    const auto drawn = [&](const Arrays& call, jfloatArray one, jfloatArray other, const void* refused = nullptr) {
        unpinnable = refused;
        return !glRecorder().record([&] { call(one, other); }).empty();
    };
    for (const auto& [name, call] : ofOne) {
        EXPECT_TRUE(drawn(call, a, nullptr)) << name;
        EXPECT_THAT(takeAsked(), ElementsAre("pin first", "release first 0")) << name;
        EXPECT_FALSE(drawn(call, nullptr, nullptr)) << name;
        EXPECT_THAT(takeAsked(), IsEmpty()) << name;
        EXPECT_FALSE(drawn(call, a, nullptr, a)) << name;
        EXPECT_THAT(takeAsked(), ElementsAre("pin first")) << name;
    }
    for (const auto& [name, call] : ofTwo) {
        EXPECT_TRUE(drawn(call, a, b)) << name;
        EXPECT_THAT(takeAsked(), ElementsAre("pin first", "pin second", "release second 0", "release first 0")) << name;
        EXPECT_FALSE(drawn(call, a, nullptr)) << name;
        EXPECT_THAT(takeAsked(), ElementsAre("pin first", "release first 0")) << name;
        EXPECT_FALSE(drawn(call, a, b, b)) << name;
        EXPECT_THAT(takeAsked(), ElementsAre("pin first", "pin second", "release first 0")) << name;
        EXPECT_FALSE(drawn(call, nullptr, b)) << name;
        EXPECT_THAT(takeAsked(), IsEmpty()) << name;
        EXPECT_FALSE(drawn(call, a, b, a)) << name;
        EXPECT_THAT(takeAsked(), ElementsAre("pin first")) << name << ": the exception of a failed pin may be pending";
    }
    log.take();
}

} // namespace
