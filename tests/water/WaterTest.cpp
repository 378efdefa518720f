#include "effects/water/IntensityMapBuilder.h"
#include "effects/water/NormalMapBuilder.h"
#include "effects/water/ShallowWater.h"
#include "effects/water/ShallowWaterIterative.h"
#include "effects/water/ShallowWaterRenderer.h"
#include "headless/Pixels.h"
#include "tests/support/GLTest.h"
#include "tests/support/TestPeer.h"

#include <algorithm>
#include <cmath>
#include <gmock/gmock.h>
#include <limits>

namespace {

using testing::Contains;
using testing::Each;
using testing::IsEmpty;

class WaterTest : public GLTest {
  protected:
    /// One channel of a screen-sized texture, rows from the bottom.
    static std::vector<float> channel(GLuint texture, size_t channel) {
        const auto pixels = tidalume::headless::readTexture(texture, width, height);
        std::vector<float> values;
        for (size_t i = channel; i < pixels.rgba.size(); i += 4)
            values.push_back(pixels.rgba[i]);
        return values;
    }

    template <typename Effect>
    static std::vector<float> heights(Effect& effect) {
        return channel(effect.getTexture(), 0);
    }

    static float& at(std::vector<float>& field, int x, int y) {
        return field[static_cast<size_t>(std::clamp(y, 0, height - 1) * width + std::clamp(x, 0, width - 1))];
    }

    template <typename... Effects>
    static void makeReady(Effects&... effects) {
        (..., (effects.init(), effects.setScreenSize(width, height)));
    }

    /// Makes the pond run its next step; returns the calls of `update` that it took.
    static int step(ShallowWater& water) {
        const GLuint before = water.getTexture();
        int calls = 0;
        for (; water.getTexture() == before; ++calls)
            water.update();
        return calls;
    }

    float middle[2] = {48.5F, 30.5F};
};

/// A float as the driver stores it in a half float above 2^-14, rounded or truncated.
float stored(float value, bool truncates) {
    if (value == 0.0F) return 0.0F;
    int exponent = 0;
    std::frexp(value, &exponent);
    const float unit = std::ldexp(1.0F, std::max(exponent, -13) - 11);
    return (truncates ? std::trunc(value / unit) : std::nearbyint(value / unit)) * unit;
}

/// 200 updates, each of 8 passes, beside the same recurrence in floats with half-float stores.
///
/// The bound: a half float has 11 bits and a float 24, so that the sums of a pass are exact in whatever order they are
/// made. What rounds is the product with 0.99 and the subtraction of 0.00001, both in a given order; a driver that
/// fuses the product with the sum after it can differ by 2^-24 of the velocity there, which changes one store in some
/// 2^12 by one step, and the damping forgets it. So the difference is 0, or one step of the largest height at worst.
TEST_F(WaterTest, AWholeRunFollowsTheRecurrence) {
    ShallowWaterIterative water;
    makeReady(water);
    float center[2] = {30.5F, 20.5F};
    water.addDrop(center, 15.0F, 0.5F + 0.75F / 2048.0F, 1.0F);
    std::vector<float> h = heights(water);
    std::vector<float> v(h.size());
    const bool truncates = at(h, 30, height - 21) == 0.5F;

    for (int pass = 0; pass < 200 * 8; ++pass) {
        std::vector<float> old = h;
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const float average =
                    (at(old, x - 1, y) + at(old, x + 1, y) + at(old, x, y - 1) + at(old, x, y + 1)) / 4;
                const float velocity = (at(v, x, y) + (average - at(old, x, y)) * 2.0F) * 0.99F;
                const float sign = velocity == 0.0F ? 0.0F : std::copysign(1.0F, velocity);
                at(h, x, y) = stored(at(old, x, y) + velocity - sign * 0.00001F, truncates);
                at(v, x, y) = stored(velocity, truncates);
            }
        }
    }
    for (int update = 0; update < 200; ++update)
        water.update();

    const float largest = *std::max_element(h.begin(), h.end());
    EXPECT_GT(largest, 0.005F) << "something must be left to compare";
    const std::vector<float> drawn = heights(water);
    float difference = 0.0F;
    for (size_t i = 0; i < h.size(); ++i)
        difference = std::max(difference, std::fabs(h[i] - drawn[i]));
    RecordProperty("difference", std::to_string(difference));
    EXPECT_LE(difference, std::ldexp(1.0F, std::ilogb(largest) - 10));
}

