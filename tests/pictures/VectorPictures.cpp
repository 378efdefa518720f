#include "effects/vector/VectorGraphicRenderer.h"
#include "headless/Pixels.h"
#include "tests/pictures/PictureCase.h"

#include <GLES3/gl3.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <random>

namespace tidalume::pictures {
namespace {

/// Red, green, blue, alpha: as formulas compute them, and as the renderer takes them.
using Color = std::array<double, 4>;
using Rgba = std::array<float, 4>;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr Color open = {nan, nan, nan, nan};
constexpr Color cleared = {0.2, 0.6, 1.0, 0.4};

Color toColor(const Rgba& rgba) {
    Color color;
    std::copy(rgba.begin(), rgba.end(), color.begin());
    return color;
}

double mix(double from, double to, double share) {
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
        Color result = {};
        for (size_t c = 0; c < 4; ++c) {
            const double lower = mix(texel(column, row, c), texel(column + 1, row, c), x - column);
            const double upper = mix(texel(column, row + 1, c), texel(column + 1, row + 1, c), x - column);
            result[c] = mix(lower, upper, y - row);
        }
        return result;
    }

  private:
    double texel(int column, int row, size_t channel) const {
        return mBytes[static_cast<size_t>(row * mWidth + column) * 4 + channel] / 255.0;
    }

    int mWidth;
    int mHeight;
    std::vector<std::uint8_t> mBytes;
    GLuint mName = 0;
};

struct Blend {
    GLenum equation = GL_FUNC_ADD;
    GLenum srcRGB = GL_SRC_ALPHA;
    GLenum dstRGB = GL_ONE_MINUS_SRC_ALPHA;
    GLenum srcAlpha = GL_SRC_ALPHA;
    GLenum dstAlpha = GL_ONE_MINUS_SRC_ALPHA;
    Rgba constant = {0.0F, 0.0F, 0.0F, 1.0F};

    void apply(VectorGraphicRenderer& graphics) const {
        graphics.setBlendEquation(static_cast<int>(equation));
        graphics.setBlendFunction(static_cast<int>(srcRGB), static_cast<int>(dstRGB), static_cast<int>(srcAlpha),
                                  static_cast<int>(dstAlpha));
        graphics.setBlendColor(constant[0], constant[1], constant[2], constant[3]);
    }

    Color over(const Color& source, const Color& target) const {
        Color result = {};
        for (size_t c = 0; c < 4; ++c) {
            const double s = source[c] * factor(c < 3 ? srcRGB : srcAlpha, c, source, target);
            const double d = target[c] * factor(c < 3 ? dstRGB : dstAlpha, c, source, target);
            const double blended = equation == GL_MAX                     ? std::max(source[c], target[c])
                                   : equation == GL_FUNC_REVERSE_SUBTRACT ? d - s
                                                                          : s + d;
            result[c] = std::clamp(blended, 0.0, 1.0);
        }
        return result;
    }

  private:
    double factor(GLenum name, size_t channel, const Color& source, const Color& target) const {
        switch (name) {
        case GL_ZERO:
            return 0.0;
        case GL_ONE:
            return 1.0;
        case GL_SRC_ALPHA:
            return source[3];
        case GL_ONE_MINUS_SRC_ALPHA:
            return 1.0 - source[3];
        case GL_DST_COLOR:
            return target[channel];
        case GL_CONSTANT_COLOR:
            return static_cast<double>(constant[channel]);
        default:
            return nan;
        }
    }
};

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
    glClearColor(static_cast<float>(cleared[0]), static_cast<float>(cleared[1]), static_cast<float>(cleared[2]),
                 static_cast<float>(cleared[3]));
    glClear(GL_COLOR_BUFFER_BIT);
    for (const Layer& layer : layers)
        layer.draw(graphics);

    Comparison comparison = {width, height, 4, headless::readFramebuffer(width, height).rgba, {}};
    for (int row = 0; row < height; ++row) {
        for (int column = 0; column < width; ++column) {
            Color color = cleared;
            for (const Layer& layer : layers) {
                if (const auto source = layer.color(column + 0.5, height - row - 0.5))
                    color = blend.over(*source, color);
            }
            comparison.expected.insert(comparison.expected.end(), color.begin(), color.end());
        }
    }
    return comparison;
}

