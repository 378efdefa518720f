// Grounds of nothing but smooth color.

#include "gallery/grounds/Grounds.h"
#include "gallery/grounds/Paint.h"

#include <cmath>

namespace tidalume::gallery {

namespace {

// A glow around a point on the middle axis.
struct Glow {
    float centerY = 0, radius = 0; // in shares of the height
    Color middle, edge;
};

Picture paintGlow(int width, int height, const Glow& glow) {
    const float aspect = static_cast<float>(width) / static_cast<float>(height);
    return paint(width, height, [&](float x, float y) {
        const float distance = std::hypot((x - 0.5F) * aspect, y - glow.centerY);
        return mix(glow.middle, glow.edge, std::min(distance / glow.radius, 1.0F));
    });
}

} // namespace

Picture sunset(int width, int height, std::uint32_t) {
    constexpr std::array<Color, 4> colors = {
        {{1.00F, 0.72F, 0.40F}, {1.00F, 0.46F, 0.46F}, {0.80F, 0.20F, 0.50F}, {0.17F, 0.11F, 0.38F}}};
    return paint(width, height, [&](float, float y) { return curve(colors, y); });
}

Picture teal(int width, int height, std::uint32_t) {
    constexpr std::array<Color, 3> colors = {{{0.46F, 0.90F, 0.95F}, {0.10F, 0.62F, 0.76F}, {0.03F, 0.24F, 0.45F}}};
    return paint(width, height, [&](float, float y) { return curve(colors, y); });
}

Picture ember(int width, int height, std::uint32_t) {
    return paintGlow(width, height, {1.10F, 1.10F, {0.300F, 0.065F, 0.170F}, {0.055F, 0.035F, 0.125F}});
}

Picture dusk(int width, int height, std::uint32_t) {
    return paintGlow(width, height, {1.05F, 1.10F, {0.24F, 0.25F, 0.85F}, {0.07F, 0.09F, 0.20F}});
}

} // namespace tidalume::gallery