TEST_F(WaterTest, StillWaterStaysStill) {
    ShallowWaterIterative iterative;
    ShallowWater pond;
    makeReady(iterative, pond);
    for (int i = 0; i < 20; ++i) {
        iterative.update();
        pond.update();
    }
    EXPECT_THAT(heights(iterative), Each(0.0F));
    EXPECT_THAT(channel(iterative.getTexture(), 1), Each(0.0F));
    EXPECT_THAT(heights(pond), Each(0.0F));

    // A raised surface is as still as a flat one, up to what the store of each step loses.
    float everywhere[2] = {48.5F, 30.5F};
    pond.addDrop(everywhere, 1e6F, 0.5F);
    step(pond);
    pond.addDropLine(everywhere, everywhere, 1e-3F, 1.0F); // the state before, once more
    for (int i = 0; i < 20; ++i)
        step(pond);
    EXPECT_THAT(heights(pond), Each(testing::FloatNear(0.25F, 20 * 2.0F / 4096.0F)));
    log.take();
}

/// To the bit: a drop of one texel is symmetric, and a sum of four half floats is exact in every order.
TEST_F(WaterTest, ADropInTheMiddleGivesSymmetricWaves) {
    ShallowWaterIterative iterative;
    ShallowWater pond;
    makeReady(iterative, pond);
    iterative.addDrop(middle, 1.0F, 0.9F, 1.0F);
    pond.addDrop(middle, 2.0F, 0.9F);
    log.take();
    for (int i = 0; i < 12; ++i)
        iterative.update();
    for (int i = 0; i < 120; ++i)
        step(pond);
    for (std::vector<float> field : {heights(iterative), heights(pond)}) {
        EXPECT_GT(std::fabs(at(field, 2, 2)), 1e-3F) << "the waves have reached the corner";
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                ASSERT_EQ(at(field, x, y), at(field, width - 1 - x, y)) << x << ", " << y;
                ASSERT_EQ(at(field, x, y), at(field, x, height - 1 - y)) << x << ", " << y;
            }
        }
    }
}

/// Kinetic plus potential energy of the iterative simulation, whose wave speed is the square root of a half.
double energy(std::vector<float> h, const std::vector<float>& v, int width, int height) {
    double sum = 0.0;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const auto i = static_cast<size_t>(y * width + x);
            const double right = x + 1 < width ? static_cast<double>(h[i + 1] - h[i]) : 0.0;
            const double up = y + 1 < height ? static_cast<double>(h[i + static_cast<size_t>(width)] - h[i]) : 0.0;
            sum += 0.5 * std::pow(static_cast<double>(v[i]), 2.0) + 0.25 * (right * right + up * up);
        }
    }
    return sum;
}

/// The damping takes 1 % of the velocity per pass, so 2 % of the kinetic energy, which is half of the whole. Stores
/// that truncate take a little more.
TEST_F(WaterTest, EnergyDecaysAsTheDampingSays) {
    ShallowWaterIterative water;
    makeReady(water);
    water.addDrop(middle, 12.0F, 1.0F, 1.0F);
    double before = std::numeric_limits<double>::quiet_NaN();
    for (int i = 0; i < 5; ++i) {
        for (int update = 0; update < 10; ++update)
            water.update();
        const double now = energy(heights(water), channel(water.getTexture(), 1), width, height);
        if (i > 0) {
            EXPECT_LE(now / before, std::pow(0.99, 80) * 1.02) << "after " << 80 * (i + 1) << " passes";
            EXPECT_GE(now / before, std::pow(0.99, 80) * 0.92) << "after " << 80 * (i + 1) << " passes";
        }
        before = now;
    }
}

