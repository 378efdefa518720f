#pragma once

#include "shaders/Common.h"

namespace tidalume::shaders::vectorGraphicRenderer {

/// Nothing that is the same for all fragments is handed on: on GPUs that are bound by varyings that costs more than it
/// saves.
inline constexpr auto gradientFillVertex = join(prologue, R"(
uniform mat4 matrixMVP;
uniform vec2 referencePosition;
layout(location = 0) in vec3 vertices;
out vec2 offset;

void main() {
    vec4 p = vec4(vertices, 1.0) * matrixMVP;
    offset = vertices.xy - referencePosition;
    gl_Position = p / p.w;
}
)");

/// Where begin equals end, the division gives an infinity and so a hard edge.
inline constexpr auto gradientFillFragment = join(prologue, R"(
uniform float gradientBegin;
uniform float gradientEnd;
uniform vec4 gradientBeginColor;
uniform vec4 gradientEndColor;
in vec2 offset;
layout(location = 0) out vec4 outColor;

void main() {
    float weight = clamp((length(offset) - gradientBegin) / (gradientEnd - gradientBegin), 0.0, 1.0);
    outColor = mix(gradientBeginColor, gradientEndColor, weight);
}
)");

inline constexpr auto bitmapVertex = texturedQuadVertex;

inline constexpr auto bitmapFragment = join(prologue, R"(
uniform sampler2D textureBitmap;
in vec2 texcoord;
layout(location = 0) out vec4 outColor;

void main() {
    outColor = texture(textureBitmap, texcoord);
}
)");

/// `texcoordAlpha` is the fragment's place on the surface, (0, 0) at its lower-left corner.
inline constexpr auto alphaMaskedBitmapVertex = join(prologue, R"(
uniform mat4 matrixMVP;
layout(location = 0) in vec3 vertices;
layout(location = 1) in vec2 texcoords;
out vec2 texcoord;
out vec2 texcoordAlpha;

void main() {
    vec4 p = vec4(vertices, 1.0) * matrixMVP;
    p = p / p.w;
    texcoord = texcoords;
    texcoordAlpha = p.xy * 0.5 + 0.5;
    gl_Position = p;
}
)");

inline constexpr auto alphaMaskedBitmapFragment = join(prologue, R"(
uniform sampler2D textureBitmap;
uniform sampler2D textureMask;
in vec2 texcoord;
in vec2 texcoordAlpha;
layout(location = 0) out vec4 outColor;

void main() {
    outColor = vec4(texture(textureBitmap, texcoord).rgb, texture(textureMask, texcoordAlpha).r);
}
)");

/// A disc is one point sprite: its centre in normalised device coordinates, and its diameter in pixels.
inline constexpr auto circleVertex = join(prologue, R"(
layout(location = 0) in vec4 vertices;

void main() {
    gl_PointSize = vertices.z;
    gl_Position = vec4(vertices.xy, 0.0, 1.0);
}
)");

inline constexpr char cutDisc[] = R"(
void cutDisc() {
    vec2 q = gl_PointCoord - vec2(0.5);
    if (length(q) > 0.5) discard;
}
)";

inline constexpr auto circleFragment = join(prologue, cutDisc, R"(
uniform vec4 color;
layout(location = 0) out vec4 outColor;

void main() {
    cutDisc();
    outColor = color;
}
)");

inline constexpr auto bitmapCircleVertex = circleVertex;

inline constexpr auto bitmapCircleFragment = join(prologue, cutDisc, R"(
uniform sampler2D bitmap;
uniform vec4 color;
uniform vec2 size;
layout(location = 0) out vec4 outColor;

void main() {
    cutDisc();
    outColor = vec4(texture(bitmap, gl_FragCoord.xy / size).rgb, color.a);
}
)");

} // namespace tidalume::shaders::vectorGraphicRenderer