Layer gradient(float x, float y, float begin, Rgba beginColor, float end, Rgba endColor) {
    return {[=](VectorGraphicRenderer& graphics) mutable {
                graphics.renderRadialGradient(x, y, begin, beginColor.data(), end, endColor.data());
            },
            [=](double px, double py) -> std::optional<Color> {
                const double distance = std::hypot(px - static_cast<double>(x), py - static_cast<double>(y));
                const double way = distance - static_cast<double>(begin);
                if (begin == end && std::fabs(way) < 0.01) return open;
                const double share = std::clamp(way / static_cast<double>(end - begin), 0.0, 1.0);
                Color color = {};
                for (size_t c = 0; c < 4; ++c)
                    color[c] = mix(toColor(beginColor)[c], toColor(endColor)[c], share);
                return color;
            }};
}

/// Inside a disc; nothing on its very edge, which the driver may round either way.
std::optional<Color> onDisc(double distance, double radius, const Color& color) {
    if (std::fabs(distance - radius) < 0.3) return open;
    return distance < radius ? std::optional<Color>(color) : std::nullopt;
}

Layer circle(float x, float y, float radius, Rgba rgba) {
    return {[=](VectorGraphicRenderer& graphics) mutable { graphics.renderCircle(x, y, radius, rgba.data()); },
            [=](double px, double py) {
                return onDisc(std::hypot(px - static_cast<double>(x), py - static_cast<double>(y)),
                              static_cast<double>(radius), toColor(rgba));
            }};
}

Layer bitmapCircle(float x, float y, float diameter, float alpha, const Bitmap& bitmap, int width, int height) {
    return {[=, &bitmap](VectorGraphicRenderer& graphics) {
                float color[4] = {0.9F, 0.1F, 0.5F, alpha};
                graphics.renderBitmapCircle(x, y, diameter, color, bitmap.name());
            },
            [=, &bitmap](double px, double py) {
                Color color = bitmap.sample(px / width, 1.0 - py / height);
                color[3] = static_cast<double>(alpha);
                return onDisc(std::hypot(px - static_cast<double>(x), py - static_cast<double>(y)),
                              0.5 * static_cast<double>(diameter), color);
            }};
}

struct Rectangle {
    float x, y, width, height;
};

/// Where in its bitmap, turned by a code, a rectangle shows the point that lies at the share sx of its width from the
/// left and sy of its height from the bottom.
std::array<double, 2> turned(int rotation, double sx, double sy) {
    switch (rotation) {
    case 1:
        return {1.0 - sy, sx};
    case 2:
        return {1.0 - sx, 1.0 - sy};
    case 3:
        return {sy, 1.0 - sx};
    case 4:
        return {sx, 1.0 - sy};
    case 5:
        return {1.0 - sx, sy};
    default:
        return {sx, sy};
    }
}

/// A plain or turned rectangle, with a mask or without.
Layer rectangle(const Rectangle& r, const Bitmap& bitmap, std::optional<int> rotation, const Bitmap* mask, int width,
                int height) {
    const auto draw = [=, &bitmap](VectorGraphicRenderer& graphics) {
        const auto texture = static_cast<int>(bitmap.name());
        if (mask && rotation) {
            graphics.renderRotatedAlphaMaskedBitmapRectangle(r.x, r.y, r.width, r.height, texture, *rotation,
                                                             static_cast<int>(mask->name()));
        } else if (mask) {
            graphics.renderAlphaMaskedBitmapRectangle(r.x, r.y, r.width, r.height, texture,
                                                      static_cast<int>(mask->name()));
        } else if (rotation) {
            graphics.renderRotatedBitmapRectangle(r.x, r.y, r.width, r.height, bitmap.name(), *rotation);
        } else {
            graphics.renderBitmapRectangle(r.x, r.y, r.width, r.height, bitmap.name());
        }
    };
    const auto color = [=, &bitmap](double px, double py) -> std::optional<Color> {
        const double sx = (px - static_cast<double>(r.x)) / static_cast<double>(r.width);
        const double sy = 1.0 - (py - static_cast<double>(r.y)) / static_cast<double>(r.height);
        if (sx < 0.0 || sx > 1.0 || sy < 0.0 || sy > 1.0) return std::nullopt;
        const auto [u, v] = turned(rotation.value_or(0), sx, sy);
        Color result = bitmap.sample(u, v);
        if (mask) result[3] = mask->sample(px / width, 1.0 - py / height)[0];
        return result;
    };
    return {draw, color};
}

