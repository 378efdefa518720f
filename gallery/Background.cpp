#include "gallery/Background.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tidalume::gallery {

namespace {

struct Color {
    float red;
    float green;
    float blue;
};

Color operator*(const Color& color, float factor) {
    return {color.red * factor, color.green * factor, color.blue * factor};
}

Color mix(const Color& from, const Color& to, float share) {
    return {from.red + (to.red - from.red) * share, from.green + (to.green - from.green) * share,
            from.blue + (to.blue - from.blue) * share};
}

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

float smoothstep(float low, float high, float value) {
    const float share = std::clamp((value - low) / (high - low), 0.0F, 1.0F);
    return share * share * (3.0F - 2.0F * share);
}

// A fixed value in [-1, 1] for every point of the integer grid.
float gridNoise(int x, int y, std::uint32_t salt) {
    std::uint32_t bits =
        static_cast<std::uint32_t>(x) * 0x8DA6B343U ^ static_cast<std::uint32_t>(y) * 0xD8163841U ^ salt;
    bits = (bits ^ (bits >> 15)) * 0x2C1B3C6DU;
    bits ^= bits >> 13;
    return static_cast<float>(bits & 0xFFFFU) / 32767.5F - 1.0F;
}

float smoothNoise(float x, float y, std::uint32_t salt) {
    const float column = std::floor(x);
    const float row = std::floor(y);
    const float right = smoothstep(0, 1, x - column);
    const float down = smoothstep(0, 1, y - row);
    const auto i = static_cast<int>(column);
    const auto j = static_cast<int>(row);
    const float upper = gridNoise(i, j, salt) * (1 - right) + gridNoise(i + 1, j, salt) * right;
    const float lower = gridNoise(i, j + 1, salt) * (1 - right) + gridNoise(i + 1, j + 1, salt) * right;
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
    std::uint32_t salt;
};

class Canvas {
  public:
    Canvas(int width, int height) : mWidth(width), mHeight(height) {
        mColors.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), Color{0.05F, 0.06F, 0.055F});
    }

    Color& at(int x, int y) {
        return mColors[static_cast<std::size_t>(y) * static_cast<std::size_t>(mWidth) + static_cast<std::size_t>(x)];
    }

    // Draws a pebble with the soft shadow that it throws to the lower right on what lies below it.
    void draw(const Pebble& pebble) {
        const float reach = pebble.radius * 1.35F + 1;
        const int left = std::max(0, static_cast<int>(pebble.x - reach));
        const int right = std::min(mWidth - 1, static_cast<int>(pebble.x + reach));
        const int top = std::max(0, static_cast<int>(pebble.y - reach));
        const int bottom = std::min(mHeight - 1, static_cast<int>(pebble.y + reach));
        for (int y = top; y <= bottom; ++y) {
            for (int x = left; x <= right; ++x)
                drawPixel(pebble, x, y);
        }
    }

    Picture picture() const {
        Picture picture(mWidth, mHeight);
        std::uint8_t* out = picture.rgba.data();
        for (const Color& color : mColors) {
            for (const float channel : {color.red, color.green, color.blue}) {
                // The square root serves as the display's gamma.
                *out++ = static_cast<std::uint8_t>(std::lround(std::sqrt(std::clamp(channel, 0.0F, 1.0F)) * 255.0F));
            }
            *out++ = 255;
        }
        return picture;
    }

  private:
    // Distance from the middle in units of the outline: 1 on it.
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
        // A flat top that bends down towards the outline: the slope grows with the cube of the distance.
        const float slope = 1.5F * d * d;
        const float slopeX = slope * (u * pebble.cosine - v * pebble.sine);
        const float slopeY = slope * (u * pebble.sine + v * pebble.cosine);
        const float length = std::sqrt(slopeX * slopeX + slopeY * slopeY + 1);
        // Light from the upper left, the direction (-0.45, -0.6, 0.66).
        const float light = std::max(0.0F, (-0.45F * slopeX - 0.6F * slopeY + 0.66F) / length);

        const float mottling = smoothNoise(dx * 0.09F, dy * 0.09F, pebble.salt) * 0.16F;
        const float grain =
            gridNoise(static_cast<int>(dx * 0.8F + 512), static_cast<int>(dy * 0.8F + 512), pebble.salt) * 0.07F;
        const float band = u * 0.5F + v * 0.8F + 0.12F * smoothNoise(dx * 0.06F + 7, dy * 0.06F, pebble.salt);
        const float vein = pebble.vein * (1 - smoothstep(0.03F, 0.09F, std::fabs(band - 0.15F)));
        const Color color = mix(pebble.color * (1 + mottling + grain), Color{0.8F, 0.78F, 0.72F}, vein);

        const float gloss = std::pow(light, 24.0F) * 0.10F;
        const float brightness = 0.16F + 1.15F * light;
        const Color lit = color * brightness;
        return {lit.red + gloss, lit.green + gloss, lit.blue + gloss};
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
    const float share = random.between(0, 0.35F);
    return mix(stone, other, share) * brightness;
}

