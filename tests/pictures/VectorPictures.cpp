#include "effects/vector/VectorGraphicRenderer.h"
#include "tests/pictures/Field.h"

namespace tidalume::pictures {
namespace {

/// Red, green, blue, alpha.
using Color = Values;

const Color cleared = {0.2, 0.6, 1.0, 0.4};
const Color gold = {1.0, 0.7, 0.1, 0.5};
const Color blue = {0.0, 0.3, 0.8, 1.0};
const Color clear = {0.4, 0.0, 0.6, 0.0};
const Color green = {0.0, 1.0, 0.0, 0.25};

Color withAlpha(Color color, double alpha) {
    color[3] = alpha;
    return color;
}

/// The blend state that a new object has, and another with four factors of its own.
enum Blend { overlaying, subtracting };
const Color constant = {0.5, 0.25, 1.0, 0.75};

Color blended(Blend blend, const Color& source, const Color& target) {
    if (blend == overlaying) return mix(target, source, source[3]);
    return withAlpha(target - source * constant, target[3] * constant[3] - source[3]);
}

/// In pixels from the top-left corner, and as a share of the screen from the bottom-left corner.
struct Point {
    double x, y, u, v;
};

/// One drawing call and its formula: the colour at a point, none where it covers nothing.
struct Layer {
    std::function<void(VectorGraphicRenderer&)> draw;
    std::function<Color(const Point&)> color;
};

Comparison paint(int width, int height, Blend blend, const std::vector<Layer>& layers) {
    VectorGraphicRenderer graphics;
    graphics.init();
    graphics.setScreenSize(width, height);
    if (blend == subtracting) {
        graphics.setBlendEquation(GL_FUNC_REVERSE_SUBTRACT);
        graphics.setBlendFunction(GL_CONSTANT_COLOR, GL_ONE, GL_ONE, GL_CONSTANT_COLOR);
        graphics.setBlendColor(constant[0], constant[1], constant[2], constant[3]);
    }
    glClearColor(cleared[0], cleared[1], cleared[2], cleared[3]);
    glClear(GL_COLOR_BUFFER_BIT);
    for (const Layer& layer : layers)
        layer.draw(graphics);

    return compare(headless::readFramebuffer(width, height), [&](int x, int y) {
        const Point point = {x + 0.5, height - y - 0.5, (x + 0.5) / width, (y + 0.5) / height};
        Color color = cleared;
        for (const Layer& layer : layers) {
            const Color source = layer.color(point);
            if (source.size() == 0) continue;
            color = blended(blend, source, color).apply([](double c) { return std::clamp(c, 0.0, 1.0); });
        }
        return color;
    });
}

Comparison gradient(int width, int height, Blend blend, float x, float y, float begin, const Color& beginColor,
                    float end, const Color& endColor) {
    const auto draw = [&](VectorGraphicRenderer& graphics) {
        graphics.renderRadialGradient(x, y, begin, floats(beginColor).data(), end, floats(endColor).data());
    };
    const auto color = [&](const Point& p) {
        const double way = std::hypot(p.x - x, p.y - y) - begin;
        return mix(beginColor, endColor, std::clamp(way / (end - begin), 0.0, 1.0));
    };
    return paint(width, height, blend, {{draw, color}});
}

/// In one colour, or in a bitmap's with the alpha of that colour.
Layer disc(float x, float y, float radius, const Color& color, const Texture* bitmap) {
    const auto draw = [=](VectorGraphicRenderer& graphics) {
        if (bitmap)
            graphics.renderBitmapCircle(x, y, 2.0F * radius, floats(color).data(), bitmap->name);
        else
            graphics.renderCircle(x, y, radius, floats(color).data());
    };
    const auto colorAt = [=](const Point& p) -> Color {
        const double distance = std::hypot(p.x - x, p.y - y) - radius;
        if (std::fabs(distance) < 0.3) return Color(open, 4); // drivers may round the very edge either way
        if (distance > 0.0) return {};
        return bitmap ? withAlpha(bitmap->texels.sample(p.u, p.v), color[3]) : color;
    };
    return {draw, colorAt};
}

/// In place of a rotation code: a rectangle that is not to be turned.
constexpr int plain = 99;

/// A plain or turned rectangle of 17 pixels in height, with a mask or without.
Layer rectangle(float x, float y, float width, int rotation, const Texture& bitmap, const Texture* mask) {
    constexpr float height = 17.0F;
    const auto draw = [=, texture = bitmap.name](VectorGraphicRenderer& graphics) {
        if (mask && rotation != plain)
            graphics.renderRotatedAlphaMaskedBitmapRectangle(x, y, width, height, texture, rotation, mask->name);
        else if (mask)
            graphics.renderAlphaMaskedBitmapRectangle(x, y, width, height, texture, mask->name);
        else if (rotation != plain)
            graphics.renderRotatedBitmapRectangle(x, y, width, height, texture, rotation);
        else
            graphics.renderBitmapRectangle(x, y, width, height, texture);
    };
    const auto color = [=, &bitmap](const Point& p) -> Color {
        const double sx = (p.x - x) / width;
        const double sy = 1.0 - (p.y - y) / height;
        if (sx < 0.0 || sx > 1.0 || sy < 0.0 || sy > 1.0) return {};
        // Where each rotation code looks into the bitmap; any other code stands for 0.
        const double u[6] = {sx, 1.0 - sy, 1.0 - sx, sy, sx, 1.0 - sx};
        const double v[6] = {sy, sx, 1.0 - sy, 1.0 - sx, 1.0 - sy, sy};
        const int code = rotation >= 0 && rotation < 6 ? rotation : 0;
        const Color texel = bitmap.texels.sample(u[code], v[code]);
        return mask ? withAlpha(texel, mask->texels.sample(p.u, p.v)[0]) : texel;
    };
    return {draw, color};
}

Field randomBytes(int width, int height, unsigned seed) {
    return randomField(width, height, 4, 0.0, 1.0, 255.0, seed);
}

Comparison discs(int width, int height, Blend blend) {
    const Texture exact(GL_RGBA8, randomBytes(width, height, 5));
    const Texture coarse(GL_RGBA8, randomBytes(6, 5, 6));
    return paint(width, height, blend,
                 {disc(40.5F, 25.25F, 25.0F, gold, nullptr), disc(60.0F, 55.0F, 18.5F, green, &coarse),
                  disc(2.0F, 50.0F, 31.0F, blue, &exact), disc(20.0F, 3.0F, 12.0F, blue, nullptr)});
}

/// Every rotation code and two unknown ones, without a mask and with it, and a plain rectangle after each.
Comparison rotations(Blend blend) {
    const Texture bitmap(GL_RGBA8, randomBytes(5, 4, 3));
    const Texture mask(GL_RGBA8, randomBytes(7, 3, 4));
    std::vector<Layer> layers;
    float y = 1.25F; // a quarter of a pixel keeps edges clear of pixel centres
    for (const int rotation : {0, 1, 2, 3, 4, 5, 6, -1}) {
        layers.push_back(rectangle(2.25F, y, 37.0F, rotation, bitmap, nullptr));
        layers.push_back(rectangle(41.25F, y, 37.0F, plain, bitmap, &mask));
        layers.push_back(rectangle(80.25F, y, 37.0F, rotation, bitmap, &mask));
        layers.push_back(rectangle(119.25F, y, 37.0F, plain, bitmap, nullptr));
        y += 18.5F;
    }
    return paint(150, 150, blend, layers);
}

// Drivers may blend, and weigh texels, in 8 bits.
constexpr Tolerance color8 = {2.01 / 255.0, "two steps of 8 bits: a driver may round the colour before it blends"};
constexpr Tolerance filtered8 = {4.01 / 255.0, "the same, and 8-bit weights of the linear filter on two axes"};

} // namespace

PictureTable vectorPictures() {
    return {
        {"vector_gradient_97x61", [] { return gradient(97, 61, overlaying, 40, 20, 10, gold, 50, blue); }, color8},
        {"vector_gradient_inwards_64x160", [] { return gradient(64, 160, overlaying, -20, 170, 150, gold, 30, clear); },
         color8},
        {"vector_gradient_hard_edge", [] { return gradient(97, 61, subtracting, 50, 30, 25, gold, 25, blue); }, color8},
        {"vector_discs_97x61", [] { return discs(97, 61, overlaying); }, filtered8},
        {"vector_discs_subtracting_64x160", [] { return discs(64, 160, subtracting); }, filtered8},
        {"vector_rotations", [] { return rotations(overlaying); }, filtered8},
        {"vector_rotations_subtracting", [] { return rotations(subtracting); }, filtered8},
    };
}

} // namespace tidalume::pictures
