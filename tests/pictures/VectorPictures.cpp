#include "effects/vector/VectorGraphicRenderer.h"
#include "tests/pictures/PictureCase.h"

#include <GLES3/gl3.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <random>

namespace tidalume::pictures {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

/// Red, green, blue, alpha.
using Color = Values;

const Color open(nan, 4);
const Color cleared = {0.2, 0.6, 1.0, 0.4};
const Color gold = {1.0, 0.7, 0.1, 0.5};
const Color blue = {0.0, 0.3, 0.8, 1.0};
const Color clear = {0.4, 0.0, 0.6, 0.0};
const Color green = {0.0, 1.0, 0.0, 0.25};

std::vector<float> floats(const Color& color) {
    return {std::begin(color), std::end(color)};
}

Color mix(const Color& from, const Color& to, double share) {
    return from + (to - from) * share;
}

/// Random bytes as a texture, and its samples with linear filter and clamped edges.
class Bitmap {
  public:
    Bitmap(int width, int height, unsigned seed) : mWidth(width), mHeight(height) {
        std::mt19937 random(seed);
        for (int i = 0; i < width * height * 4; ++i)
            mBytes.push_back(static_cast<std::uint8_t>(random() >> 24));
        mName = headless::makeTexture(GL_RGBA8, width, height, mBytes);
    }
    ~Bitmap() { glDeleteTextures(1, &mName); }
    Bitmap(const Bitmap&) = delete;
    Bitmap& operator=(const Bitmap&) = delete;

    GLuint name() const { return mName; }

    Color sample(double u, double v) const {
        const double x = std::clamp(u * mWidth - 0.5, 0.0, mWidth - 1.0);
        const double y = std::clamp(v * mHeight - 0.5, 0.0, mHeight - 1.0);
        const int column = std::min(static_cast<int>(x), mWidth - 2);
        const int row = std::min(static_cast<int>(y), mHeight - 2);
        const Color lower = mix(texel(column, row), texel(column + 1, row), x - column);
        const Color upper = mix(texel(column, row + 1), texel(column + 1, row + 1), x - column);
        return mix(lower, upper, y - row);
    }

  private:
    Color texel(int column, int row) const {
        const std::uint8_t* bytes = &mBytes[static_cast<size_t>(row * mWidth + column) * 4];
        return Color{1.0 * bytes[0], 1.0 * bytes[1], 1.0 * bytes[2], 1.0 * bytes[3]} / 255.0;
    }

    int mWidth;
    int mHeight;
    std::vector<std::uint8_t> mBytes;
    GLuint mName = 0;
};

struct Blend {
    int equation = GL_FUNC_ADD;
    int srcRGB = GL_SRC_ALPHA;
    int dstRGB = GL_ONE_MINUS_SRC_ALPHA;
    int srcAlpha = GL_SRC_ALPHA;
    int dstAlpha = GL_ONE_MINUS_SRC_ALPHA;
    float constant[4] = {0.0F, 0.0F, 0.0F, 1.0F};

    void apply(VectorGraphicRenderer& graphics) const {
        graphics.setBlendEquation(equation);
        graphics.setBlendFunction(srcRGB, dstRGB, srcAlpha, dstAlpha);
        graphics.setBlendColor(constant[0], constant[1], constant[2], constant[3]);
    }

    Color over(const Color& source, const Color& target) const {
        Color result(4);
        for (size_t c = 0; c < 4; ++c) {
            const double s = source[c] * factor(c < 3 ? srcRGB : srcAlpha, c, source, target);
            const double d = target[c] * factor(c < 3 ? dstRGB : dstAlpha, c, source, target);
            result[c] = equation == GL_FUNC_ADD ? s + d : equation == GL_MAX ? std::max(source[c], target[c]) : d - s;
            result[c] = std::clamp(result[c], 0.0, 1.0);
        }
        return result;
    }

