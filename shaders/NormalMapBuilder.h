#pragma once

#include "shaders/WaterSurface.h"

namespace tidalume::shaders::normalMapBuilder {

/// Hands on where the neighbours of the fragment's heights are: one texel of the heights to the left and to the right,
/// one below and one above. Coordinates that the fragment stage does not compute let a GPU fetch early.
inline constexpr auto vertex = join(prologue, R"(
uniform mat4 matrixMVP;
uniform sampler2D textureHeight;
layout(location = 0) in vec3 vertices;
out vec4 leftAndRight;
out vec4 downAndUp;

void main() {
    vec4 p = vec4(vertices, 1.0) * matrixMVP;
    p = p / p.w;
    vec2 texcoord = p.xy * 0.5 + 0.5;
    vec2 texel = 1.0 / vec2(textureSize(textureHeight, 0));
    leftAndRight = texcoord.xyxy + vec4(-texel.x, 0.0, texel.x, 0.0);
    downAndUp = texcoord.xyxy + vec4(0.0, -texel.y, 0.0, texel.y);
    gl_Position = p;
}
)");

/// The normal is the normalised cross product of the slopes (2, 0, right - left) and (0, 2, up - down), whose samples
/// lie two texels apart. Written out, the product points along (left - right, down - up, 2), so that one normalisation
/// is enough. The reads are filtered, for heights of another size than the screen.
inline constexpr auto fragment = join(prologue, R"(
uniform sampler2D textureHeight;
uniform float heightMax;
in vec4 leftAndRight;
in vec4 downAndUp;
out vec3 outColor;

void main() {
    float left = texture(textureHeight, leftAndRight.xy).r;
    float right = texture(textureHeight, leftAndRight.zw).r;
    float down = texture(textureHeight, downAndUp.xy).r;
    float up = texture(textureHeight, downAndUp.zw).r;
    outColor = normalize(vec3((left - right) * heightMax, (down - up) * heightMax, 2.0)) * 0.5 + 0.5;
}
)");

} // namespace tidalume::shaders::normalMapBuilder
