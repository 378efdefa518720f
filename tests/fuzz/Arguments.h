#pragma once

#include <GLES3/gl3.h>
#include <jni.h>

#include <cfloat>
#include <climits>
#include <cmath>
#include <fuzzer/FuzzedDataProvider.h>
#include <string>
#include <type_traits>
#include <vector>

/// Turns the bytes of a fuzzer into arguments of native functions: ordinary values, and odd ones among them.
struct Arguments {
    static constexpr jint inventedName = 1000; ///< a GL name above those that a driver gives

    FuzzedDataProvider& bytes;
    JNIEnv* env;
    jint picture = 0;                ///< a texture that lives as long as the context
    std::vector<jint> textures = {}; ///< the picture and what the effects hand out now

    /// An argument of a type and, where the type leaves it open, a kind: s screen size, t texture, p texture to keep, o
    /// framebuffer, b blend code, n small count, i other int, or the number of floats in an array.
    template <typename Type>
    Type make(char kind) {
        if constexpr (std::is_same_v<Type, jint>) return integer(kind);
        if constexpr (std::is_same_v<Type, jfloat>) return number();
        if constexpr (std::is_same_v<Type, jdouble>) return number() / 100.0;
        if constexpr (std::is_same_v<Type, jboolean>) return bytes.ConsumeIntegral<jboolean>();
        if constexpr (std::is_same_v<Type, jfloatArray>) return isOdd() ? nullptr : floats(kind - '0');
        if constexpr (std::is_same_v<Type, jstring>) return string();
    }

    /// Exactly this many floats, so that the sanitizer sees a read beyond them.
    jfloatArray floats(int count) {
        std::vector<float> values(static_cast<size_t>(count));
        for (float& value : values)
            value = number();
        jfloatArray array = env->NewFloatArray(count);
        env->SetFloatArrayRegion(array, 0, count, values.data());
        return array;
    }

  private:
    bool isOdd() { return bytes.ConsumeIntegral<uint8_t>() < 40; }
    jint inRange(jint least, jint most) { return bytes.ConsumeIntegralInRange(least, most); }

    jint integer(char kind) {
        static constexpr jint oddSizes[] = {0, -1, INT_MAX, INT_MIN, 1 << 20, 65536};
        static constexpr jint blendCodes[] = {GL_ONE, GL_SRC_ALPHA, GL_FUNC_ADD, GL_FUNC_REVERSE_SUBTRACT, GL_MAX};
        if (kind == 'n') return inRange(-2, 16);
        const bool odd = isOdd();
        if (kind == 's') return odd ? bytes.PickValueInArray(oddSizes) : inRange(1, 160);
        if (kind == 't')
            return odd ? inventedName : textures[bytes.ConsumeIntegralInRange<size_t>(0, textures.size() - 1)];
        if (kind == 'p') return odd ? inventedName : picture;
        // Not one of the effects' own: an object that lives on after it would make the name anew.
        if (kind == 'o') return odd ? inventedName : 0;
        if (odd) return bytes.ConsumeIntegral<jint>();
        return kind == 'b' ? bytes.PickValueInArray(blendCodes) : inRange(-1, 8);
    }

    jfloat number() {
        static constexpr float odd[] = {0, -0.0F, -1, 1e-30F, 65504, FLT_TRUE_MIN, FLT_MAX, -FLT_MAX, INFINITY, NAN};
        return isOdd() ? bytes.PickValueInArray(odd) : bytes.ConsumeFloatingPointInRange(0.0F, 200.0F);
    }

    /// Null, of characters that take one, two or three bytes, or too long.
    jstring string() {
        static constexpr const char* folders[] = {"", "/absent/", "/\xC3\xA9\xC0\x80\xED\xA0\xBD\xED\xB8\x80/"};
        if (!isOdd()) return env->NewStringUTF(bytes.PickValueInArray(folders));
        return bytes.ConsumeBool() ? nullptr : env->NewStringUTF(std::string(2000, 'x').c_str());
    }
};
