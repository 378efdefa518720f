#include "effects/vector/VectorGraphicRenderer.h"
#include "reference/Vectors.h"
#include "tests/pictures/Field.h"

namespace tidalume::pictures {
namespace {

/// Red, green, blue, alpha.
using Color = Values;

const Color cleared = {0.2, 0.6, 1.0, 0.4};
const Color gold = {1.0, 0.7, 0.1, 0.5};
const Color blue = {0.0, 0.3, 0.8, 1.0};
const Color clear = {0.4, 0.0, 0.6, 0.0};

/// As the renderer takes them.
std::vector<float> floats(const Color& color) {
    return {std::begin(color), std::end(color)};
}

Color withAlpha(Color color, double alpha) {
    color[3] = alpha;
    return color;
}

/// The blend state that a new object has, and another with four factors of its own.
enum Blend { overlaying, subtracting };
const Color constant = {0.5, 0.25, 1.0, 0.75};

Color blended(Blend blend, const Color& source, const Color& target) {
    if (blend == overlaying) return plain::mix(target, source, source[3]);
    return withAlpha(target - source * constant, target[3] * constant[3] - source[3]);
}

/// In pixels from the top-left corner, and as a share of the screen from the bottom-left corner.
struct Point {
    double x, y, u, v;
};

/// @param colorsAt  what the calls blend at a point, one after another: none where a call covers nothing
template <typename Draw>
Comparison paint(int width, int height, Blend blend, Draw draw,
                 const std::function<std::vector<Color>(const Point&)>& colorsAt) {
    VectorGraphicRenderer graphics;
    makeReady(width, height, graphics);
    if (blend == subtracting) {
        graphics.setBlendEquation(GL_FUNC_REVERSE_SUBTRACT);
        graphics.setBlendFunction(GL_CONSTANT_COLOR, GL_ONE, GL_ONE, GL_CONSTANT_COLOR);
        graphics.setBlendColor(constant[0], constant[1], constant[2], constant[3]);
    }
    glClearColor(cleared[0], cleared[1], cleared[2], cleared[3]);
    glClear(GL_COLOR_BUFFER_BIT);
    draw(graphics);
    return compare(headless::readFramebuffer(width, height), [&](int x, int y) {
        Color color = cleared;
        for (const Color& source : colorsAt({x + 0.5, height - y - 0.5, (x + 0.5) / width, (y + 0.5) / height})) {
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
    return paint(width, height, blend, draw, [&](const Point& p) -> std::vector<Color> {
        return {plain::gradientColor(std::hypot(p.x - x, p.y - y), begin, beginColor, end, endColor)};
    });
}

/// Discs in one colour, and in a bitmap's with the alpha of that colour.
Comparison discs(int width, int height, Blend blend) {
    const Field exact = noiseTexture(GL_RGBA8, width, height);
    const Field coarse = noiseTexture(GL_RGBA8, 6, 5);
    const auto draw = [&](VectorGraphicRenderer& graphics) {
        graphics.renderCircle(40.5F, 25.25F, 25.0F, floats(gold).data());
        graphics.renderBitmapCircle(60.0F, 55.0F, 37.0F, floats(gold).data(), coarse.texture);
        graphics.renderBitmapCircle(2.0F, 50.0F, 62.0F, floats(blue).data(), exact.texture);
        graphics.renderCircle(20.0F, 3.0F, 12.0F, floats(blue).data());
    };
    return paint(width, height, blend, draw, [&](const Point& p) -> std::vector<Color> {
        const auto disc = [&](double x, double y, double radius, const Color& color) -> Color {
            const double distance = std::hypot(p.x - x, p.y - y) - radius;
            if (std::fabs(distance) < 0.3) return Color(open, 4); // drivers may round the very edge either way
            return distance < 0.0 ? color : Color();
        };
        return {disc(40.5, 25.25, 25.0, gold), disc(60.0, 55.0, 18.5, withAlpha(coarse.filtered(p.u, p.v), gold[3])),
                disc(2.0, 50.0, 31.0, withAlpha(exact.filtered(p.u, p.v), blue[3])), disc(20.0, 3.0, 12.0, blue)};
    });
}

/// Every rotation code and two unknown ones, without a mask and with it, and a plain rectangle after each. Unknown
/// codes keep what was set before them, an init does not.
Comparison rotations(int screenWidth, int screenHeight, Blend blend) {
    constexpr int codes[] = {0, 1, 2, 3, 4, 5, 6, -1};
    constexpr float width = 37.0F, height = 17.0F;
    // A quarter of a pixel keeps edges clear of pixel centres.
    const auto left = [](int column) { return 2.25F + 39.0F * static_cast<float>(column); };
    const auto top = [](int row) { return 1.25F + 18.5F * static_cast<float>(row); };
    const Field bitmap = noiseTexture(GL_RGBA8, 5, 4);
    const Field mask = noiseTexture(GL_RGBA8, 7, 3);
    const auto draw = [&](VectorGraphicRenderer& graphics) {
        const auto picture = static_cast<int>(bitmap.texture), alpha = static_cast<int>(mask.texture);
        for (int row = 0; row < 8; ++row) {
            const float y = top(row);
            graphics.renderRotatedBitmapRectangle(left(0), y, width, height, bitmap.texture, codes[row]);
            if (row >= 5) graphics.rotateTexture(2);
            if (row == 5) graphics.init();
            if (row > 5) graphics.rotateTexture(codes[row]);
            graphics.renderAlphaMaskedBitmapRectangle(left(1), y, width, height, picture, alpha);
            graphics.renderRotatedAlphaMaskedBitmapRectangle(left(2), y, width, height, picture, codes[row], alpha);
            graphics.renderBitmapRectangle(left(3), y, width, height, bitmap.texture);
        }
    };
    return paint(screenWidth, screenHeight, blend, draw, [&](const Point& p) -> std::vector<Color> {
        const int column = static_cast<int>((p.x - 2.25) / 39.0), row = static_cast<int>((p.y - 1.25) / 18.5);
        const double x = (p.x - left(column)) / width, y = 1.0 - (p.y - top(row)) / height;
        if (x < 0.0 || x > 1.0 || y < 0.0 || y > 1.0) return {};
        const bool masked = column == 1 || column == 2;
        const int code = row > 5 ? 2 * masked : column % 2 == 0 ? codes[row] : 0;
        const auto [u, v] = plain::rotated(code, x, y);
        const Color texel = bitmap.filtered(u, v);
        return {masked ? withAlpha(texel, mask.filtered(p.u, p.v)[0]) : texel};
    });
}

// Drivers may blend, and weigh texels, in 8 bits.
constexpr Tolerance color8 = {2.01 / 255.0, "two steps of 8 bits: a driver may round the colour before it blends"};
constexpr Tolerance filtered8 = {4.01 / 255.0, "the same, and 8-bit weights of the linear filter on two axes"};

const PictureTable table({
    {"vector_gradient_97x61", [] { return gradient(97, 61, overlaying, 40, 20, 10, gold, 50, blue); }, color8},
    {"vector_gradient_inwards_64x160", [] { return gradient(64, 160, overlaying, -20, 170, 150, gold, 30, clear); },
     color8},
    {"vector_gradient_hard_edge", [] { return gradient(97, 61, subtracting, 50, 30, 25, gold, 25, blue); }, color8},
    {"vector_discs_97x61", [] { return discs(97, 61, overlaying); }, filtered8},
    {"vector_discs_subtracting_64x160", [] { return discs(64, 160, subtracting); }, filtered8},
    {"vector_rotations_158x149", [] { return rotations(158, 149, overlaying); }, filtered8},
    {"vector_rotations_subtracting_121x140", [] { return rotations(121, 140, subtracting); }, filtered8},
});

} // namespace

} // namespace tidalume::pictures
