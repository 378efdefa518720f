#include "effects/metaball/Metaball2DRenderer.h"
#include "looks/FieldPainter.h"
#include "looks/FieldScreen.h"
#include "reference/Balls.h"
#include "tests/pictures/Field.h"

namespace tidalume::pictures {
namespace {

using plain::Ball;

/// Balls with centres up to 60 pixels outside the screen, and two of a radius that draws nothing.
std::vector<Ball> randomBalls(int count, int width, int height) {
    const std::vector<float> shares = noise(1, 3 * count, 0.0F, 1.0F);
    std::vector<Ball> balls = {{48.0F, 30.0F, 0.0F}, {20.0F, 30.0F, -15.0F}};
    for (const float* share = shares.data(); count > 0; --count, share += 3)
        balls.push_back({share[0] * (width + 120) - 60, share[1] * (height + 120) - 60, share[2] * 25 + 10});
    return balls;
}

/// The field reaches 120 pixels beyond each border.
Comparison field(int width, int height, int quality, int count) {
    std::vector<Ball> balls = randomBalls(count, width, height);
    Metaball2DRenderer renderer;
    renderer.init(quality);
    renderer.setScreenSize(width, height);
    renderer.addMetaballs(&balls[0].x, balls.size());

    const auto texels = [&](double pixels) { return std::lround(pixels / quality) + 240 / quality; };
    const int columns = texels(width), rows = texels(height);
    return compare(headless::readTexture(renderer.getTexture(), columns, rows), [&](int column, int row) -> Values {
        const double x = (column + 0.5) / columns * (width + 240.0) - 120.0;
        const double y = (1.0 - (row + 0.5) / rows) * (height + 240.0) - 120.0;
        return {plain::field(balls, x, y)};
    });
}

/// One ball, painted with alpha 0.5 over a colour: a disc of the ball's radius.
Comparison disc(int width, int height, int quality, float x, float y, float radius) {
    Ball ball = {x, y, radius};
    Metaball2DRenderer renderer;
    renderer.init(quality);
    renderer.setScreenSize(width, height);
    renderer.addMetaballs(&ball.x, 1);
    float color[4] = {1.0F, 0.25F, 0.0F, 0.5F};
    glClearColor(0.0F, 0.5F, 1.0F, 0.25F);
    glClear(GL_COLOR_BUFFER_BIT);
    renderer.render(color);

    return compare(headless::readFramebuffer(width, height), [&](int column, int row) -> Values {
        const double distance = std::hypot(column + 0.5 - x, height - row - 0.5 - y) - radius;
        if (std::fabs(distance) < quality) return {}; // the outline may lie anywhere within a texel of the field
        if (distance < 0.0) return {0.5, 0.375, 0.5, 0.5 + 0.25 * 0.5};
        return {0.0, 0.5, 1.0, 0.25};
    });
}

/// A ball in the middle of the height, painted by a look in colours that run from the bottom to the top.
Comparison blob(int width, int height, float center, float radius, float perPixel = 1) {
    Ball ball = {center * perPixel, 0.5F * height * perPixel, radius * perPixel};
    constexpr FieldPainter::Colors colors = {{0.8F, 0.4F, 0.2F, 0.5F}, {0, 1, 0.4F, 0.25F}, {1, 0.9F, 0.6F, 0.5F}};
    const auto premultiplied = [](const Color& c) -> Values {
        return Values{c.red, c.green, c.blue, 1} * Values(c.alpha, 4);
    };
    const Values ground = {0.1, 0.2, 1.0, 0.8};
    FieldScreen screen(std::lround(perPixel * std::min(width, height)));
    screen.fit(width, height);
    screen.fitQuality(1, ball.radius);
    Metaball2DRenderer metaballs;
    metaballs.init(screen.quality());
    metaballs.setScreenSize(screen.width(), screen.height());
    metaballs.addMetaballs(&ball.x, 1);
    FieldPainter painter;
    painter.createPrograms();
    glViewport(0, 0, width, height);
    glClearColor(0.1F, 0.2F, 1.0F, 0.8F);
    glClear(GL_COLOR_BUFFER_BIT);
    painter.paint(metaballs.getTexture(), screen, colors);

    return compare(headless::readFramebuffer(width, height), [&](int column, int row) -> Values {
        const double y = row + 0.5 - 0.5 * height;
        const Color& end = y < 0.0 ? colors.bottom : colors.top;
        const Values paint = plain::mix(premultiplied(colors.middle), premultiplied(end), std::fabs(y) / height * 2.0);
        return plain::over(paint * plain::coverage(column + 0.5 - center, y, radius), ground);
    });
}

// The kernel changes by at most 3.08 per unit of gl_PointCoord, which has about 10 bits, and a centre is snapped to
// 1/256 pixel: 0.006 for a sprite of 10 texels; up to four balls overlap, and every sum rounds to a half float.
constexpr Tolerance fieldTolerance = {0.02, "precision of gl_PointCoord times overlapping balls, and half floats", 0.1};
constexpr Tolerance crowdTolerance = {0.2, "a sum of up to 16 has steps of 1/128, and some 25 balls overlap", 0.3};
constexpr Tolerance outline = {0.03, "an outline's width comes from the differences of neighbouring pixels", 0.08};
constexpr Tolerance byteStep = {1.0 / 255.0, "one step of 8 bits"};

const PictureTable table({
    {"metaball_field_97x61", [] { return field(97, 61, 1, 12); }, fieldTolerance},
    {"metaball_field_64x160_quality2", [] { return field(64, 160, 2, 12); }, fieldTolerance},
    {"metaball_field_97x61_quality3", [] { return field(97, 61, 3, 12); }, fieldTolerance},
    {"metaball_field_400_balls", [] { return field(64, 160, 1, 400); }, crowdTolerance},
    {"metaball_disc_at_the_corner_64x160", [] { return disc(64, 160, 2, -3, 155, 31); }, byteStep},
    {"metaball_disc_97x61_quality3", [] { return disc(97, 61, 3, 60, 5, 25); }, byteStep},
    {"metaball_blob_97x61", [] { return blob(97, 61, 48.5F, 20.3F); }, outline},
    {"metaball_blob_in_a_field_61x97", [] { return blob(61, 97, 30.5F, 20.3F, 37.0F / 61); }, outline},
    {"metaball_blob_larger_than_97x61", [] { return blob(97, 61, -30, 100); }, outline},
});

} // namespace

} // namespace tidalume::pictures