TEST_F(WaterTest, IterativePassesAndNames) {
    ShallowWaterIterative water;
    makeReady(water);
    const GLuint first = water.getTexture();
    const auto passes = [&](int count) {
        water.setIterationCount(count);
        glRecorder().counts.clear();
        water.update();
        return glRecorder().counts["glDrawArrays"];
    };
    EXPECT_EQ(passes(-1), 8) << "ignored";
    EXPECT_EQ(water.getTexture(), first);
    EXPECT_EQ(passes(3), 3);
    EXPECT_NE(water.getTexture(), first);
    EXPECT_EQ(passes(0), 3) << "ignored";
    EXPECT_EQ(water.getTexture(), first);
    water.addDrop(middle, 12.0F, 1.0F, 1.0F);
    EXPECT_NE(water.getTexture(), first);
    water.swapWaterTexture();
    EXPECT_THAT(heights(water), Each(0.0F)) << "the state before the drop";

    water.swapWaterTexture();
    water.update();
    const std::vector<float> drawn = heights(water);
    const std::vector<float> velocity = channel(water.getTexture(), 1);
    water.setScreenSize(width, height);
    EXPECT_EQ(heights(water), drawn) << "the same size keeps the water";
    float outside[2] = {-50.0F, -50.0F};
    water.addDrop(outside, 12.0F, 1.0F, 0.0F);
    EXPECT_THAT(heights(water), Each(0.0F)) << "wiped";
    EXPECT_EQ(channel(water.getTexture(), 1), velocity) << "velocities stay";
    water.setScreenSize(width, height + 1);
    water.setScreenSize(width, height);
    EXPECT_THAT(channel(water.getTexture(), 1), Each(0.0F)) << "another size makes still water";
}

TEST_F(WaterTest, PondTimeAndParameters) {
    ShallowWater pond;
    const auto& term = TestPeer::mTerm(pond);
    EXPECT_FLOAT_EQ(term[0], 0.30899593F);
    EXPECT_FLOAT_EQ(term[1], -0.99352103F);
    EXPECT_FLOAT_EQ(term[2], 0.42113128F);
    TestPeer::mWaveSpeed(pond) = 1.0F;
    TestPeer::mViscosity(pond) = 0.5F;
    pond.updateParameters();
    EXPECT_NE(term[0], 0.30899593F);
    EXPECT_NEAR(term[0] + term[1] + 4.0F * term[2], 1.0F, 2e-7F);

    for (int i = 0; i < 1000; ++i)
        pond.update();
    makeReady(pond);
    std::set<GLuint> names = {pond.getTexture()};
    const GLuint first = pond.getTexture();
    EXPECT_EQ(step(pond), 1) << "time does not pass before setScreenSize";
    names.insert(pond.getTexture());
    step(pond);
    names.insert(pond.getTexture());
    EXPECT_EQ(names.size(), 3U);
    step(pond);
    EXPECT_EQ(pond.getTexture(), first) << "three steps return to the same name";

    ShallowWater other;
    makeReady(other);
    glRecorder().counts.clear();
    for (int i = 0; i < 40; ++i)
        other.update();
    EXPECT_EQ(glRecorder().counts["glDrawArrays"], 16);

    glRecorder().counts.clear();
    other.init();
    EXPECT_EQ(glRecorder().counts["glDeleteProgram"], 3) << "the programs of the first init";
}

/// What the application has set or what only counts outlives the context.
TEST_F(WaterTest, WhatSurvivesALossOfTheContext) {
    ShallowWater pond;
    makeReady(pond);
    step(pond);
    step(pond);
    const int index = TestPeer::mCurrentBufferIndex(pond);
    const float time = TestPeer::mTime(pond);
    const float next = TestPeer::mNextStepTime(pond);
    pond.GLContextDestroyed();
    EXPECT_EQ(pond.getTexture(), 0U);
    pond.update();
    context.recreate();
    glRecorder().live.clear();
    makeReady(pond);
    EXPECT_EQ(index, 2);
    EXPECT_EQ(TestPeer::mCurrentBufferIndex(pond), index);
    EXPECT_EQ(TestPeer::mTime(pond), time);
    EXPECT_EQ(TestPeer::mNextStepTime(pond), next);
    EXPECT_THAT(heights(pond), Each(0.0F));

    ShallowWaterRenderer renderer;
    makeReady(renderer);
    renderer.setTexture(5);
    renderer.setDrawFrameBuffer(6);
    renderer.GLContextDestroyed();
    EXPECT_EQ(TestPeer::mTextureBG(renderer), 5U);
    EXPECT_EQ(TestPeer::mDrawFrameBuffer(renderer), 6U);
    EXPECT_EQ(TestPeer::mProgram(renderer), 0U);
    EXPECT_EQ(TestPeer::mUniformTextureFlip(renderer), -1);
}