/// Every rotation code, two unknown ones, and a plain rectangle after each of them, on 120 x 150 pixels.
Comparison rotations(const Blend& blend, bool masked) {
    constexpr int width = 120;
    constexpr int height = 150;
    const Bitmap bitmap(5, 4, 3);
    const Bitmap mask(7, 3, 4);
    std::vector<Layer> layers;
    for (int i = 0; i < 8; ++i) {
        const int rotation = i == 7 ? -1 : i;
        // A quarter of a pixel keeps edges clear of pixel centres.
        const Rectangle turned = {2.25F, 1.25F + 18.5F * static_cast<float>(i), 57.0F, 17.0F};
        const Rectangle plain = {61.25F, turned.y, 70.0F, 17.0F};
        layers.push_back(rectangle(turned, bitmap, rotation, masked ? &mask : nullptr, width, height));
        layers.push_back(rectangle(plain, bitmap, std::nullopt, masked ? &mask : nullptr, width, height));
    }
    return paint(width, height, blend, layers);
}

Comparison bitmapCircles(int width, int height, const Blend& blend) {
    const Bitmap exact(width, height, 5);
    const Bitmap coarse(6, 5, 6);
    return paint(width, height, blend,
                 {bitmapCircle(40.5F, 25.25F, 50.0F, 0.75F, exact, width, height),
                  bitmapCircle(60.0F, 55.0F, 36.0F, 0.5F, coarse, width, height),
                  bitmapCircle(2.0F, 50.0F, 31.0F, 1.0F, exact, width, height)});
}

const Rgba gold = {1.0F, 0.7F, 0.1F, 0.5F};
const Rgba blue = {0.0F, 0.3F, 0.8F, 1.0F};
const Rgba clear = {0.4F, 0.0F, 0.6F, 0.0F};

// Drivers may blend, and weigh texels, in 8 bits.
constexpr Tolerance color8 = {2.01 / 255.0, "two steps of 8 bits: a driver may round the colour before it blends"};
constexpr Tolerance filtered8 = {4.01 / 255.0, "the same, and 8-bit weights of the linear filter on two axes"};

} // namespace

const PictureTable& vectorPictures() {
    static const PictureTable table = {
        {"vector_gradient_97x61", [] { return paint(97, 61, {}, {gradient(40.0F, 20.0F, 10.0F, gold, 50.0F, blue)}); },
         color8},
        {"vector_gradient_inwards_64x160",
         [] { return paint(64, 160, {}, {gradient(-20.0F, 170.0F, 150.0F, gold, 30.0F, clear)}); }, color8},
        {"vector_gradient_hard_edge_subtracting",
         [] { return paint(97, 61, subtracting, {gradient(50.0F, 30.0F, 25.0F, gold, 25.0F, blue)}); }, color8},
        {"vector_discs_97x61",
         [] {
             return paint(97, 61, {},
                          {circle(30.0F, 20.0F, 15.0F, gold), circle(38.25F, 28.5F, 18.5F, {0, 1, 0, 0.25F})});
         },
         color8},
        {"vector_discs_adding_64x160",
         [] {
             return paint(64, 160, additive, {circle(20.0F, 150.0F, 40.0F, gold), circle(62.0F, 100.0F, 30.0F, blue)});
         },
         color8},
        {"vector_bitmap_discs_97x61", [] { return bitmapCircles(97, 61, {}); }, filtered8},
        {"vector_bitmap_discs_multiplying_64x160", [] { return bitmapCircles(64, 160, multiplying); }, filtered8},
        {"vector_rotations", [] { return rotations({}, false); }, filtered8},
        {"vector_rotations_largest", [] { return rotations(largest, false); }, filtered8},
        {"vector_masked_rotations", [] { return rotations({}, true); }, filtered8},
        {"vector_masked_rotations_subtracting", [] { return rotations(subtracting, true); }, filtered8},
    };
    return table;
}

} // namespace tidalume::pictures
