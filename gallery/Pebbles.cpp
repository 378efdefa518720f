#include "gallery/Pebbles.h"

#include "gallery/Color.h"
#include "gallery/Math.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tidalume::gallery {

namespace {

// Marsaglia's xorshift with 32 bits of state.
class Random {
  public:
    explicit Random(std::uint32_t seed) : mState(seed * 2654435761U + 88675123U) {
        if (mState == 0) mState = 1;
        next();
    }

    float between(float low, float high) { return low + (high - low) * static_cast<float>(next() >> 8) * 0x1p-24F; }

    std::uint32_t next() {
        mState ^= mState << 13;
        mState ^= mState >> 17;
        mState ^= mState << 5;
        return mState;
    }

  private:
    std::uint32_t mState;
};

// A fixed value in [-1, 1] for every point of the integer lattice.
float latticeNoise(int x, int y, std::uint32_t noiseSeed) {
    std::uint32_t bits =
        static_cast<std::uint32_t>(x) * 0x8DA6B343U ^ static_cast<std::uint32_t>(y) * 0xD8163841U ^ noiseSeed;
    bits = (bits ^ (bits >> 15)) * 0x2C1B3C6DU;
    bits ^= bits >> 13;
    return static_cast<float>(bits & 0xFFFFU) / 32767.5F - 1.0F;
}

// Interpolates latticeNoise().
float valueNoise(float x, float y, std::uint32_t noiseSeed) {
    const float column = std::floor(x);
    const float row = std::floor(y);
    const float right = smoothstep(0, 1, x - column);
    const float down = smoothstep(0, 1, y - row);
    const auto i = static_cast<int>(column);
    const auto j = static_cast<int>(row);
    const float upper = latticeNoise(i, j, noiseSeed) * (1 - right) + latticeNoise(i + 1, j, noiseSeed) * right;
    const float lower = latticeNoise(i, j + 1, noiseSeed) * (1 - right) + latticeNoise(i + 1, j + 1, noiseSeed) * right;
    return upper * (1 - down) + lower * down;
}

struct Pebble {
    float x, y;
    float radius;           // of the longer axis, in pixels
    float flattening;       // shorter axis over longer axis
    float cosine, sine;     // of the longer axis
    float lobes, lobePhase; // how far the outline departs from an ellipse, and where
    Color color;
    float vein; // brightness of a bright band across the pebble, 0 for most
    std::uint32_t noiseSeed;
};

// The square root serves as the display's gamma.
Color gammaEncoded(const Color& color) {
    const auto encode = [](float channel) { return std::sqrt(std::max(channel, 0.0F)); };
    return {encode(color.red), encode(color.green), encode(color.blue)};
}

// A picture in linear light.
class Canvas {
  public:
    Canvas(int width, int height) : mWidth(width), mHeight(height) {
        mColors.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), Color{0.05F, 0.06F, 0.055F});
    }

    Color& at(int x, int y) { return mColors[offset(x, y)]; }
    const Color& at(int x, int y) const { return mColors[offset(x, y)]; }

    // Draws a pebble and the soft shadow that it casts to the lower right.
    void draw(const Pebble& pebble) {
        const float extent = pebble.radius * 1.35F + 1;
        const int left = std::max(0, static_cast<int>(pebble.x - extent));
        const int right = std::min(mWidth - 1, static_cast<int>(pebble.x + extent));
        const int top = std::max(0, static_cast<int>(pebble.y - extent));
        const int bottom = std::min(mHeight - 1, static_cast<int>(pebble.y + extent));
        for (int y = top; y <= bottom; ++y) {
            for (int x = left; x <= right; ++x)
                drawPixel(pebble, x, y);
        }
    }

    Picture picture() const {
        Picture picture(mWidth, mHeight);
        for (int y = 0; y < mHeight; ++y) {
            for (int x = 0; x < mWidth; ++x)
                setPixel(picture, x, y, gammaEncoded(at(x, y)));
        }
        return picture;
    }

  private:
    std::size_t offset(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(mWidth) + static_cast<std::size_t>(x);
    }

    // Distance from the middle: 1 on the outline.
    static float distance(const Pebble& pebble, float u, float v) {
        const float square = u * u + v * v;
        // cos 3a and sin 3a times the cubed distance, without the angle a.
        const float lobe =
            u * (u * u - 3 * v * v) * pebble.lobePhase + v * (3 * u * u - v * v) * (1 - pebble.lobePhase);
        return std::sqrt(square) + pebble.lobes * lobe / (0.3F + square);
    }

    void drawPixel(const Pebble& pebble, int x, int y) {
        const float dx = static_cast<float>(x) - pebble.x;
        const float dy = static_cast<float>(y) - pebble.y;
        const float u = (dx * pebble.cosine + dy * pebble.sine) / pebble.radius;
        const float v = (dy * pebble.cosine - dx * pebble.sine) / (pebble.radius * pebble.flattening);
        const float d = distance(pebble, u, v);
        if (d > 1.5F) return;
        Color& pixel = at(x, y);

        const float coverage = std::clamp((1 - d) * pebble.radius * pebble.flattening, 0.0F, 1.0F);
        if (coverage < 1) {
            const float shiftedU = u - 0.16F * (pebble.cosine + pebble.sine);
            const float shiftedV = v - 0.16F * (pebble.cosine - pebble.sine) / pebble.flattening;
            const float shadow = 1 - smoothstep(0.75F, 1.3F, distance(pebble, shiftedU, shiftedV));
            pixel = pixel * (1 - 0.72F * shadow);
        }
        if (coverage > 0) pixel = mix(pixel, surface(pebble, dx, dy, u, v, d), coverage);
    }

    static Color surface(const Pebble& pebble, float dx, float dy, float u, float v, float d) {
        // The top is flat and bends down towards the outline: the slope grows with the cube of the distance.
        const float slope = 1.5F * d * d;
        const float slopeX = slope * (u * pebble.cosine - v * pebble.sine);
        const float slopeY = slope * (u * pebble.sine + v * pebble.cosine);
        const float length = std::sqrt(slopeX * slopeX + slopeY * slopeY + 1);
        // Light from the upper left, the direction (-0.45, -0.6, 0.66).
        const float light = std::max(0.0F, (-0.45F * slopeX - 0.6F * slopeY + 0.66F) / length);

        const float mottling = valueNoise(dx * 0.09F, dy * 0.09F, pebble.noiseSeed) * 0.16F;
        const float grain =
            latticeNoise(static_cast<int>(dx * 0.8F + 512), static_cast<int>(dy * 0.8F + 512), pebble.noiseSeed) *
            0.07F;
        const float band = u * 0.5F + v * 0.8F + 0.12F * valueNoise(dx * 0.06F + 7, dy * 0.06F, pebble.noiseSeed);
        const float vein = pebble.vein * (1 - smoothstep(0.03F, 0.09F, std::fabs(band - 0.15F)));
        const Color color = mix(pebble.color * (1 + mottling + grain), Color{0.8F, 0.78F, 0.72F}, vein);

        const float specular = std::pow(light, 24.0F) * 0.10F;
        const float brightness = 0.16F + 1.15F * light;
        const Color lit = color * brightness;
        return {lit.red + specular, lit.green + specular, lit.blue + specular};
    }

    int mWidth;
    int mHeight;
    std::vector<Color> mColors;
};