/// No disturbance may bring a NaN or an infinity into a height field.
TEST_F(WaterTest, IgnoresDisturbancesThatAreNoNumbers) {
    IntensityMapBuilder painted;
    ShallowWaterIterative iterative;
    ShallowWater pond;
    makeReady(painted, iterative, pond);

    // Argument i of every disturbance in turn; the radius is the one at 4.
    const auto disturb = [&](size_t i, float bad) {
        float a[8] = {20.0F, 30.0F, 40.0F, 35.0F, 10.0F, 0.5F, 0.5F, 0.5F};
        a[i] = bad;
        painted.addDropLine(a, a + 2, a[4], a[5], a[6]);
        iterative.addDropLine(a, a + 2, a[4], a[5], a[6]);
        pond.addDropLine(a, a + 2, a[4], a[5]);
        painted.addHorizontalWave(a[0], a[4], a[5], a[6], a[7], a[6]);
        iterative.addHorizontalWave(a[0], a[4], a[5], a[6], a[7], a[6]);
        iterative.addDrop(a, a[4], a[5], a[6]);
        pond.addDrop(a, a[4], a[5]);
    };
    const auto draws = [&](size_t i, float bad) {
        glRecorder().counts.clear();
        disturb(i, bad);
        EXPECT_EQ(log.take().size(), 1U) << "the pond logs every drop";
        return glRecorder().counts["glDrawArrays"];
    };
    EXPECT_EQ(draws(4, 10.0F), 7);
    const int readers[8] = {7, 5, 3, 3, 7, 7, 5, 2}; // how many of the seven read the argument
    for (size_t i = 0; i < 8; ++i) {
        for (const float bad : {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(),
                                -std::numeric_limits<float>::infinity()}) {
            EXPECT_EQ(draws(i, bad), 7 - readers[i]) << "argument " << i;
        }
    }
    EXPECT_EQ(draws(4, 0.0F), 0);
    EXPECT_EQ(draws(4, -0.0F), 0);

    // Finite, but beyond what squares in floats hold.
    for (const float huge : {1e30F, -1e30F, std::numeric_limits<float>::max(), 1e-42F}) {
        for (const size_t i : {0U, 1U, 2U, 3U, 4U})
            draws(i, huge);
    }
    iterative.update();
    step(pond);
    const auto isFinite = [](float value) { return std::isfinite(value); };
    EXPECT_THAT(heights(painted), Each(testing::Truly(isFinite)));
    EXPECT_THAT(heights(iterative), Each(testing::Truly(isFinite)));
    EXPECT_THAT(heights(pond), Each(testing::Truly(isFinite)));
}

/// Beyond what the table of lives says of effects with targets.
TEST_F(WaterTest, UnsizedEffectsMakeNoCalls) {
    ShallowWater pond;
    ShallowWaterRenderer renderer;
    pond.init();
    renderer.init();
    EXPECT_THAT(glRecorder().record([&] {
        pond.drawFullScreenQuad(1);
        renderer.setScreenSize(0, 5);
        renderer.render(0, 0);
    }),
                IsEmpty());
}

