#include "tests/fuzz/Arguments.h"

#include <GLES3/gl3.h>

#include <limits>
#include <string>

bool Arguments::isOdd() {
    return mBytes.ConsumeIntegral<uint8_t>() < 40;
}

jint Arguments::screenSize() {
    using Limits = std::numeric_limits<jint>;
    static constexpr jint odd[] = {0, -1, Limits::max(), Limits::min(), 1 << 20, 65536};
    return isOdd() ? mBytes.PickValueInArray(odd) : mBytes.ConsumeIntegralInRange<jint>(1, 160);
}

jint Arguments::textureName() {
    if (isOdd()) return mBytes.ConsumeBool() ? -1 : firstInventedName + mBytes.ConsumeIntegralInRange<jint>(0, 9);
    if (textures.empty()) return 0;
    return textures[mBytes.ConsumeIntegralInRange<size_t>(0, textures.size() - 1)];
}

/// Not one of the effects' own: an object that lives on after it would make the name anew.
jint Arguments::framebufferName() {
    return isOdd() ? firstInventedName : 0;
}

jint Arguments::blendCode() {
    static constexpr jint codes[] = {
        GL_ZERO, GL_ONE, GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_FUNC_ADD, GL_FUNC_SUBTRACT, GL_FUNC_REVERSE_SUBTRACT,
        GL_MAX};
    return isOdd() ? mBytes.ConsumeIntegral<jint>() : mBytes.PickValueInArray(codes);
}

jfloat Arguments::number() {
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
    return isOdd() ? mBytes.PickValueInArray(odd) : mBytes.ConsumeFloatingPointInRange<float>(0.0F, 200.0F);
}

jfloatArray Arguments::floats(int count) {
    std::vector<float> values(static_cast<size_t>(count));
    for (float& value : values)
        value = number();
    jfloatArray array = mEnv->NewFloatArray(count);
    mEnv->SetFloatArrayRegion(array, 0, count, values.data());
    return array;
}

template <>
jint Arguments::make(char kind) {
    switch (kind) {
    case 's':
        return screenSize();
    case 't':
        return textureName();
    case 'p':
        return isOdd() ? firstInventedName : picture;
    case 'o':
        return framebufferName();
    case 'b':
        return blendCode();
    case 'n':
        return mBytes.ConsumeIntegralInRange<jint>(-2, 16);
    default:
        return isOdd() ? mBytes.ConsumeIntegral<jint>() : mBytes.ConsumeIntegralInRange<jint>(-1, 8);
    }
}

template <>
jfloat Arguments::make(char /*kind*/) {
    return number();
}

template <>
jdouble Arguments::make(char /*kind*/) {
    return isOdd() ? static_cast<double>(number()) : mBytes.ConsumeFloatingPointInRange<double>(0.0, 1.0);
}

template <>
jboolean Arguments::make(char /*kind*/) {
    return mBytes.ConsumeIntegral<jboolean>();
}

template <>
jfloatArray Arguments::make(char kind) {
    return isOdd() ? nullptr : floats(kind - '0');
}

/// Null, too long, or up to three characters that take no, one, two or three bytes.
template <>
jstring Arguments::make(char /*kind*/) {
    static constexpr jchar characters[] = {u'a', u'é', u'\0', 0xD83D, 0xDE00};
    if (isOdd()) return mBytes.ConsumeBool() ? nullptr : mEnv->NewStringUTF(std::string(2000, 'x').c_str());
    jchar text[3] = {};
    const auto length = mBytes.ConsumeIntegralInRange<jsize>(0, 3);
    for (jchar& character : text)
        character = mBytes.PickValueInArray(characters);
    return mEnv->NewString(text, length);
}
