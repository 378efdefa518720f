#pragma once

#include "shaders/Common.h"

/// GLSL that the water programs share: what a disturbance is made of, and how a height field is read.
namespace tidalume::shaders::water {

/// The profile of every disturbance, a raised cosine, as it is written down: phones' compilers make no less of any
/// other form.
inline constexpr char bump[] = R"(
uniform float radius;
uniform float strength;
in vec3 position;
in vec2 texcoord;
const float PI = 3.141592653589793;

// `strength` at distance 0, falling to 0 at `radius` and beyond.
float bump(float d) {
    return (cos(min(1.0, d / radius) * PI) * 0.5 + 0.5) * strength;
}
)";

/// The shapes of disturbances: `shapeDistance` is the fragment's distance from the shape, in pixels.
inline constexpr char pointShape[] = R"(
uniform vec2 center;

float shapeDistance() {
    return distance(position.xy, center);
}
)";

inline constexpr char segmentShape[] = R"(
uniform vec2 center;
uniform vec2 center2;

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

float shapeDistance() {
    float curve = center + sin(texcoord.x * PI * 2.0 * waveCount) * waveRadius;
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

/// Vertex stage of a pass that reads a height field, `heights`, and the four neighbours of every texel. It works out
/// where they are, so that a GPU can fetch before the fragment stage has computed anything.
inline constexpr char neighbourQuad[] = R"(
uniform mat4 matrixMVP;
uniform sampler2D heights;
layout(location = 0) in vec3 vertices;
out vec2 texcoord;
out vec4 leftAndRight;
out vec4 downAndUp;

void main() {
    vec4 p = vec4(vertices, 1.0) * matrixMVP;
    p = p / p.w;
    texcoord = p.xy * 0.5 + 0.5;
    vec2 texel = 1.0 / vec2(textureSize(heights, 0));
    leftAndRight = texcoord.xyxy + vec4(-texel.x, 0.0, texel.x, 0.0);
    downAndUp = texcoord.xyxy + vec4(0.0, -texel.y, 0.0, texel.y);
    gl_Position = p;
}
)";

/// What the fragment stage gets of it. Reads are filtered: at the centres of texels that changes nothing, and heights
/// of another size than the target come out without steps.
inline constexpr char neighbours[] = R"(
in vec2 texcoord;
in vec4 leftAndRight;
in vec4 downAndUp;

// One sum of four reads: some compilers wait twice where the reads go through a vector.
float sumOfNeighbours(sampler2D heights) {
    return texture(heights, leftAndRight.xy).r + texture(heights, leftAndRight.zw).r +
           texture(heights, downAndUp.xy).r + texture(heights, downAndUp.zw).r;
}
)";

} // namespace tidalume::shaders::water
