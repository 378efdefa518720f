#pragma once

#include <GLES3/gl3.h>
#include <jni.h>

#include <fuzzer/FuzzedDataProvider.h>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

/// Turns the bytes of a fuzzer into arguments of native functions: ordinary values, and odd ones among them.
struct Arguments {
    /// GL names that are invented start here, above those that a driver gives.
    static constexpr jint firstInventedName = 1000;

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
        if constexpr (std::is_same_v<Type, jdouble>) return isOdd() ? jdouble{number()} : inRange(0.0, 1.0);
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
    jdouble inRange(jdouble least, jdouble most) { return bytes.ConsumeFloatingPointInRange(least, most); }

    jint integer(char kind) {
        using Limits = std::numeric_limits<jint>;
        static constexpr jint oddSizes[] = {0, -1, Limits::max(), Limits::min(), 1 << 20, 65536};
        static constexpr jint blendCodes[] = {GL_ZERO,
                                              GL_ONE,
                                              GL_SRC_ALPHA,
                                              GL_ONE_MINUS_SRC_ALPHA,
                                              GL_FUNC_ADD,
                                              GL_FUNC_SUBTRACT,
                                              GL_FUNC_REVERSE_SUBTRACT,
                                              GL_MAX};
        if (kind == 'n') return inRange(-2, 16);
        const bool odd = isOdd();
        if (kind == 's') return odd ? bytes.PickValueInArray(oddSizes) : inRange(1, 160);
        if (kind == 't' && odd) return bytes.ConsumeBool() ? -1 : firstInventedName + inRange(0, 9);
        if (kind == 't') return textures[bytes.ConsumeIntegralInRange<size_t>(0, textures.size() - 1)];
        if (kind == 'p') return odd ? firstInventedName : picture;
        // Not one of the effects' own: an object that lives on after it would make the name anew.
        if (kind == 'o') return odd ? firstInventedName : 0;
        if (odd) return bytes.ConsumeIntegral<jint>();
        return kind == 'b' ? bytes.PickValueInArray(blendCodes) : inRange(-1, 8);
    }

    jfloat number() {
        using Limits = std::numeric_limits<float>;
        static constexpr float odd[] = {0.0F,
                                        -0.0F,
                                        -1.0F,
                                        1e-30F,
                                        Limits::max(),
                                        Limits::lowest(),
                                        Limits::min(),
                                        Limits::denorm_min(),
                                        Limits::infinity(),
                                        -Limits::infinity(),
                                        Limits::quiet_NaN(),
                                        65504.0F};
        return isOdd() ? bytes.PickValueInArray(odd) : bytes.ConsumeFloatingPointInRange(0.0F, 200.0F);
    }

    /// Null, too long, or up to three characters that take no, one, two or three bytes.
    jstring string() {
        static constexpr jchar characters[] = {u'a', u'é', u'\0', 0xD83D, 0xDE00};
        if (isOdd()) return bytes.ConsumeBool() ? nullptr : env->NewStringUTF(std::string(2000, 'x').c_str());
        const jint length = inRange(0, 3);
        jchar text[3] = {};
        for (jchar& character : text)
            character = bytes.PickValueInArray(characters);
        return env->NewString(text, length);
    }
};
