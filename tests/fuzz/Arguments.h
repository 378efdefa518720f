#pragma once

#include <jni.h>

#include <fuzzer/FuzzedDataProvider.h>
#include <vector>

/// Turns the bytes of a fuzzer into arguments of native functions: ordinary values, and odd ones among them.
class Arguments {
  public:
    /// GL names that are invented start here, above those that a driver gives.
    static constexpr jint firstInventedName = 1000;

    Arguments(FuzzedDataProvider& bytes, JNIEnv* env) : mBytes(bytes), mEnv(env) {}

    /// An argument of the type and the kind that a signature names (see NativeFunctions.h).
    template <typename Type>
    Type make(char kind);

    JNIEnv* env() const { return mEnv; }
    FuzzedDataProvider& bytes() { return mBytes; }

    jint picture = 0;           ///< a texture that lives as long as the context
    std::vector<jint> textures; ///< the picture and what the effects hand out now

  private:
    bool isOdd();
    jint screenSize();
    jint textureName();
    jint framebufferName();
    jint blendCode();
    jfloat number();
    /// Exactly this many floats, so that the sanitizer sees a read beyond them.
    jfloatArray floats(int count);

    FuzzedDataProvider& mBytes;
    JNIEnv* mEnv;
};