/// Where a pixel of each effect's own frame lands: the screen's, from the top-left corner, but the pond's, from the
/// bottom-left, and the renderer's, from the middle.
TEST_F(WaterTest, PixelsLandWhereTheyBelong) {
    IntensityMapBuilder painted;
    NormalMapBuilder normals;
    ShallowWaterIterative iterative;
    ShallowWater pond;
    ShallowWaterRenderer renderer;
    const auto expectLands = [](Matrix& mvp, float x, float y, float ndcX, float ndcY, float depth) {
        float point[3] = {x, y, 0.0F};
        mvp.mulVector3(point, point);
        EXPECT_NEAR(point[0], ndcX, 1e-6F) << x << ", " << y;
        EXPECT_NEAR(point[1], ndcY, 1e-6F) << x << ", " << y;
        EXPECT_NEAR(point[2], depth, 1e-6F) << x << ", " << y;
    };
    const auto sized = [](auto& effect) -> Matrix& {
        effect.setScreenSize(1080, 1920);
        return TestPeer::mMatrixMVP(effect);
    };
    for (Matrix* mvp : {&sized(painted), &sized(normals), &sized(iterative)}) {
        expectLands(*mvp, 0.0F, 0.0F, -1.0F, 1.0F, 0.5F);
        expectLands(*mvp, 1080.0F, 1920.0F, 1.0F, -1.0F, 0.5F);
        expectLands(*mvp, 540.0F, 480.0F, 0.0F, 0.5F, 0.5F);
    }
    expectLands(sized(pond), 0.0F, 0.0F, -1.0F, -1.0F, 0.5F);
    expectLands(sized(pond), 1080.0F, 1920.0F, 1.0F, 1.0F, 0.5F);
    expectLands(sized(pond), 540.0F, 480.0F, 0.0F, -0.5F, 0.5F);
    expectLands(sized(renderer), -540.0F, 960.0F, -1.0F, 1.0F, 0.75F);
    expectLands(sized(renderer), 540.0F, -960.0F, 1.0F, -1.0F, 0.75F);
    expectLands(sized(renderer), 0.0F, 480.0F, 0.0F, 0.5F, 0.75F);
}

/// A drop under a picture with a vertical and a horizontal edge, each effect in its own frame, on a driver with and
/// without rendering to three channels: where it falls the picture moves, elsewhere it does not.
TEST_F(WaterTest, TheChainShowsADropWhereItFell) {
    std::vector<float> noise;
    for (int i = 0; i < width * height * 4; ++i)
        noise.push_back(static_cast<float>((i * 7919) % 256) / 255.0F);
    const GLuint picture = tidalume::headless::makeTexture(GL_RGBA8, width, height, noise);
    ShallowWaterIterative iterative;
    ShallowWater pond;
    IntensityMapBuilder painted;
    ShallowWaterRenderer renderer;
    makeReady(iterative, pond, painted, renderer);
    renderer.setTexture(static_cast<int>(picture));
    float top[2] = {30.0F, 10.0F};
    float topFromBelow[2] = {30.0F, static_cast<float>(height) - 10.0F};
    iterative.addDrop(top, 8.0F, 0.3F, 1.0F);
    painted.addDropLine(top, top, 8.0F, 0.3F, 1.0F);
    pond.addDrop(topFromBelow, 16.0F, 0.55F);
    log.take();

    for (const GLuint water : {iterative.getTexture(), painted.getTexture(), pond.getTexture()}) {
        std::vector<float> shown[2];
        for (const bool refused : {false, true}) {
            if (refused) glRecorder().faults.notRenderable = {GL_RGB16F};
            NormalMapBuilder normals;
            makeReady(normals);
            EXPECT_EQ(glRecorder().formatOfTexture[normals.getTexture()], refused ? GL_RGBA16F : GL_RGB16F);
            normals.build(water);
            renderer.render(water, normals.getTexture());
            shown[refused] = tidalume::headless::readFramebuffer(width, height).rgba;
            glRecorder().faults = {};
        }
        EXPECT_EQ(shown[0], shown[1]) << "the wider format gives the same picture";
        int moved = 0;
        for (size_t i = 0; i < shown[0].size(); ++i) {
            if (std::fabs(shown[0][i] - noise[i]) < 1.01F / 255.0F) continue;
            const int pixel = static_cast<int>(i) / 4;
            EXPECT_LT(std::hypot(pixel % width + 0.5 - 30.0, height - pixel / width - 0.5 - 10.0), 9.5);
            ++moved;
        }
        EXPECT_GT(moved, 300);
    }
    glDeleteTextures(1, &picture);
}

} // namespace