Pebble makePebble(float x, float y, float radius, Random& random) {
    const float angle = random.between(0, 6.2831853F);
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
    pebble.salt = random.next();
    return pebble;
}

// One bed of pebbles on a jittered grid; the wider a bed's grid, the higher it lies.
struct Bed {
    float spacing;           // in units of 1/540 of the shorter side
    float smallest, largest; // radius, in the same unit
    float share;             // of the grid's places that hold a pebble
};

void drawBed(Canvas& canvas, int width, int height, const Bed& bed, float unit, Random& random) {
    const float spacing = bed.spacing * unit;
    const int columns = static_cast<int>(static_cast<float>(width) / spacing) + 3;
    const int rows = static_cast<int>(static_cast<float>(height) / spacing) + 3;
    std::vector<Pebble> pebbles;
    for (int row = -1; row < rows; ++row) {
        for (int column = -1; column < columns; ++column) {
            const float x = (static_cast<float>(column) + random.between(0, 1)) * spacing;
            const float y = (static_cast<float>(row) + random.between(0, 1)) * spacing;
            const float radius = random.between(bed.smallest, bed.largest) * unit;
            if (random.between(0, 1) < bed.share) pebbles.push_back(makePebble(x, y, radius, random));
        }
    }
    // In the grid's order all shadows would fall on one side's neighbours only.
    for (std::size_t i = pebbles.size(); i > 1; --i)
        std::swap(pebbles[i - 1], pebbles[random.next() % i]);
    for (const Pebble& pebble : pebbles)
        canvas.draw(pebble);
}

// Light and depth vary slowly over the bed, and water tints the deeper parts.
void tint(Canvas& canvas, int width, int height, float unit, std::uint32_t salt) {
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const float across = static_cast<float>(x) / (180.0F * unit);
            const float down = static_cast<float>(y) / (180.0F * unit);
            const float depth = 0.5F + 0.5F * smoothNoise(across, down, salt);
            Color& pixel = canvas.at(x, y);
            pixel = {pixel.red * (1.12F - 0.42F * depth), pixel.green * (1.14F - 0.22F * depth),
                     pixel.blue * (1.12F - 0.16F * depth)};
        }
    }
}

// Which source pixels, with which weights that sum to 1, make up one pixel of the result.
struct Taps {
    int first = 0;
    std::vector<float> weights;
};

