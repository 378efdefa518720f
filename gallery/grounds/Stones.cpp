// Grounds of stones that are softly lit from the upper left.

#include "gallery/Math.h"
#include "gallery/grounds/Chance.h"
#include "gallery/grounds/Grounds.h"
#include "gallery/grounds/Paint.h"

#include <cmath>
#include <vector>

namespace tidalume::gallery {

namespace {

struct Stone {
    float x, y;       // in shares of the sides
    float radius;     // of the longer axis, in shares of the shorter side
    float flattening; // shorter axis over longer axis
    Color color;
    float angle = 0; // of the longer axis
    float lobes = 0; // how far the outline departs from an ellipse
    std::uint32_t noiseSeed = 0;
};

// How stones stand out from what lies beneath.
struct Relief {
    Color shadow;       // its alpha is that of the shadow's core
    float contrast = 0; // of light and shade on a stone
};

// Round stones differ in their angle, outline and grain.
Stone varied(Stone stone, Chance& chance, float tilt) {
    stone.angle = chance.between(-tilt, tilt);
    stone.lobes = chance.between(-0.05F, 0.05F);
    stone.noiseSeed = chance.next();
    return stone;
}

// One stone at the size of a picture.
class StonePainter {
  public:
    StonePainter(const Stone& stone, const Relief& relief, float unit)
        : mStone(stone), mRelief(relief), mRadius(stone.radius * unit), mCosine(std::cos(stone.angle)),
          mSine(std::sin(stone.angle)) {}

    void paint(Picture& picture) const {
        const float x = mStone.x * static_cast<float>(picture.width);
        const float y = mStone.y * static_cast<float>(picture.height);
        const float shift = 0.13F * mRadius;
        paintAround(picture, x + shift, y + 1.3F * shift, 1.5F * mRadius, [&](float dx, float dy) {
            Color shadow = mRelief.shadow;
            shadow.alpha *= 1 - smoothstep(0.7F, 1.4F, distance(dx, dy));
            return shadow;
        });
        paintAround(picture, x, y, 1.1F * mRadius + 1, [&](float dx, float dy) { return surface(dx, dy); });
    }

  private:
    // From the middle: 1 on the outline. dx and dy are in pixels.
    float distance(float dx, float dy) const {
        const float u = (dx * mCosine + dy * mSine) / mRadius;
        const float v = (dy * mCosine - dx * mSine) / (mRadius * mStone.flattening);
        const float square = u * u + v * v;
        const float lobe = u * (u * u - 3 * v * v); // the cubed distance times the cosine of three times the angle
        return std::sqrt(square) + mStone.lobes * lobe / (0.3F + square);
    }

    // The top is flat and bends down towards the outline.
    Color surface(float dx, float dy) const {
        const float d = distance(dx, dy);
        const float coverage = std::clamp((1 - d) * mRadius * mStone.flattening + 0.5F, 0.0F, 1.0F);
        if (coverage == 0) return {0, 0, 0, 0};
        const float u = dx / mRadius;
        const float v = dy / (mRadius * mStone.flattening);
        const float slope = 0.35F + 0.65F * d * d;
        const float light = -(0.45F * u + 0.75F * v) * slope;
        const float grain = 0.03F * valueNoise(7 * u, 7 * v, mStone.noiseSeed);
        Color color = mStone.color * (1 + mRelief.contrast * light + grain);
        color.alpha = coverage;
        return color;
    }

