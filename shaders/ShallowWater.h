#pragma once

#include "shaders/WaterSurface.h"

namespace tidalume::shaders::shallowWater {

/// The names that this effect has for those of `quad`.
// kept: other-uniforms
inline constexpr char names[] = R"(
#define matrixMVP mvpMatrix
#define vertices quadCoord
)";

inline constexpr auto vertex = join(prologue, names, quad);

inline constexpr auto dropFragment = join(prologue, water::bump, water::pointShape, water::storeBump);

/// `center` and `center2` are in normalised device coordinates, `radius` in texture coordinates. `bump` would say the
/// same: with it phones' compilers need up to 4 instructions more.
inline constexpr auto dropLineFragment = join(prologue, R"(
uniform sampler2D textureWater;
uniform vec2 center;
uniform vec2 center2;
uniform float radius;
uniform float strength;
in vec2 texcoord;
out float outColor;
const float PI = 3.141592653589793;

// What a drop adds at one end.
float endDrop(vec2 end) {
    float a = max(0.0, 1.0 - length(end * 0.5 + 0.5 - texcoord) / radius);
    return (0.5 - cos(a * PI) * 0.5) * (strength * 0.4);
}

void main() {
    float info = texture(textureWater, texcoord).r + endDrop(center) + endDrop(center2);
    if (info > strength) info = strength;
    outColor = info;
}
)");

inline constexpr auto updateVertex = join(prologue, names, "#define heights texture1", water::neighbourQuad);

inline constexpr auto updateFragment = join(prologue, water::neighbours, R"(
uniform sampler2D texture1;
uniform sampler2D texture2;
uniform vec3 Term;
out float outColor;

void main() {
    float z1 = texture(texture1, texcoord).r;
    float z0 = texture(texture2, texcoord).r;
    float n = sumOfNeighbours(texture1);
    outColor = Term.x * z1 + Term.y * z0 + Term.z * n;
}
)");

} // namespace tidalume::shaders::shallowWater
