#include "gallery/Math.h"
#include "gallery/grounds/Chance.h"
#include "gallery/grounds/Grounds.h"
#include "gallery/grounds/Paint.h"

#include <cmath>

namespace tidalume::gallery {

// Joints and differences from tile to tile stay faint: rings are drawn by light, which must be the strongest contrast.
Picture tiles(int width, int height, std::uint32_t seed) {
    constexpr std::array<Color, 3> glaze = {{{0.58F, 0.86F, 0.88F}, {0.32F, 0.74F, 0.82F}, {0.10F, 0.50F, 0.68F}}};
    constexpr Color joint = {0.86F, 0.97F, 0.97F};
    constexpr float perSide = 7; // tiles along the shorter side
    const auto shorter = static_cast<float>(std::min(width, height));
    const float columns = perSide * static_cast<float>(width) / shorter;
    const float rows = perSide * static_cast<float>(height) / shorter;
    return paint(width, height, [&](float x, float y) {
        const float across = (x - 0.5F) * columns + 0.5F; // a tile in the middle
        const float down = (y - 0.5F) * rows + 0.5F;
        const float column = std::floor(across);
        const float row = std::floor(down);
        const float edge = std::max(std::abs(across - column - 0.5F), std::abs(down - row - 0.5F));
        const float shade = 1 + 0.025F * latticeNoise(static_cast<int>(column), static_cast<int>(row), seed);
        return mix(curve(glaze, y) * shade, joint, 0.16F * smoothstep(0.46F, 0.485F, edge));
    });
}

} // namespace tidalume::gallery
