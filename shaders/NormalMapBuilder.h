#pragma once

#include "shaders/WaterSurface.h"

namespace tidalume::shaders::normalMapBuilder {

inline constexpr auto vertex = quadVertex;

/// The normal is the normalised cross product of the slopes (2, 0, right - left) and (0, 2, up - down), whose samples
/// lie two texels apart. Written out, the product points along (left - right, down - up, 2), so that one normalisation
/// is enough.
inline constexpr auto fragment = join(prologue, water::neighbours, R"(
uniform sampler2D textureHeight;
uniform float heightMax;
in vec2 texcoord;
out vec3 outColor;

void main() {
    ivec2 texel = ivec2(texcoord * vec2(textureSize(textureHeight, 0)));
    vec4 h = neighbours(textureHeight, texel) * heightMax;
    outColor = normalize(vec3(h.x - h.y, h.z - h.w, 2.0)) * 0.5 + 0.5;
}
)");

} // namespace tidalume::shaders::normalMapBuilder
