#pragma once

#include "shaders/WaterSurface.h"

namespace tidalume::shaders::shallowWaterIterative {

inline constexpr auto vertex = quadVertex;

/// Follows `bump` and a shape: raises the height, red, and passes the velocity, green, through.
inline constexpr char raiseWater[] = R"(
uniform sampler2D textureWater;
uniform float preserveWeight;
out vec2 outColor;

void main() {
    vec2 info = texture(textureWater, texcoord).rg;
    info.r = info.r * preserveWeight + bump(shapeDistance());
    outColor = info;
}
)";

inline constexpr auto dropFragment = join(prologue, water::bump, water::pointShape, raiseWater);
inline constexpr auto dropLineFragment = join(prologue, water::bump, water::segmentShape, raiseWater);
inline constexpr auto horizontalWaveFragment = join(prologue, water::bump, water::horizontalWaveShape, raiseWater);

inline constexpr auto updateVertex = join(prologue, "#define heights textureWater", water::neighbourQuad);

/// One step of the wave equation: the velocity follows the curvature and is damped, the height follows the velocity and
/// loses a trifle more, so that the last ripples come to rest.
// kept: small-loss
inline constexpr auto updateFragment = join(prologue, water::neighbours, R"(
uniform sampler2D textureWater;
out vec2 outColor;

void main() {
    vec2 info = texture(textureWater, texcoord).rg;
    float average = sumOfNeighbours(textureWater) * 0.25;
    info.g += (average - info.r) * 2.0;
    info.g *= 0.99;
    info.r += info.g;
    info.r -= sign(info.g) * 0.00001;
    outColor = info;
}
)");

} // namespace tidalume::shaders::shallowWaterIterative