  private:
    double factor(int name, size_t channel, const Color& source, const Color& target) const {
        if (name == GL_ZERO) return 0.0;
        if (name == GL_ONE) return 1.0;
        if (name == GL_SRC_ALPHA) return source[3];
        if (name == GL_ONE_MINUS_SRC_ALPHA) return 1.0 - source[3];
        if (name == GL_DST_COLOR) return target[channel];
        if (name == GL_CONSTANT_COLOR) return constant[channel];
        return nan;
    }
};

const Blend overlaying;
const Blend additive = {GL_FUNC_ADD, GL_SRC_ALPHA, GL_ONE, GL_ZERO, GL_ONE};
const Blend multiplying = {GL_FUNC_ADD, GL_DST_COLOR, GL_ZERO, GL_ONE, GL_ONE_MINUS_SRC_ALPHA};
const Blend subtracting = {GL_FUNC_REVERSE_SUBTRACT, GL_CONSTANT_COLOR,         GL_ONE, GL_ONE,
                           GL_CONSTANT_COLOR,        {0.5F, 0.25F, 1.0F, 0.75F}};
const Blend largest = {GL_MAX};

/// One drawing call and its formula: the colour at a point in pixels from the top-left corner, none where the call
/// covers nothing.
struct Layer {
    std::function<void(VectorGraphicRenderer&)> draw;
    std::function<std::optional<Color>(double x, double y)> color;
};

Comparison paint(int width, int height, const Blend& blend, const std::vector<Layer>& layers) {
    VectorGraphicRenderer graphics;
    graphics.init();
    graphics.setScreenSize(width, height);
    blend.apply(graphics);
    glClearColor(cleared[0], cleared[1], cleared[2], cleared[3]);
    glClear(GL_COLOR_BUFFER_BIT);
    for (const Layer& layer : layers)
        layer.draw(graphics);

    return compare(headless::readFramebuffer(width, height), [&](int column, int row) {
        Color color = cleared;
        for (const Layer& layer : layers) {
            if (const auto source = layer.color(column + 0.5, height - row - 0.5)) color = blend.over(*source, color);
        }
        return color;
    });
}

Layer gradient(float x, float y, float begin, const Color& beginColor, float end, const Color& endColor) {
    const auto draw = [=](VectorGraphicRenderer& graphics) {
        graphics.renderRadialGradient(x, y, begin, floats(beginColor).data(), end, floats(endColor).data());
    };
    const auto color = [=](double px, double py) -> std::optional<Color> {
        const double way = std::hypot(px - x, py - y) - begin;
        if (begin == end && std::fabs(way) < 0.01) return open;
        return mix(beginColor, endColor, std::clamp(way / (end - begin), 0.0, 1.0));
    };
    return {draw, color};
}

/// Inside a disc; nothing on its very edge, which the driver may round either way.
std::optional<Color> onDisc(double x, double y, double radius, const Color& color) {
    const double distance = std::hypot(x, y) - radius;
    if (std::fabs(distance) < 0.3) return open;
    return distance < 0.0 ? std::optional<Color>(color) : std::nullopt;
}

Layer circle(float x, float y, float radius, const Color& color) {
    return {[=](VectorGraphicRenderer& graphics) { graphics.renderCircle(x, y, radius, floats(color).data()); },
            [=](double px, double py) { return onDisc(px - x, py - y, radius, color); }};
}

Layer bitmapCircle(float x, float y, float diameter, float alpha, const Bitmap& bitmap, int width, int height) {
    const auto draw = [=, &bitmap](VectorGraphicRenderer& graphics) {
        float color[4] = {0.9F, 0.1F, 0.5F, alpha};
        graphics.renderBitmapCircle(x, y, diameter, color, bitmap.name());
    };
    const auto color = [=, &bitmap](double px, double py) {
        Color color = bitmap.sample(px / width, 1.0 - py / height);
        color[3] = alpha;
        return onDisc(px - x, py - y, 0.5 * diameter, color);
    };
    return {draw, color};
}

/// A plain or turned rectangle of 17 pixels in height, with a mask or without.
Layer rectangle(float x, float y, float width, std::optional<int> rotation, const Bitmap& bitmap, const Bitmap* mask,
                int screenWidth, int screenHeight) {
    constexpr float height = 17.0F;
    const auto draw = [=, &bitmap](VectorGraphicRenderer& graphics) {
        const GLuint texture = bitmap.name();
        if (mask && rotation)
            graphics.renderRotatedAlphaMaskedBitmapRectangle(x, y, width, height, texture, *rotation, mask->name());
        else if (mask)
            graphics.renderAlphaMaskedBitmapRectangle(x, y, width, height, texture, mask->name());
        else if (rotation)
            graphics.renderRotatedBitmapRectangle(x, y, width, height, texture, *rotation);
        else
            graphics.renderBitmapRectangle(x, y, width, height, texture);
    };
    const auto color = [=, &bitmap](double px, double py) -> std::optional<Color> {
        const double sx = (px - x) / width;
        const double sy = 1.0 - (py - y) / height;
        if (sx < 0.0 || sx > 1.0 || sy < 0.0 || sy > 1.0) return std::nullopt;
        // Where each rotation code looks into the bitmap; any other code stands for 0.
        const double u[6] = {sx, 1.0 - sy, 1.0 - sx, sy, sx, 1.0 - sx};
        const double v[6] = {sy, sx, 1.0 - sy, 1.0 - sx, 1.0 - sy, sy};
        const int code = rotation && *rotation >= 0 && *rotation < 6 ? *rotation : 0;
        Color result = bitmap.sample(u[code], v[code]);
        if (mask) result[3] = mask->sample(px / screenWidth, 1.0 - py / screenHeight)[0];
        return result;
    };
    return {draw, color};
}

/// Every rotation code, two unknown ones, and a plain rectangle after each of them.
Comparison rotations(int width, int height, const Blend& blend, bool masked) {
    const Bitmap bitmap(5, 4, 3);
    const Bitmap mask(7, 3, 4);
    const auto row = [&](float x, float y, float length, std::optional<int> rotation) {
        return rectangle(x, y, length, rotation, bitmap, masked ? &mask : nullptr, width, height);
    };
    std::vector<Layer> layers;
    float y = 1.25F; // a quarter of a pixel keeps edges clear of pixel centres
    for (const int rotation : {0, 1, 2, 3, 4, 5, 6, -1}) {
        layers.push_back(row(2.25F, y, 57.0F, rotation));
        layers.push_back(row(61.25F, y, 70.0F, std::nullopt));
        y += 18.5F;
    }
    return paint(width, height, blend, layers);
}

Comparison circles(int width, int height, const Blend& blend) {
    return paint(
        width, height, blend,
        {circle(30.0F, 20.0F, 15.0F, gold), circle(38.25F, 28.5F, 18.5F, green), circle(2.0F, 50.0F, 31.0F, blue)});
}

Comparison bitmapCircles(int width, int height, const Blend& blend) {
    const Bitmap exact(width, height, 5);
    const Bitmap coarse(6, 5, 6);
    return paint(width, height, blend,
                 {bitmapCircle(40.5F, 25.25F, 50.0F, 0.75F, exact, width, height),
                  bitmapCircle(60.0F, 55.0F, 36.0F, 0.5F, coarse, width, height),
                  bitmapCircle(2.0F, 50.0F, 31.0F, 1.0F, exact, width, height)});
}

// Drivers may blend, and weigh texels, in 8 bits.
constexpr Tolerance color8 = {2.01 / 255.0, "two steps of 8 bits: a driver may round the colour before it blends"};
constexpr Tolerance filtered8 = {4.01 / 255.0, "the same, and 8-bit weights of the linear filter on two axes"};

} // namespace

