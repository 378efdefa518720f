#include "effects/metaball/Metaball2DRenderer.h"
#include "headless/Pixels.h"
#include "tests/pictures/PictureCase.h"

#include <GLES3/gl3.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace tidalume::pictures {
namespace {

constexpr double margin = 120.0;
constexpr double spriteScale = 1.2093284;
constexpr double open = std::numeric_limits<double>::quiet_NaN();

struct Ball {
    float x;
    float y;
    float radius;
    float unused[3];
};

/// Balls with centres up to 60 pixels outside the screen.
std::vector<Ball> randomBalls(int count, int width, int height, float smallest, float largest) {
    std::mt19937 random(7);
    std::uniform_real_distribution<float> x(-60.0F, static_cast<float>(width) + 60.0F);
    std::uniform_real_distribution<float> y(-60.0F, static_cast<float>(height) + 60.0F);
    std::uniform_real_distribution<float> radius(smallest, largest);
    std::vector<Ball> balls;
    for (int i = 0; i < count; ++i)
        balls.push_back({x(random), y(random), radius(random), {}});
    return balls;
}

int fieldLength(int screen, float quality) {
    const auto scaled = static_cast<float>(std::round(static_cast<double>(static_cast<float>(screen) / quality)));
    return static_cast<int>(scaled + 2.0F * (120.0F / quality));
}

/// The field at a point of the screen in pixels.
double fieldAt(const std::vector<Ball>& balls, double x, double y) {
    double sum = 0.0;
    for (const Ball& ball : balls) {
        if (ball.radius <= 0.0F) continue;
        const double reach = static_cast<double>(ball.radius) * spriteScale;
        const double d = std::hypot(x - static_cast<double>(ball.x), y - static_cast<double>(ball.y)) / reach;
        if (d < 1.0) sum += std::pow(1.0 - d * d, 2.0);
    }
    return sum;
}

Comparison field(int width, int height, float quality, std::vector<Ball> balls) {
    Metaball2DRenderer renderer;
    renderer.init(quality);
    renderer.setScreenSize(width, height);
    renderer.addMetaballs(&balls[0].x, static_cast<unsigned int>(balls.size()));

    const int textureWidth = fieldLength(width, quality);
    const int textureHeight = fieldLength(height, quality);
    const headless::PixelArray pixels = headless::readTexture(renderer.getTexture(), textureWidth, textureHeight);
    Comparison comparison = {textureWidth, textureHeight, 1, {}, {}};
    for (int row = 0; row < textureHeight; ++row) {
        for (int column = 0; column < textureWidth; ++column) {
            const double x = (column + 0.5) / textureWidth * (width + 2.0 * margin) - margin;
            const double y = (1.0 - (row + 0.5) / textureHeight) * (height + 2.0 * margin) - margin;
            comparison.drawn.push_back(pixels.at(column, row)[0]);
            comparison.expected.push_back(fieldAt(balls, x, y));
        }
    }
    return comparison;
}

/// One ball, painted with alpha 0.5 over a colour: a disc of the ball's radius.
Comparison disc(int width, int height, float quality, Ball ball) {
    Metaball2DRenderer renderer;
    renderer.init(quality);
    renderer.setScreenSize(width, height);
    renderer.addMetaballs(&ball.x, 1);
    float color[4] = {1.0F, 0.25F, 0.0F, 0.5F};
    glClearColor(0.0F, 0.5F, 1.0F, 0.25F);
    glClear(GL_COLOR_BUFFER_BIT);
    renderer.render(color);

    const double outside[4] = {0.0, 0.5, 1.0, 0.25};
    const double inside[4] = {0.5, 0.375, 0.5, 0.5 + 0.25 * 0.5};
    const double edge = quality; // the outline may lie anywhere within a texel of the field
    const headless::PixelArray pixels = headless::readFramebuffer(width, height);
    Comparison comparison = {width, height, 4, pixels.rgba, {}};
    for (int row = 0; row < height; ++row) {
        for (int column = 0; column < width; ++column) {
            const double distance = std::hypot(column + 0.5 - static_cast<double>(ball.x),
                                               height - row - 0.5 - static_cast<double>(ball.y)) -
                                    static_cast<double>(ball.radius);
            for (int c = 0; c < 4; ++c) {
                comparison.expected.push_back(std::fabs(distance) < edge ? open
                                              : distance < 0.0           ? inside[c]
                                                                         : outside[c]);
            }
        }
    }
    return comparison;
}

Comparison sparseField(int width, int height, float quality) {
    std::vector<Ball> balls = randomBalls(12, width, height, 12.0F, 40.0F);
    balls.push_back({48.0F, 30.0F, 0.0F, {}});
    balls.push_back({20.0F, 30.0F, -15.0F, {}});
    return field(width, height, quality, balls);
}

// The kernel changes by at most 3.08 per unit of gl_PointCoord, which has about 10 bits, and a centre is snapped to
// 1/256 pixel: 0.006 for a sprite of 10 texels; up to four balls overlap, and every sum rounds to a half float.
constexpr Tolerance fieldTolerance = {0.02, "precision of gl_PointCoord times overlapping balls, and half floats", 0.1};
constexpr Tolerance byteStep = {1.0 / 255.0, "one step of 8 bits"};

} // namespace

const PictureTable& metaballPictures() {
    static const PictureTable table = {
        {"metaball_field_97x61", [] { return sparseField(97, 61, 1.0F); }, fieldTolerance},
        {"metaball_field_64x160_quality2", [] { return sparseField(64, 160, 2.0F); }, fieldTolerance},
        {"metaball_field_97x61_quality3", [] { return sparseField(97, 61, 3.0F); }, fieldTolerance},
        {"metaball_field_400_balls",
         [] { return field(64, 160, 1.0F, randomBalls(400, 64, 160, 8.0F, 30.0F)); },
         {0.2, "a sum of up to 16 has steps of 1/128, and some 25 balls overlap", 0.3}},
        {"metaball_disc_97x61",
         [] {
             return disc(97, 61, 1.0F, {48.0F, 30.0F, 20.0F, {}});
         },
         byteStep},
        {"metaball_disc_at_the_corner_64x160",
         [] {
             return disc(64, 160, 2.0F, {-3.0F, 155.0F, 31.0F, {}});
         },
         byteStep},
        {"metaball_disc_97x61_quality3",
         [] {
             return disc(97, 61, 3.0F, {60.0F, 5.0F, 25.0F, {}});
         },
         byteStep},
    };
    return table;
}

} // namespace tidalume::pictures
