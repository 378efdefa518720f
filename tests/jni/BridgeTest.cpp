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
NATIVE(jint, Handle, largestTexture)(JNIEnv*, jclass);
NATIVE(jlong, VectorGraphicRenderer, Alloc)(JNIEnv*, jclass);
NATIVE(void, VectorGraphicRenderer, Free)(JNIEnv*, jclass, jlong);
NATIVE(void, VectorGraphicRenderer, renderRadialGradient)
(JNIEnv*, jclass, jlong, jfloat, jfloat, jfloat, jfloatArray, jfloat, jfloatArray);
NATIVE(jbyteArray, headless_HeadlessContext, nativeReadPicture)(JNIEnv*, jclass, jstring, jintArray);
}

namespace {

/// What the wrappers ask of the virtual machine, written down. Java arrays and strings are the C ones they show.
std::string asked;
float first[4] = {1.0F, 1.0F, 1.0F, 1.0F};
float second[4] = {1.0F, 1.0F, 1.0F, 1.0F};
const void* unpinnable = nullptr;

void* pin(void* object) {
    asked += object == second ? "pin second, " : "pin, ";
    return object == unpinnable ? nullptr : object;
}

void release(const void* object, const void* pinned) {
    EXPECT_EQ(pinned, object);
    asked += object == second ? "release second, " : "release, ";
}

class BridgeTest : public GLTest {
  protected:
    BridgeTest() {
        functions.GetFloatArrayElements = [](auto*, auto array, auto*) { return static_cast<jfloat*>(pin(array)); };
        functions.ReleaseFloatArrayElements = [](auto*, auto array, auto* elements, jint mode) {
            EXPECT_EQ(mode, 0) << "what was written is not copied back";
            release(array, elements);
        };
        functions.GetStringUTFChars = [](auto*, auto text, auto*) { return static_cast<const char*>(pin(text)); };
        functions.ReleaseStringUTFChars = [](auto*, auto text, auto* characters) { release(text, characters); };
        functions.ExceptionCheck = [](auto*) { return static_cast<jboolean>(unpinnable != nullptr); };
        functions.FindClass = [](auto*, auto*) -> jclass { return nullptr; };
        env.functions = &functions;
    }

    JNINativeInterface_ functions = {};
    JNIEnv env = {};
};

TEST_F(BridgeTest, ScreensEndWhereTexturesDo) {
    EXPECT_CALLS(Java_com_vyn_effect_tidalume_Handle_largestTexture(&env, nullptr), "glGetIntegerv MAX_TEXTURE_SIZE");
}

TEST_F(BridgeTest, HandlesAreSignExtendedAndZeroWithoutMemory) {
    EXPECT_EQ(tidalume::signExtended(uint32_t{0x80000001}), -0x7FFFFFFF);
    auto* tagged = reinterpret_cast<int*>(static_cast<uintptr_t>(0xB400007082345678)); // half of it on 32 bits
    EXPECT_EQ(tidalume::fromHandle<int>(tidalume::toHandle(tagged)), tagged);

    failingMalloc(0);
    const jlong handle = Java_com_vyn_effect_tidalume_VectorGraphicRenderer_Alloc(&env, nullptr);
    EXPECT_TRUE(failingMalloc(-1));
    EXPECT_EQ(handle, 0);
    Java_com_vyn_effect_tidalume_VectorGraphicRenderer_Free(&env, nullptr, handle);
}

TEST_F(BridgeTest, SettingsTakeAnyByteAndStringsThatFitAndGiveThemBack) {
    std::string longest(sizeof GlobalProperty::ROOT_DIR - 1, '/');
    std::string tooLong = "x" + longest;
    for (std::string* directory : {&longest, &tooLong}) {
        auto* const text = reinterpret_cast<jstring>(directory->data());
        for (const void* refused : {static_cast<void*>(text), static_cast<void*>(nullptr)}) {
            unpinnable = refused;
            Java_com_vyn_effect_tidalume_GlobalProperty_setROOTDIR(&env, nullptr, text);
            Java_com_vyn_effect_tidalume_headless_HeadlessContext_nativeReadPicture(&env, nullptr, text, nullptr);
            EXPECT_EQ(std::exchange(asked, ""), refused ? "pin, pin, " : "pin, release, pin, release, ");
        }
    }
    Java_com_vyn_effect_tidalume_GlobalProperty_setROOTDIR(&env, nullptr, nullptr);
    EXPECT_EQ(asked, "");
    EXPECT_EQ(GlobalProperty::ROOT_DIR, longest);
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
        {nullptr, second, nullptr, ""}, // begin, end, unpinnable, asked
        {first, second, first, "pin, "},
        {first, nullptr, nullptr, "pin, release, "},
        {first, second, second, "pin, pin second, release, "},
        {first, second, nullptr, "pin, pin second, release second, release, "},
    };
    VectorGraphicRenderer graphics;
    graphics.init();
    graphics.setScreenSize(width, height);
    glRecorder().reset();
    for (const auto& [begin, end, refused, expected] : calls) {
        EXPECT_TRUE(glRecorder().counts.empty());
        unpinnable = refused;
        Java_com_vyn_effect_tidalume_VectorGraphicRenderer_renderRadialGradient(
            &env, nullptr, tidalume::toHandle(&graphics), 9.0F, 9.0F, 2.0F, reinterpret_cast<jfloatArray>(begin), 9.0F,
            reinterpret_cast<jfloatArray>(end));
        EXPECT_EQ(std::exchange(asked, ""), expected);
    }
    EXPECT_EQ(glRecorder().counts["glDrawArrays"], 1);
}

} // namespace
