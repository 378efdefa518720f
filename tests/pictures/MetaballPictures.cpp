#include "effects/metaball/Metaball2DRenderer.h"
#include "tests/pictures/Field.h"

namespace tidalume::pictures {
namespace {

struct Ball {
    float x, y, radius;
    float unused[3] = {};
};

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
        double sum = 0.0;
        for (const Ball& ball : balls) {
            const double d = std::hypot(x - ball.x, y - ball.y) / (ball.radius * 1.2093284);
            if (ball.radius > 0.0F && d < 1.0) sum += std::pow(1.0 - d * d, 2.0);
        }
        return {sum};
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

// The kernel changes by at most 3.08 per unit of gl_PointCoord, which has about 10 bits, and a centre is snapped to
// 1/256 pixel: 0.006 for a sprite of 10 texels; up to four balls overlap, and every sum rounds to a half float.
constexpr Tolerance fieldTolerance = {0.02, "precision of gl_PointCoord times overlapping balls, and half floats", 0.1};
constexpr Tolerance crowdTolerance = {0.2, "a sum of up to 16 has steps of 1/128, and some 25 balls overlap", 0.3};
constexpr Tolerance byteStep = {1.0 / 255.0, "one step of 8 bits"};

const PictureTable table = {
    {"metaball_field_97x61", [] { return field(97, 61, 1, 12); }, fieldTolerance},
    {"metaball_field_64x160_quality2", [] { return field(64, 160, 2, 12); }, fieldTolerance},
    {"metaball_field_97x61_quality3", [] { return field(97, 61, 3, 12); }, fieldTolerance},
    {"metaball_field_400_balls", [] { return field(64, 160, 1, 400); }, crowdTolerance},
    {"metaball_disc_at_the_corner_64x160", [] { return disc(64, 160, 2, -3, 155, 31); }, byteStep},
    {"metaball_disc_97x61_quality3", [] { return disc(97, 61, 3, 60, 5, 25); }, byteStep},
};

} // namespace

} // namespace tidalume::pictures
