#include "headless/HeadlessContext.h"

#include "headless/Error.h"
#include "headless/PictureFile.h"
#include "headless/Pixels.h"

#include <jni.h>

#include <memory>
#include <new>
#include <string>

#define TIDALUME_HEADLESS_JNI(type, method)                                                                            \
    extern "C" JNIEXPORT type JNICALL Java_com_vyn_effect_tidalume_headless_HeadlessContext_##method

using namespace tidalume;
using namespace tidalume::headless;

namespace {

HeadlessContext* contextOf(jlong handle) {
    return reinterpret_cast<HeadlessContext*>(handle); // NOLINT(performance-no-int-to-ptr): a handle is an address
}

void throwJava(JNIEnv* env, const char* className, const char* message) {
    const jclass exception = env->FindClass(className);
    if (exception != nullptr) env->ThrowNew(exception, message);
}

// Runs a body and turns what it throws into a Java exception: Error becomes one of the given class.
template <typename Body>
auto guarded(JNIEnv* env, const char* errorClass, Body body) -> decltype(body()) {
    try {
        return body();
    } catch (const Error& error) {
        throwJava(env, errorClass, error.what());
    } catch (const std::bad_alloc&) {
        throwJava(env, "java/lang/OutOfMemoryError", "no memory for the pixels");
    } catch (const std::exception& error) {
        throwJava(env, "java/lang/IllegalStateException", error.what());
    }
    return decltype(body())();
}

template <typename Body>
auto guarded(JNIEnv* env, Body body) -> decltype(body()) {
    return guarded(env, "java/lang/IllegalStateException", body);
}

jfloatArray toJava(JNIEnv* env, const PixelArray& pixels) {
    const auto length = static_cast<jsize>(pixels.rgba.size());
    const jfloatArray array = env->NewFloatArray(length);
    if (array != nullptr) env->SetFloatArrayRegion(array, 0, length, pixels.rgba.data());
    return array;
}

// Empty where Java has no memory for the characters; its exception is pending then.
std::string toString(JNIEnv* env, jstring text) {
    const char* utf8 = env->GetStringUTFChars(text, nullptr);
    if (utf8 == nullptr) return {};
    std::string copy = utf8;
    env->ReleaseStringUTFChars(text, utf8);
    return copy;
}

} // namespace

TIDALUME_HEADLESS_JNI(jlong, nativeCreate)(JNIEnv* env, jclass, jint width, jint height) {
    return guarded(env, [=] { return reinterpret_cast<jlong>(new HeadlessContext(width, height)); });
}

TIDALUME_HEADLESS_JNI(void, nativeRecreate)(JNIEnv* env, jclass, jlong handle) {
    guarded(env, [=] { contextOf(handle)->recreate(); });
}

TIDALUME_HEADLESS_JNI(void, nativeResize)(JNIEnv* env, jclass, jlong handle, jint width, jint height) {
    guarded(env, [=] { contextOf(handle)->resize(width, height); });
}

TIDALUME_HEADLESS_JNI(jbyteArray, nativeReadPicture)(JNIEnv* env, jclass, jstring file, jintArray size) {
    const std::string path = toString(env, file);
    if (env->ExceptionCheck()) return nullptr;
    return guarded(env, "java/io/IOException", [=]() -> jbyteArray {
        const Picture picture = readPicture(path);
        const jint extent[] = {picture.width, picture.height};
        env->SetIntArrayRegion(size, 0, 2, extent);
        if (env->ExceptionCheck()) return nullptr;
        const auto length = static_cast<jsize>(picture.rgba.size());
        const jbyteArray bytes = env->NewByteArray(length);
        if (bytes != nullptr)
            env->SetByteArrayRegion(bytes, 0, length, reinterpret_cast<const jbyte*>(picture.rgba.data()));
        return bytes;
    });
}

TIDALUME_HEADLESS_JNI(jstring, nativeDriver)(JNIEnv* env, jclass, jlong handle) {
    return guarded(env, [=] { return env->NewStringUTF(contextOf(handle)->driver().c_str()); });
}

TIDALUME_HEADLESS_JNI(void, nativeClear)
(JNIEnv*, jclass, jlong, jfloat red, jfloat green, jfloat blue, jfloat alpha) {
    glClearColor(red, green, blue, alpha);
    glClear(GL_COLOR_BUFFER_BIT);
}

TIDALUME_HEADLESS_JNI(jint, nativeCreateTextureFromFloats)
(JNIEnv* env, jclass, jlong, jint internalFormat, jint width, jint height, jfloatArray values) {
    return guarded(env, [=] {
        std::vector<float> copy(static_cast<std::size_t>(env->GetArrayLength(values)));
        env->GetFloatArrayRegion(values, 0, static_cast<jsize>(copy.size()), copy.data());
        return static_cast<jint>(makeTexture(static_cast<GLenum>(internalFormat), width, height, copy));
    });
}

TIDALUME_HEADLESS_JNI(jint, nativeCreateTextureFromBytes)
(JNIEnv* env, jclass, jlong, jint internalFormat, jint width, jint height, jbyteArray values) {
    return guarded(env, [=] {
        std::vector<std::uint8_t> copy(static_cast<std::size_t>(env->GetArrayLength(values)));
        env->GetByteArrayRegion(values, 0, static_cast<jsize>(copy.size()), reinterpret_cast<jbyte*>(copy.data()));
        return static_cast<jint>(makeTexture(static_cast<GLenum>(internalFormat), width, height, copy));
    });
}

TIDALUME_HEADLESS_JNI(void, nativeDeleteTexture)(JNIEnv*, jclass, jlong, jint texture) {
    const auto name = static_cast<GLuint>(texture);
    glDeleteTextures(1, &name);
}

TIDALUME_HEADLESS_JNI(jfloatArray, nativeReadTexture)
(JNIEnv* env, jclass, jlong, jint texture, jint width, jint height) {
    return guarded(env, [=] { return toJava(env, readTexture(static_cast<GLuint>(texture), width, height)); });
}

TIDALUME_HEADLESS_JNI(jfloatArray, nativeReadFramebuffer)(JNIEnv* env, jclass, jlong, jint width, jint height) {
    return guarded(env, [=] { return toJava(env, readFramebuffer(width, height)); });
}

TIDALUME_HEADLESS_JNI(void, nativeWritePng)(JNIEnv* env, jclass, jlong, jint width, jint height, jstring file) {
    const std::string path = toString(env, file);
    if (env->ExceptionCheck()) return;
    guarded(env, "java/io/IOException", [=] { writePng(path, framebufferPicture(width, height)); });
}

TIDALUME_HEADLESS_JNI(void, nativeDestroy)(JNIEnv*, jclass, jlong handle) {
    delete contextOf(handle);
}