Color pebbleColor(Random& random) {
    // Linear light: slate, basalt, granite, sandstone, ochre, rust, sage, quartz.
    static constexpr std::array<Color, 8> stones = {{{0.13F, 0.17F, 0.20F},
                                                     {0.06F, 0.065F, 0.07F},
                                                     {0.27F, 0.26F, 0.25F},
                                                     {0.38F, 0.30F, 0.21F},
                                                     {0.36F, 0.23F, 0.11F},
                                                     {0.24F, 0.11F, 0.07F},
                                                     {0.17F, 0.20F, 0.14F},
                                                     {0.62F, 0.59F, 0.53F}}};
    const Color& stone = stones[random.next() % stones.size()];
    const Color& other = stones[random.next() % stones.size()];
    // One draw for each statement: compilers differ in which side of an operator they call first.
    const float brightness = random.between(0.75F, 1.2F);
    const float t = random.between(0, 0.35F);
    return mix(stone, other, t) * brightness;
}

Pebble makePebble(float x, float y, float radius, Random& random) {
    const float angle = random.between(0, twoPi);
    Pebble pebble = {};
    pebble.x = x;
    pebble.y = y;
    pebble.radius = radius;
    pebble.flattening = random.between(0.62F, 0.95F);
    pebble.cosine = std::cos(angle);
    pebble.sine = std::sin(angle);
    pebble.lobes = random.between(-0.1F, 0.1F);
    pebble.lobePhase = random.between(0, 1);
    pebble.color = pebbleColor(random);
    pebble.vein = random.next() % 6 == 0 ? random.between(0.25F, 0.6F) : 0;
    pebble.noiseSeed = random.next();
    return pebble;
}

