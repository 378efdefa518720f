#pragma once

#include "shaders/Common.h"

/// GLSL that the water programs share: what a disturbance is made of, and how a height field is read.
namespace tidalume::shaders::water {

/// The profile of every disturbance, a raised cosine. Dividing uniforms alone costs less than dividing distances.
inline constexpr char bump[] = R"(
uniform float radius;
uniform float strength;
const float PI = 3.141592653589793;

// `strength` at distance 0, falling to 0 at `radius` and beyond.
float bump(float d) {
    return (cos(min(PI, d * (PI / radius))) * 0.5 + 0.5) * strength;
}
)";

/// The shapes of disturbances: `shapeDistance` is the fragment's distance from the shape, in pixels.
inline constexpr char pointShape[] = R"(
uniform vec2 center;
in vec3 position;

float shapeDistance() {
    return distance(position.xy, center);
}
)";

inline constexpr char segmentShape[] = R"(
uniform vec2 center;
uniform vec2 center2;
in vec3 position;

float shapeDistance() {
    vec2 along = center2 - center;
    float squaredLength = dot(along, along);
    float t = squaredLength == 0.0 ? 0.0 : clamp(dot(position.xy - center, along) / squaredLength, 0.0, 1.0);
    return distance(position.xy, center + t * along);
}
)";

/// Measured along y from a horizontal sine curve with `waveCount` periods across the screen. Follows `bump`.
inline constexpr char horizontalWaveShape[] = R"(
uniform float center;
uniform float waveRadius;
uniform float waveCount;
in vec3 position;
in vec2 texcoord;

float shapeDistance() {
    float curve = center + sin(texcoord.x * (2.0 * PI * waveCount)) * waveRadius;
    return abs(curve - position.y);
}
)";

/// Follows `bump` and a shape: stores the bump as it is.
inline constexpr char storeBump[] = R"(
out float outColor;

void main() {
    outColor = bump(shapeDistance());
}
)";

/// A texel is fetched by its number: at the centres of texels linear filtering changes nothing, and the clamped numbers
/// repeat the border as GL_CLAMP_TO_EDGE does, so this is the same picture as sampling with offsets, for less work.
inline constexpr char neighbours[] = R"(
// Heights of the texels to the left, to the right, below and above.
vec4 neighbours(sampler2D heights, ivec2 texel) {
    ivec2 before = max(texel - 1, 0);
    ivec2 after = min(texel + 1, textureSize(heights, 0) - 1);
    return vec4(texelFetch(heights, ivec2(before.x, texel.y), 0).r, texelFetch(heights, ivec2(after.x, texel.y), 0).r,
                texelFetch(heights, ivec2(texel.x, before.y), 0).r, texelFetch(heights, ivec2(texel.x, after.y), 0).r);
}
)";

} // namespace tidalume::shaders::water
