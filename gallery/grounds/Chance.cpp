#include "gallery/grounds/Chance.h"

#include "gallery/Math.h"

#include <cmath>

namespace tidalume::gallery {

Chance::Chance(std::uint32_t seed) : mState(seed * 2654435761U + 88675123U) {
    if (mState == 0) mState = 1;
    next();
}

std::uint32_t Chance::next() {
    mState ^= mState << 13;
    mState ^= mState >> 17;
    mState ^= mState << 5;
    return mState;
}

float latticeNoise(int x, int y, std::uint32_t seed) {
    std::uint32_t bits =
        static_cast<std::uint32_t>(x) * 0x8DA6B343U ^ static_cast<std::uint32_t>(y) * 0xD8163841U ^ seed;
    bits = (bits ^ (bits >> 15)) * 0x2C1B3C6DU;
    bits ^= bits >> 13;
    return static_cast<float>(bits & 0xFFFFU) / 32767.5F - 1.0F;
}

float valueNoise(float x, float y, std::uint32_t seed) {
    const float column = std::floor(x);
    const float row = std::floor(y);
    const float right = smoothstep(0, 1, x - column);
    const float down = smoothstep(0, 1, y - row);
    const auto i = static_cast<int>(column);
    const auto j = static_cast<int>(row);
    const float upper = latticeNoise(i, j, seed) * (1 - right) + latticeNoise(i + 1, j, seed) * right;
    const float lower = latticeNoise(i, j + 1, seed) * (1 - right) + latticeNoise(i + 1, j + 1, seed) * right;
    return upper * (1 - down) + lower * down;
}

} // namespace tidalume::gallery
