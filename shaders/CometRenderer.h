#pragma once

#include "shaders/Common.h"

namespace tidalume::shaders::cometRenderer {

/// A round sprite in normalised device coordinates. `radius` is the whole edge length of the sprite in pixels.
inline constexpr auto coreVertex = join(prologue, R"(
uniform float radius;
layout(location = 0) in vec4 vertices;
out float vRadius;

void main() {
    gl_PointSize = radius;
    vRadius = radius;
    gl_Position = vec4(vertices.xy, 0.0, 1.0);
}
)");

/// fillMode 0 is a ring of 3 pixels on the rim, 1 a disc.
inline constexpr auto coreFragment = join(prologue, R"(
uniform float t0;
uniform int fillMode;
in float vRadius;
out vec4 outColor;

void main() {
    float rim = 0.5 * vRadius;
    vec2 c = gl_PointCoord - vec2(0.5); // gl_PointCoord is mediump, and so is what is computed with it directly
    float d = length(c) * vRadius;
    bool ring = fillMode == 0 && d >= rim - 3.0 && d <= rim;
    bool disc = fillMode == 1 && d <= rim;
    if (!ring && !disc) discard;
    outColor = vec4(1.0, 1.0, 1.0, t0);
}
)");

/// The mesh keeps its vertical coordinate in z. The alpha is linear along the tail, so that interpolating it from the
/// vertices is the same as computing it in every fragment.
// kept: far-plane, pi
inline constexpr auto tailVertex = join(prologue, R"(
uniform float t0;
layout(location = 0) in vec3 vertices;
layout(location = 1) in vec2 texcoords;
out float alpha;

void main() {
    alpha = (1.0 - texcoords.x) * 0.2 * sin(t0 * 3.141592);
    gl_Position = vec4(vertices.x, vertices.z, 1.0, 1.0);
}
)");

inline constexpr auto tailFragment = join(prologue, R"(
in float alpha;
out vec4 outColor;

void main() {
    outColor = vec4(1.0, 1.0, 1.0, alpha);
}
)");

} // namespace tidalume::shaders::cometRenderer