    const Stone& mStone;
    const Relief& mRelief;
    float mRadius; // in pixels
    float mCosine, mSine;
};

void paintStones(Picture& picture, const std::vector<Stone>& stones, const Relief& relief) {
    const auto unit = static_cast<float>(std::min(picture.width, picture.height));
    for (const Stone& stone : stones)
        StonePainter(stone, relief, unit).paint(picture);
}

} // namespace

// Few stones, so that most of each ring runs over bare sand.
Picture sand(int width, int height, std::uint32_t seed) {
    constexpr std::array<Color, 3> depth = {{{0.90F, 0.81F, 0.61F}, {0.60F, 0.72F, 0.62F}, {0.24F, 0.59F, 0.62F}}};
    constexpr Relief relief = {{0.10F, 0.26F, 0.30F, 0.60F}, 0.55F};
    std::vector<Stone> stones = {
        {0.17F, 0.19F, 0.110F, 0.78F, {0.37F, 0.44F, 0.51F}}, {0.83F, 0.12F, 0.083F, 0.79F, {0.55F, 0.46F, 0.37F}},
        {0.56F, 0.31F, 0.055F, 0.80F, {0.51F, 0.57F, 0.60F}}, {0.11F, 0.44F, 0.063F, 0.78F, {0.80F, 0.76F, 0.73F}},
        {0.80F, 0.44F, 0.130F, 0.77F, {0.25F, 0.29F, 0.34F}}, {0.46F, 0.54F, 0.047F, 0.80F, {0.42F, 0.36F, 0.34F}},
        {0.22F, 0.65F, 0.143F, 0.78F, {0.70F, 0.67F, 0.59F}}, {0.67F, 0.79F, 0.103F, 0.77F, {0.50F, 0.33F, 0.27F}},
        {0.43F, 0.92F, 0.072F, 0.78F, {0.38F, 0.49F, 0.45F}}, {0.89F, 0.92F, 0.115F, 0.80F, {0.29F, 0.31F, 0.39F}},
    };
    Chance chance(seed);
    const std::uint32_t noiseSeed = chance.next();
    const auto shorter = static_cast<float>(std::min(width, height));
    const float columns = 3.5F * static_cast<float>(width) / shorter;
    const float rows = 3.5F * static_cast<float>(height) / shorter;
    Picture picture = paint(width, height, [&](float x, float y) {
        return curve(depth, y) * (1 + 0.02F * valueNoise(x * columns, y * rows, noiseSeed));
    });
    for (Stone& stone : stones)
        stone = varied(stone, chance, 0.3F);
    paintStones(picture, stones, relief);
    return picture;
}

// Pale pebbles side by side, under a veil of bright water.
Picture pebbles(int width, int height, std::uint32_t seed) {
    constexpr std::array<Color, 6> colors = {{{0.74F, 0.73F, 0.69F},
                                              {0.56F, 0.63F, 0.67F},
                                              {0.78F, 0.69F, 0.57F},
                                              {0.66F, 0.59F, 0.52F},
                                              {0.57F, 0.64F, 0.58F},
                                              {0.84F, 0.81F, 0.75F}}};
    constexpr Relief relief = {{0.34F, 0.44F, 0.46F, 0.5F}, 0.22F};
    constexpr float spacing = 0.16F; // in shares of the shorter side
    constexpr std::array<Color, 3> veil = {
        {{0.84F, 0.82F, 0.70F, 0.50F}, {0.64F, 0.78F, 0.72F, 0.58F}, {0.22F, 0.58F, 0.64F, 0.68F}}};
    const auto shorter = static_cast<float>(std::min(width, height));
    const float columns = static_cast<float>(width) / (spacing * shorter);
    const float rows = static_cast<float>(height) / (spacing * shorter);
    Chance chance(seed);
    std::vector<Stone> stones;
    for (float row = 0; row < rows + 1; ++row) {
        for (float column = 0; column < columns + 1; ++column) {
            const float x = (column + chance.between(-0.3F, 0.3F)) / columns;
            const float y = (row + chance.between(-0.3F, 0.3F)) / rows;
            const float radius = spacing * chance.between(0.5F, 0.75F);
            const float flattening = chance.between(0.72F, 0.9F);
            stones.push_back(varied({x, y, radius, flattening, colors[chance.next() % colors.size()]}, chance, pi));
        }
    }
    // Shuffled: laid in the grid's order, each would lie on its neighbours of the same sides.
    for (std::size_t i = stones.size(); i > 1; --i)
        std::swap(stones[i - 1], stones[chance.next() % i]);

    Picture picture = paint(width, height, [&](float, float) { return Color{0.60F, 0.68F, 0.68F}; });
    paintStones(picture, stones, relief);
    for (int y = 0; y < height; ++y) {
        const Color color = curve(veil, (static_cast<float>(y) + 0.5F) / static_cast<float>(height));
        for (int x = 0; x < width; ++x)
            blendPixel(picture, x, y, color);
    }
    return picture;
}

} // namespace tidalume::gallery
