#pragma once

#include "shaders/WaterSurface.h"

namespace tidalume::shaders::normalMapBuilder {

inline constexpr auto vertex = join(prologue, "#define heights textureHeight", water::neighbourQuad);

/// The normal is the normalised cross product of the slopes (2, 0, right - left) and (0, 2, up - down), whose samples
/// lie two texels apart. Written out, the product points along (left - right, down - up, 2), so that one normalisation
/// is enough.
inline constexpr auto fragment = join(prologue, R"(
uniform sampler2D textureHeight;
uniform float heightMax;
in vec4 leftAndRight;
in vec4 downAndUp;
out vec3 outColor;

void main() {
    vec4 h = vec4(texture(textureHeight, leftAndRight.xy).r, texture(textureHeight, leftAndRight.zw).r,
                  texture(textureHeight, downAndUp.xy).r, texture(textureHeight, downAndUp.zw).r);
    h *= heightMax;
    outColor = normalize(vec3(h.x - h.y, h.z - h.w, 2.0)) * 0.5 + 0.5;
}
)");

} // namespace tidalume::shaders::normalMapBuilder
