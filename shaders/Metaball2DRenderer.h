#pragma once

#include "shaders/Common.h"

namespace tidalume::shaders::metaball2DRenderer {

/// A ball of radius 0 or less goes outside the clip volume: a point of size 0 is undefined, and Mesa draws one pixel of
/// it.
inline constexpr auto fieldVertex = join(prologue, R"(
uniform float qualityMultiplyFactor;
uniform float radiusMultiplyFactor;
uniform mat4 matrixMVP;
layout(location = 0) in vec4 metaballs;

void main() {
    gl_PointSize = metaballs.z * radiusMultiplyFactor * 2.0 * qualityMultiplyFactor;
    gl_Position = metaballs.z > 0.0 ? vec4(metaballs.xy, 0.0, 1.0) * matrixMVP : vec4(2.0, 2.0, 2.0, 1.0);
}
)");

/// (1 - (2d)^2)^2 inside the sprite's inscribed circle. The clamp makes the corners add 0 without a branch, which costs
/// more than the whole kernel.
inline constexpr auto fieldFragment = join(prologue, R"(
out float outColor;

void main() {
    vec2 c = gl_PointCoord - vec2(0.5);
    float k = max(0.0, 1.0 - 4.0 * dot(c, c));
    outColor = k * k;
}
)");

inline constexpr auto drawVertex = texturedQuadVertex;

inline constexpr auto drawFragment = join(prologue, R"(
uniform sampler2D textureField;
uniform vec4 color;
uniform float cut;
in vec2 texcoord;
layout(location = 0) out vec4 outColor;

void main() {
    float field = texture(textureField, texcoord).r;
    if (!(field > cut)) discard;
    outColor = color;
}
)");

} // namespace tidalume::shaders::metaball2DRenderer