// A triangle filter that spans at least one result pixel, so that shrinking does not alias.
std::vector<Taps> tapsFor(int sourceLength, int resultLength, double scale) {
    const double reach = std::max(1.0, 1.0 / scale);
    const double start = (sourceLength - resultLength / scale) / 2;
    std::vector<Taps> taps(static_cast<std::size_t>(resultLength));
    for (int i = 0; i < resultLength; ++i) {
        const double middle = start + (i + 0.5) / scale - 0.5;
        const int first = std::clamp(static_cast<int>(std::floor(middle - reach)) + 1, 0, sourceLength - 1);
        const int last = std::clamp(static_cast<int>(std::ceil(middle + reach)) - 1, first, sourceLength - 1);
        Taps& tap = taps[static_cast<std::size_t>(i)];
        tap.first = first;
        double sum = 0;
        for (int j = first; j <= last; ++j) {
            const double weight = std::max(1e-6, 1 - std::abs(j - middle) / reach);
            tap.weights.push_back(static_cast<float>(weight));
            sum += weight;
        }
        for (float& weight : tap.weights)
            weight = static_cast<float>(weight / sum);
    }
    return taps;
}

// One row of the source, laid over black and scaled in width.
std::vector<Color> scaledRow(const Picture& picture, int y, const std::vector<Taps>& columns) {
    std::vector<Color> row;
    row.reserve(columns.size());
    for (const Taps& tap : columns) {
        Color sum = {0, 0, 0};
        const std::uint8_t* pixel = picture.pixel(tap.first, y);
        for (const float weight : tap.weights) {
            const float share = weight * static_cast<float>(pixel[3]) / 255.0F;
            sum.red += share * static_cast<float>(pixel[0]);
            sum.green += share * static_cast<float>(pixel[1]);
            sum.blue += share * static_cast<float>(pixel[2]);
            pixel += 4;
        }
        row.push_back(sum);
    }
    return row;
}

} // namespace

Picture pebbles(int width, int height, std::uint32_t seed) {
    constexpr std::array<Bed, 3> beds = {{{11, 5, 9, 0.95F}, {31, 13, 24, 0.8F}, {78, 30, 50, 0.62F}}};
    Random random(seed);
    const float unit = std::max(0.1F, static_cast<float>(std::min(width, height)) / 540.0F);
    Canvas canvas(width, height);
    for (const Bed& bed : beds)
        drawBed(canvas, width, height, bed, unit, random);
    tint(canvas, width, height, unit, random.next());
    return canvas.picture();
}

Picture coverFit(const Picture& picture, int width, int height) {
    const double scale =
        std::max(static_cast<double>(width) / picture.width, static_cast<double>(height) / picture.height);
    const std::vector<Taps> columns = tapsFor(picture.width, width, scale);
    const std::vector<Taps> rows = tapsFor(picture.height, height, scale);

    Picture result(width, height);
    std::vector<Color> sums(static_cast<std::size_t>(width));
    // The source's rows, scaled when they are first needed and dropped after the last time.
    std::vector<std::vector<Color>> scaled(static_cast<std::size_t>(picture.height));
    std::size_t dropped = 0;
    for (int y = 0; y < height; ++y) {
        const Taps& tap = rows[static_cast<std::size_t>(y)];
        for (; dropped < static_cast<std::size_t>(tap.first); ++dropped)
            scaled[dropped] = {};
        std::fill(sums.begin(), sums.end(), Color{0, 0, 0});
        for (std::size_t j = 0; j < tap.weights.size(); ++j) {
            std::vector<Color>& row = scaled[static_cast<std::size_t>(tap.first) + j];
            if (row.empty()) row = scaledRow(picture, tap.first + static_cast<int>(j), columns);
            for (std::size_t x = 0; x < sums.size(); ++x) {
                sums[x].red += tap.weights[j] * row[x].red;
                sums[x].green += tap.weights[j] * row[x].green;
                sums[x].blue += tap.weights[j] * row[x].blue;
            }
        }
        for (int x = 0; x < width; ++x) {
            const Color& sum = sums[static_cast<std::size_t>(x)];
            std::uint8_t* pixel = result.pixel(x, y);
            pixel[0] = static_cast<std::uint8_t>(std::lround(sum.red));
            pixel[1] = static_cast<std::uint8_t>(std::lround(sum.green));
            pixel[2] = static_cast<std::uint8_t>(std::lround(sum.blue));
            pixel[3] = 255;
        }
    }
    return result;
}

} // namespace tidalume::gallery
