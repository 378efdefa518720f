#include "jni/Bridge.h"

#include "effects/vector/VectorGraphicRenderer.h"
#include "tests/support/FailingMalloc.h"
#include "tests/support/GLTest.h"

#include <cstdint>
#include <string>
#include <tuple>
#include <utility>

extern "C" {
NATIVE(void, GlobalProperty, setDEBUGLOG)(JNIEnv*, jclass, jboolean);
NATIVE(void, GlobalProperty, setBINARYSHADER)(JNIEnv*, jclass, jboolean);
NATIVE(void, GlobalProperty, setROOTDIR)(JNIEnv*, jclass, jstring);
NATIVE(jlong, VectorGraphicRenderer, Alloc)(JNIEnv*, jclass);
NATIVE(void, VectorGraphicRenderer, Free)(JNIEnv*, jclass, jlong);
NATIVE(void, VectorGraphicRenderer, renderRadialGradient)
(JNIEnv*, jclass, jlong, jfloat, jfloat, jfloat, jfloatArray, jfloat, jfloatArray);
NATIVE(jbyteArray, headless_HeadlessContext, nativeReadPicture)(JNIEnv*, jclass, jstring, jintArray);
}

namespace {

/// What the wrappers ask of the virtual machine, written down. Java arrays are the C ones they show.
std::string asked;
float first[4] = {1.0F, 1.0F, 1.0F, 1.0F};
float second[4] = {1.0F, 1.0F, 1.0F, 1.0F};
const float* unpinnable = nullptr;

jfloat* pin(JNIEnv*, jfloatArray array, jboolean*) {
    auto* const elements = reinterpret_cast<float*>(array);
    asked += elements == second ? "pin second, " : "pin, ";
    return elements == unpinnable ? nullptr : elements;
}

void release(JNIEnv*, jfloatArray array, jfloat* elements, jint mode) {
    EXPECT_EQ(elements, reinterpret_cast<jfloat*>(array));
    asked += (elements == second ? "release second " : "release ") + std::to_string(mode) + ", ";
}

class BridgeTest : public GLTest {
  protected:
    BridgeTest() {
        functions.GetFloatArrayElements = pin;
        functions.ReleaseFloatArrayElements = release;
        env.functions = &functions;
    }

    JNINativeInterface_ functions = {};
    JNIEnv env = {};
};

TEST_F(BridgeTest, HandlesAreSignExtendedAndZeroWithoutMemory) {
    EXPECT_EQ(tidalume::signExtended(uint32_t{0x80000001}), -0x7FFFFFFF);
    EXPECT_EQ(tidalume::signExtended(uint32_t{0x7FFFFFFF}), 0x7FFFFFFF);
    auto* tagged = reinterpret_cast<int*>(static_cast<uintptr_t>(0xB400007082345678)); // half of it on 32 bits
    EXPECT_EQ(tidalume::fromHandle<int>(tidalume::toHandle(tagged)), tagged);

    failingMalloc(0);
    const jlong handle = Java_com_vyn_effect_tidalume_VectorGraphicRenderer_Alloc(&env, nullptr);
    EXPECT_TRUE(failingMalloc(-1));
    EXPECT_EQ(handle, 0);
    Java_com_vyn_effect_tidalume_VectorGraphicRenderer_Free(&env, nullptr, handle);
}

TEST_F(BridgeTest, SettingsTakeAnyByteAndGiveStringsBack) {
    static const char* pinned = nullptr;
    static const char* released = nullptr;
    functions.GetStringUTFChars = [](JNIEnv*, jstring, jboolean*) { return pinned; };
    functions.ReleaseStringUTFChars = [](JNIEnv*, jstring, const char* characters) { released = characters; };
    functions.ExceptionCheck = [](JNIEnv*) { return static_cast<jboolean>(pinned == nullptr); };
    functions.FindClass = [](JNIEnv*, const char*) -> jclass { return nullptr; };
    auto* const text = reinterpret_cast<jstring>(first);
    for (const char* directory : {static_cast<const char*>(nullptr), "/cache/"}) {
        pinned = directory;
        Java_com_vyn_effect_tidalume_GlobalProperty_setROOTDIR(&env, nullptr, text);
        EXPECT_EQ(std::exchange(released, nullptr), directory);
        Java_com_vyn_effect_tidalume_headless_HeadlessContext_nativeReadPicture(&env, nullptr, text, nullptr);
        EXPECT_EQ(std::exchange(released, nullptr), directory);
    }
    EXPECT_STREQ(GlobalProperty::ROOT_DIR, "/cache/");
    for (const int byte : {2, 0, 128}) {
        Java_com_vyn_effect_tidalume_GlobalProperty_setDEBUGLOG(&env, nullptr, static_cast<jboolean>(byte));
        EXPECT_EQ(GlobalProperty::DEBUG_LOG, byte != 0);
        Java_com_vyn_effect_tidalume_GlobalProperty_setBINARYSHADER(&env, nullptr, static_cast<jboolean>(byte));
        EXPECT_EQ(GlobalProperty::BINARY_SHADER, byte != 0);
    }
}

/// Arrays are pinned in parameter order up to one that is null or fails, since its exception may be pending, and
/// released in reverse with what was written. Without one nothing is drawn.
TEST_F(BridgeTest, PinsAndReleasesArrays) {
    const std::tuple<float*, float*, float*, const char*> calls[] = {
        {nullptr, second, nullptr, ""},
        {first, second, first, "pin, "},
        {first, nullptr, nullptr, "pin, release 0, "},
        {first, second, second, "pin, pin second, release 0, "},
        {first, second, nullptr, "pin, pin second, release second 0, release 0, "},
    };
    VectorGraphicRenderer graphics;
    graphics.init();
    graphics.setScreenSize(width, height);
    glRecorder().reset();
    for (const auto& [begin, end, failing, expected] : calls) {
        EXPECT_TRUE(glRecorder().counts.empty());
        unpinnable = failing;
        Java_com_vyn_effect_tidalume_VectorGraphicRenderer_renderRadialGradient(
            &env, nullptr, tidalume::toHandle(&graphics), 9.0F, 9.0F, 2.0F, reinterpret_cast<jfloatArray>(begin), 9.0F,
            reinterpret_cast<jfloatArray>(end));
        EXPECT_EQ(std::exchange(asked, ""), expected);
    }
    EXPECT_EQ(glRecorder().counts["glDrawArrays"], 1);
}

} // namespace
