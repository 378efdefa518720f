#pragma once

#include <algorithm>

namespace tidalume::gallery {

constexpr float pi = 3.1415927F;
constexpr float twoPi = 2 * pi;

/// As in GLSL: 0 up to low, 1 from high on, and a smooth curve in between.
inline float smoothstep(float low, float high, float x) {
    const float t = std::clamp((x - low) / (high - low), 0.0F, 1.0F);
    return t * t * (3.0F - 2.0F * t);
}

} // namespace tidalume::gallery
