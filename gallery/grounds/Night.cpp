#include "gallery/grounds/Chance.h"
#include "gallery/grounds/Grounds.h"
#include "gallery/grounds/Paint.h"

#include <cmath>

namespace tidalume::gallery {

namespace {

// A gradient around a point of the sky.
struct Glow {
    float x = 0, y = 0;       // in shares of the sides
    float below = 0;          // further down, in units of the longer side
    float begin = 0, end = 0; // radii, in the same unit
    Color inner, outer;
};

// Night blue that brightens towards the horizon, with the last daylight at the left and a faint cloud of stars at the
// right.
constexpr std::array<Glow, 3> glows = {{
    {0.50F, 1.00F, 0.35F, 0.30F, 1.35F, {0.150F, 0.160F, 0.360F, 1}, {0.008F, 0.012F, 0.045F, 1}},
    {0.12F, 1.00F, 0, 0, 0.62F, {0.420F, 0.240F, 0.400F, 0.60F}, {0.180F, 0.160F, 0.400F, 0}},
    {0.80F, 0.22F, 0, 0, 0.50F, {0.330F, 0.280F, 0.560F, 0.20F}, {0.120F, 0.140F, 0.400F, 0}},
}};

// Discs far larger than the picture, from back to front, in units of the width.
struct Hill {
    float x = 0;
    float top = 0; // of the disc, above the bottom edge
    float radius = 0;
    Color color;
};

constexpr std::array<Hill, 4> hills = {{
    {0.80F, 0.250F, 0.95F, {0.070F, 0.085F, 0.190F}},
    {0.10F, 0.200F, 0.80F, {0.050F, 0.062F, 0.150F}},
    {0.62F, 0.130F, 1.60F, {0.030F, 0.038F, 0.100F}},
    {0.05F, 0.080F, 1.20F, {0.016F, 0.020F, 0.060F}},
}};

Picture sky(int width, int height) {
    const auto longer = static_cast<float>(std::max(width, height));
    const float across = static_cast<float>(width) / longer;
    const float down = static_cast<float>(height) / longer;
    return paint(width, height, [&](float x, float y) {
        Color color;
        for (const Glow& glow : glows) {
            const float distance = std::hypot((x - glow.x) * across, (y - glow.y) * down - glow.below);
            const float t = std::clamp((distance - glow.begin) / (glow.end - glow.begin), 0.0F, 1.0F);
            color = over(color, mix(glow.inner, glow.outer, t));
        }
        return color;
    });
}

// Many faint stars, few bright ones.
void paintStar(Picture& picture, Chance& chance) {
    const float x = chance.between(0, 1) * static_cast<float>(picture.width);
    const float y = chance.between(0, 0.9F) * static_cast<float>(picture.height);
    const float size = std::pow(chance.between(0, 1), 4.0F);
    const float warmth = chance.between(0, 1); // 0 blue to 1 yellow
    const float radius = (0.7F + 1.3F * size) / 540 * static_cast<float>(picture.width);
    paintDisc(picture, x, y, radius, {0.80F + 0.20F * warmth, 0.92F, 1 - 0.25F * warmth, 0.20F + 0.60F * size});
}

} // namespace

Picture night(int width, int height, std::uint32_t seed) {
    Picture picture = sky(width, height);
    Chance chance(seed);
    for (int i = 0; i < 180; ++i)
        paintStar(picture, chance);
    const auto unit = static_cast<float>(width);
    for (const Hill& hill : hills) {
        paintDisc(picture, hill.x * unit, static_cast<float>(height) + (hill.radius - hill.top) * unit,
                  hill.radius * unit, hill.color);
    }
    return picture;
}

} // namespace tidalume::gallery
