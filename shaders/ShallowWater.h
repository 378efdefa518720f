#pragma once

#include "shaders/WaterSurface.h"

namespace tidalume::shaders::shallowWater {

/// As quadVertex, under this effect's own names.
inline constexpr auto vertex = join(prologue, R"(
uniform mat4 mvpMatrix;
layout(location = 0) in vec3 quadCoord;
out vec3 position;
out vec2 texcoord;

void main() {
    vec4 p = vec4(quadCoord, 1.0) * mvpMatrix;
    p = p / p.w;
    position = quadCoord;
    texcoord = p.xy * 0.5 + 0.5;
    gl_Position = p;
}
)");

inline constexpr auto dropFragment = join(prologue, water::bump, water::pointShape, water::storeBump);

/// `center` and `center2` are in normalised device coordinates, `radius` in texture coordinates.
inline constexpr auto dropLineFragment = join(prologue, water::bump, R"(
uniform sampler2D textureWater;
uniform vec2 center;
uniform vec2 center2;
in vec2 texcoord;
out float outColor;

void main() {
    float info = texelFetch(textureWater, ivec2(gl_FragCoord.xy), 0).r;
    info += bump(distance(center * 0.5 + 0.5, texcoord)) * 0.4;
    info += bump(distance(center2 * 0.5 + 0.5, texcoord)) * 0.4;
    outColor = min(info, strength);
}
)");

inline constexpr auto updateFragment = join(prologue, water::neighbours, R"(
uniform sampler2D texture1;
uniform sampler2D texture2;
uniform vec3 Term;
out float outColor;

void main() {
    ivec2 texel = ivec2(gl_FragCoord.xy);
    float z1 = texelFetch(texture1, texel, 0).r;
    float z0 = texelFetch(texture2, texel, 0).r;
    float n = dot(neighbours(texture1, texel), vec4(1.0));
    outColor = Term.x * z1 + Term.y * z0 + Term.z * n;
}
)");

} // namespace tidalume::shaders::shallowWater