// A layer of pebbles on a jittered grid. Layers of larger pebbles lie on top.
struct Layer {
    float spacing;           // in units of 1/540 of the shorter side
    float smallest, largest; // radius, in the same unit
    float density;           // fraction of the grid cells that hold a pebble
};

void drawLayer(Canvas& canvas, int width, int height, const Layer& layer, float unit, Random& random) {
    const float spacing = layer.spacing * unit;
    const int columns = static_cast<int>(static_cast<float>(width) / spacing) + 3;
    const int rows = static_cast<int>(static_cast<float>(height) / spacing) + 3;
    std::vector<Pebble> pebbles;
    for (int row = -1; row < rows; ++row) {
        for (int column = -1; column < columns; ++column) {
            const float x = (static_cast<float>(column) + random.between(0, 1)) * spacing;
            const float y = (static_cast<float>(row) + random.between(0, 1)) * spacing;
            const float radius = random.between(layer.smallest, layer.largest) * unit;
            if (random.between(0, 1) < layer.density) pebbles.push_back(makePebble(x, y, radius, random));
        }
    }
    // Shuffled: drawn in grid order, pebbles would all cast their shadows on neighbours of the same side.
    for (std::size_t i = pebbles.size(); i > 1; --i)
        std::swap(pebbles[i - 1], pebbles[random.next() % i]);
    for (const Pebble& pebble : pebbles)
        canvas.draw(pebble);
}

// Light and depth vary slowly; water tints the deeper parts.
void tint(Canvas& canvas, int width, int height, float unit, std::uint32_t noiseSeed) {
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const float across = static_cast<float>(x) / (180.0F * unit);
            const float down = static_cast<float>(y) / (180.0F * unit);
            const float depth = 0.5F + 0.5F * valueNoise(across, down, noiseSeed);
            Color& pixel = canvas.at(x, y);
            pixel = {pixel.red * (1.12F - 0.42F * depth), pixel.green * (1.14F - 0.22F * depth),
                     pixel.blue * (1.12F - 0.16F * depth)};
        }
    }
}

} // namespace

Picture pebbles(int width, int height, std::uint32_t seed) {
    constexpr std::array<Layer, 3> layers = {{{11, 5, 9, 0.95F}, {31, 13, 24, 0.8F}, {78, 30, 50, 0.62F}}};
    Random random(seed);
    const float unit = std::max(0.1F, static_cast<float>(std::min(width, height)) / 540.0F);
    Canvas canvas(width, height);
    for (const Layer& layer : layers)
        drawLayer(canvas, width, height, layer, unit, random);
    tint(canvas, width, height, unit, random.next());
    return canvas.picture();
}

} // namespace tidalume::gallery
