#pragma once

#include "shaders/Common.h"

namespace tidalume::shaders::cometPainter {

/// The meshes keep their vertical coordinate in z; `texcoords.x` runs along a tail, from 0 at its head. `layers` layers
/// of an opacity, which fades along the tail, lie over one another. Near the head, within the distance that `nearness`
/// makes 1, the colour is that of its light. Meshes are so fine that all of it is interpolated from the vertices, in
/// half floats, which hold colours of 8 bits.
inline constexpr auto vertex = join(prologue, R"(
uniform vec2 head;
uniform vec2 nearness;
uniform vec3 tailColor;
uniform vec3 headColor;
uniform float opacity;
uniform float layers;
layout(location = 0) in vec3 vertices;
layout(location = 1) in vec2 texcoords;
out mediump vec4 color;

void main() {
    float ball = max(1.0 - length((vertices.xz - head) * nearness), 0.0);
    vec3 light = mix(headColor, vec3(1.0), pow(ball, 3.0));
    float alpha = 1.0 - pow(1.0 - (1.0 - texcoords.x) * opacity, layers);
    color = vec4(mix(tailColor, light, pow(ball, 1.5)), 1.0) * alpha;
    gl_Position = vec4(vertices.xz, 0.0, 1.0);
}
)");

inline constexpr auto fragment = join(prologue, R"(
in mediump vec4 color;
layout(location = 0) out vec4 outColor;

void main() {
    outColor = color;
}
)");

} // namespace tidalume::shaders::cometPainter