PictureTable vectorPictures() {
    return {
        {"vector_gradient_97x61", [] { return paint(97, 61, overlaying, {gradient(40, 20, 10, gold, 50, blue)}); },
         color8},
        {"vector_gradient_inwards_64x160",
         [] { return paint(64, 160, overlaying, {gradient(-20, 170, 150, gold, 30, clear)}); }, color8},
        {"vector_gradient_hard_edge_subtracting",
         [] { return paint(97, 61, subtracting, {gradient(50, 30, 25, gold, 25, blue)}); }, color8},
        {"vector_discs_97x61", [] { return circles(97, 61, overlaying); }, color8},
        {"vector_discs_adding_64x160", [] { return circles(64, 160, additive); }, color8},
        {"vector_bitmap_discs_97x61", [] { return bitmapCircles(97, 61, overlaying); }, filtered8},
        {"vector_bitmap_discs_multiplying_64x160", [] { return bitmapCircles(64, 160, multiplying); }, filtered8},
        {"vector_rotations", [] { return rotations(120, 150, overlaying, false); }, filtered8},
        {"vector_rotations_largest", [] { return rotations(120, 150, largest, false); }, filtered8},
        {"vector_masked_rotations", [] { return rotations(120, 150, overlaying, true); }, filtered8},
        {"vector_masked_rotations_subtracting", [] { return rotations(120, 150, subtracting, true); }, filtered8},
    };
}

} // namespace tidalume::pictures
