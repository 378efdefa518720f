#pragma once

#include <cstddef>

/// GLSL ES 3.00 text that several programs share.
///
/// Attribute locations are fixed, `vertices` (or what takes its place) 0 and `texcoords` 1, so that programs drawn in a
/// row share the arrays that are enabled.
namespace tidalume::shaders {

/// A whole shader source as a compile-time constant.
template <std::size_t size>
struct Source {
    char text[size];

    constexpr operator const char*() const { return text; }
};

/// The pieces one after another. Pieces are raw literals, and raw literals cannot stand in macros.
template <std::size_t... sizes>
constexpr auto join(const char (&... pieces)[sizes]) {
    Source<(sizes + ...) - sizeof...(sizes) + 1> source = {};
    std::size_t length = 0;
    const auto append = [&](const char* piece, std::size_t size) {
        for (std::size_t i = 0; i + 1 < size; ++i)
            source.text[length++] = piece[i];
    };
    (append(pieces, sizes), ...);
    return source;
}

/// Samplers are lowp by default, and drivers then really compute with sampled half floats in lower precision.
inline constexpr char prologue[] = R"(#version 300 es
precision highp float;
precision highp sampler2D;
)";

/// Vertex stage of a quad in pixels. `texcoord` is the fragment's place on the target, (0, 0) at its lower-left corner:
/// it follows from normalised device coordinates, for which p is divided by w. Orthographic cameras have a w of 1.
inline constexpr char quad[] = R"(
uniform mat4 matrixMVP;
layout(location = 0) in vec3 vertices;
out vec3 position;
out vec2 texcoord;

void main() {
    vec4 p = vec4(vertices, 1.0) * matrixMVP;
    p = p / p.w;
    position = vertices;
    texcoord = p.xy * 0.5 + 0.5;
    gl_Position = p;
}
)";

inline constexpr auto quadVertex = join(prologue, quad);

/// The same with texture coordinates of its own.
inline constexpr auto texturedQuadVertex = join(prologue, R"(
uniform mat4 matrixMVP;
layout(location = 0) in vec3 vertices;
layout(location = 1) in vec2 texcoords;
out vec3 position;
out vec2 texcoord;

void main() {
    vec4 p = vec4(vertices, 1.0) * matrixMVP;
    p = p / p.w;
    position = vertices;
    texcoord = texcoords;
    gl_Position = p;
}
)");

} // namespace tidalume::shaders
