#include "effects/water/IntensityMapBuilder.h"
#include "effects/water/NormalMapBuilder.h"
#include "effects/water/ShallowWater.h"
#include "effects/water/ShallowWaterIterative.h"
#include "effects/water/ShallowWaterRenderer.h"
#include "tests/support/CallsTest.h"
#include "tests/support/TestPeer.h"

#include <algorithm>
#include <cmath>
#include <gmock/gmock.h>
#include <limits>
#include <numeric>
#include <tuple>

namespace {

using testing::Each;
using testing::FloatNear;
using testing::Pointwise;

template <typename... Effects>
void makeReady(int width, int height, Effects&... effects) {
    (..., (effects.init(), effects.setScreenSize(width, height)));
}

class WaterCallsTest : public CallsTest {
  protected:
    /// A pass: what comes before its quad.
    static void expectPass(const std::function<void()>& action, const std::string& expected) {
        expectCalls(action, expected + "; quad; glFlush; glUseProgram 0; glBindFramebuffer FRAMEBUFFER 0");
    }

    float a[2] = {12.0F, 20.5F};
    float b[2] = {90.0F, 40.0F};
};

/// Lines leave whatever blending and depth test they find.
TEST_F(WaterCallsTest, HeightsAndNormals) {
    IntensityMapBuilder heights;
    NormalMapBuilder normals;
    makeReady(width, height, heights, normals);
    expectPass([&] { heights.addDropLine(a, b, 10, 0.5F, 0.25F); }, R"(target 1 97 61; glUseProgram 1; matrixMVP 1
        center 12 20.5; center2 90 40; radius 10; strength 0.5; preserveWeight 0.25)");
    expectPass([&] { heights.addHorizontalWave(30, 10, 0.5F, 7, 2, 0.25F); }, R"(glDisable BLEND; glDisable DEPTH_TEST
        target 1 97 61; glUseProgram 2; matrixMVP 1; center 30; radius 10; strength 0.5; waveRadius 7; waveCount 2
        preserveWeight 0.25)");
    expectPass([&] { normals.build(7); }, R"(glDisable BLEND; glDisable DEPTH_TEST; target 2 97 61; glUseProgram 3
        textureHeight 0; unit 0 texture 7; heightMax 100; matrixMVP 1)");
}

/// The three disturbances set their uniforms in three different orders.
TEST_F(WaterCallsTest, ShallowWaterIterative) {
    ShallowWaterIterative water;
    expectCalls([&] { makeReady(width, height, water); }, R"(
        RG16F 97 61 mTexturesWater[0]; RG16F 97 61 mTexturesWater[1]; [glGenFramebuffers mFBOsWater[0]]
        [glBindFramebuffer mFBOsWater[0]]; [glFramebufferTexture2D mFBOsWater[0] mTexturesWater[0]]
        [glBindFramebuffer mFBOWater[1]]; [glFramebufferTexture2D mFBOsWater[1] mTexturesWater[1]])",
                {"TexImage2D", "mTexture", "mFBO"});
    expectPass([&] { water.addDrop(a, 10, 0.5F, 0.25F); }, R"(target 1 97 61; glUseProgram 1; ?textureWater 0
        unit 0 texture 2; center 12 20.5; radius 10; strength 0.5; preserveWeight 0.25; matrixMVP 1)");
    expectPass([&] { water.addDropLine(a, b, 10, 0.5F, 0.25F); }, R"(target 2 97 61; glUseProgram 2; ?textureWater 0
        unit 0 texture 1; center 12 20.5; center2 90 40; radius 10; strength 0.5; matrixMVP 1; preserveWeight 0.25)");
    expectPass([&] { water.addHorizontalWave(30, 10, 0.5F, 7, 2, 0.25F); }, R"(target 1 97 61; glUseProgram 3
        ?textureWater 0; unit 0 texture 2; center 30; radius 10; strength 0.5; waveRadius 7; waveCount 2
        preserveWeight 0.25; matrixMVP 1; [glUniformMatrix4fv matrixMVP])");
    water.setIterationCount(1);
    expectPass([&] { water.update(); }, R"(target 2 97 61; [glBindFramebuffer mFBOsWater[0]]; glFramebufferTexture2D 2
        [glFramebufferTexture2D mFBOsWater[0] mTexturesWater[0]]; glUseProgram 4; textureWater 0; unit 0 texture 1
        [glBindTexture mProgramUpdate]; matrixMVP 1; [glUniformMatrix4fv matrixMVP])");
}

TEST_F(WaterCallsTest, ShallowWaterRenderer) {
    ShallowWaterRenderer renderer;
    expectCalls([&] { renderer.render(7, 8); }, "");
    makeReady(width, height, renderer);
    renderer.setTexture(9);
    expectCalls([&] { renderer.render(7, 8); }, R"(glDisable BLEND; glDisable DEPTH_TEST; target 0 97 61; glUseProgram 1
        heightMax 100; [glUniform1f maxHeight]; light -0.271607 0.724286 0.63375; [glUniform3fv light]
        materialSpecular 0; [glUniform1f materialSpecular]; materialShininess 50; [glUniform1f materialShininess]
        matrixMVP 1; [glUniformMatrix4fv matrixMVP]; screenWidth 97; [glUniform1f screenWidth]
        screenHeight 61; [glUniform1f screenHeight]; textureFlip 0; [glUniform1b mBGFlip]
        textureNormal 0; textureHeight 1; textureBG 2; unit 0 texture 8; unit 1 texture 7; unit 2 texture 9
        MIN_FILTER LINEAR; MAG_FILTER LINEAR; WRAP_S MIRRORED_REPEAT; WRAP_T MIRRORED_REPEAT
        Pointer vertices 3 0; Enable vertices; Pointer texcoords 2 0; Enable texcoords
        glDrawArrays TRIANGLE_STRIP 0 4; Disable texcoords; Disable vertices
        unit 2 texture 0; unit 1 texture 0; unit 0 texture 0; glUseProgram 0; glBindFramebuffer FRAMEBUFFER 0)");
}

TEST_F(WaterCallsTest, ShallowWater) {
    ShallowWater pond;
    makeReady(width, height, pond);
    const std::string matrix = "; ?mvpMatrix 1; [glUniformMatrix4fv mvpMatrix]; ";
    const std::string quad = R"(glViewport 0 0 97 61; ?quadCoord; Pointer quadCoord 3 0; [glVertexAttribPointer program]
        ?quadCoord; Enable quadCoord; [glEnableVertexAttribArray program]
        glDrawArrays TRIANGLE_STRIP 0 4; [glDrawArrays DropletPsudoRenderer::program]
        ?quadCoord; Disable quadCoord; [glDisableVertexAttribArray program]; glFlush; )";
    const std::string drop = R"(glBindFramebuffer FRAMEBUFFER 1; glEnable BLEND; glBlendEquation FUNC_ADD
        glBlendFunc SRC_COLOR DST_COLOR; glUseProgram 1; ?center 12 20.5; ?radius 5; ?strength 0.5)";
    const std::string line = R"(glBindFramebuffer FRAMEBUFFER 1; glUseProgram 2; ?textureWater 0; unit 0 texture 3
        ?center 12 20.5; ?center2 90 40; ?radius 5; ?strength 0.5)";
    const std::string step = R"(
        glBindFramebuffer FRAMEBUFFER 2; [glBindFramebuffer mFBOsWater[mCurrentBufferIndex]]; glFramebufferTexture2D 2
        [glFramebufferTexture2D mFBOsWater[mCurrentBufferIndex] mTexturesWater[mCurrentBufferIndex]]
        glUseProgram 3; ?texture1 0; unit 0 texture 1; ?texture2 1; unit 1 texture 3)";
    const std::string term = "?Term 0.308996 -0.993521 0.421131; [glUniform3fv Term]; ";
    const std::string end = "glUseProgram 0; glBindFramebuffer FRAMEBUFFER 0";
    expectCalls([&] { pond.addDrop(a, 10, 0.5F); },
                drop + matrix + quad + "glUseProgram 0; glDisable BLEND; glBindFramebuffer FRAMEBUFFER 0");
    EXPECT_EQ(log.take().at(0).message, "addDrop center[12.000000,20.500000] radius[10.000000] strength[0.500000]");
    expectCalls([&] { pond.addDropLine(a, b, 10, 0.5F); }, line + matrix + quad + end);
    expectCalls([&] { pond.update(); },
                step + matrix + term + quad + "glBindTexture TEXTURE_2D 0; unit 0 texture 0; " + end);
    pond.init();
    EXPECT_EQ(glRecorder().counts["glDeleteProgram"], 3) << "the programs of the first init";
}

class WaterTest : public GLTest {
  protected:
    using Field = std::vector<float>;

    WaterTest() { makeReady(width, height, water, pond, painted); }

    /// One channel of a screen-sized texture, rows from the bottom.
    static Field channel(GLuint texture, size_t channel = 0) {
        const Field rgba = tidalume::headless::readTexture(texture, width, height).rgba;
        Field field;
        for (size_t i = channel; i < rgba.size(); i += 4)
            field.push_back(rgba[i]);
        return field;
    }

    static float at(const Field& field, int x, int y) {
        return field[std::clamp(y, 0, height - 1) * width + std::clamp(x, 0, width - 1)];
    }

    /// Makes the pond run its next step.
    void step() {
        const GLuint before = pond.getTexture();
        while (pond.getTexture() == before)
            pond.update();
    }

    void update(int updates) {
        for (int i = 0; i < updates; ++i)
            water.update();
        for (int i = 0; i < 10 * updates; ++i)
            step();
    }

    ShallowWaterIterative water;
    ShallowWater pond;
    IntensityMapBuilder painted;
};

/// A float as the driver stores it in a half float, rounded or truncated.
float stored(float value, bool truncates) {
    const float unit = std::ldexp(1.0F, std::max(std::ilogb(value), -14) - 10);
    return (truncates ? std::trunc(value / unit) : std::nearbyint(value / unit)) * unit;
}

/// 200 updates, each of 8 passes, beside the same recurrence in floats with half-float stores.
///
/// The bound: a half float has 11 bits and a float 24, so that the sums of a pass are exact in whatever order they are
/// made. What rounds is the product with 0.99 and the subtraction of 0.00001, both in a given order; a driver that
/// fuses the product with the sum after it can differ by 2^-24 of the velocity there, which changes one store in some
/// 2^12 by one step, and the damping forgets it. So the difference is 0, or one step of the largest height at worst.
TEST_F(WaterTest, AWholeRunFollowsTheRecurrence) {
    float center[2] = {30.5F, 20.5F};
    water.addDrop(center, 15.0F, 0.5F + 0.75F / 2048.0F, 1.0F);
    Field h = channel(water.getTexture());
    Field v(h.size());
    const bool truncates = at(h, 30, height - 21) == 0.5F;
    for (int pass = 1; pass <= 200 * 8; ++pass) {
        const Field old = h;
        for (int i = 0; i < width * height; ++i) {
            const int x = i % width, y = i / width;
            const float sum = at(old, x - 1, y) + at(old, x + 1, y) + at(old, x, y - 1) + at(old, x, y + 1);
            const float velocity = (v[i] + (sum / 4 - old[i]) * 2.0F) * 0.99F;
            const float loss = velocity == 0.0F ? 0.0F : std::copysign(0.00001F, velocity);
            h[i] = stored(old[i] + velocity - loss, truncates);
            v[i] = stored(velocity, truncates);
        }
        if (pass % 8 == 0) water.update();
    }
    const float largest = *std::max_element(h.begin(), h.end());
    EXPECT_GT(largest, 0.005F) << "something must be left to compare";
    const float oneStep = std::ldexp(1.0F, std::ilogb(largest) - 10);
    EXPECT_THAT(channel(water.getTexture()), Pointwise(FloatNear(oneStep), h));
}

/// Waves are symmetric to the bit: a drop of one texel is, and a sum of four half floats is exact in every order.
TEST_F(WaterTest, StillWaterStaysStillAndADropMakesSymmetricWavesThatDecay) {
    update(2);
    for (const Field& still : {channel(water.getTexture()), channel(water.getTexture(), 1), channel(pond.getTexture())})
        EXPECT_THAT(still, Each(0.0F));
    float middle[2] = {48.5F, 30.5F};
    water.addDrop(middle, 1.0F, 0.9F, 1.0F);
    pond.addDrop(middle, 2.0F, 0.9F);
    log.take();
    update(12);
    for (const Field& field : {channel(water.getTexture()), channel(pond.getTexture())}) {
        EXPECT_GT(std::fabs(at(field, 2, 2)), 1e-3F) << "the waves have reached the corner";
        for (int i = 0; i < width * height; ++i) {
            EXPECT_EQ(field[i], at(field, width - 1 - i % width, i / width)) << i;
            EXPECT_EQ(field[i], at(field, i % width, height - 1 - i / width)) << i;
        }
    }
    const auto sumOfSquares = [](const Field& field) {
        return std::inner_product(field.begin(), field.end(), field.begin(), 0.0);
    };
    const double before = sumOfSquares(channel(water.getTexture()));
    update(12);
    EXPECT_LT(sumOfSquares(channel(water.getTexture())), before);
}

TEST_F(WaterTest, IterativePassesAndNames) {
    const auto passes = [&](int count) {
        const GLuint before = water.getTexture();
        water.setIterationCount(count);
        glRecorder().counts.clear();
        water.update();
        const int passes = glRecorder().counts["glDrawArrays"];
        EXPECT_EQ(water.getTexture() != before, passes % 2 == 1);
        return passes;
    };
    EXPECT_EQ(passes(-1), 8) << "ignored";
    EXPECT_EQ(passes(3), 3);
    EXPECT_EQ(passes(0), 3) << "ignored";
}

TEST_F(WaterTest, PondTime) {
    glRecorder().counts.clear();
    for (int i = 0; i < 40; ++i)
        pond.update();
    EXPECT_EQ(glRecorder().counts["glDrawArrays"], 16);
    const auto& term = TestPeer::mTerm(pond);
    EXPECT_NEAR(term[0] + term[1] + 4.0F * term[2], 1.0F, 2e-7F);
}

/// What the application has set and what only counts.
TEST_F(WaterTest, WhatSurvivesALossOfTheContext) {
    ShallowWaterRenderer renderer;
    renderer.setTexture(5);
    renderer.setDrawFrameBuffer(6);
    step();
    step();
    const auto counters = [&] {
        return std::tuple(TestPeer::mCurrentBufferIndex(pond), TestPeer::mTime(pond), TestPeer::mNextStepTime(pond));
    };
    const auto before = counters();
    water.GLContextDestroyed();
    pond.GLContextDestroyed();
    painted.GLContextDestroyed();
    renderer.GLContextDestroyed();
    pond.update();
    context.recreate();
    makeReady(width, height, pond);
    EXPECT_EQ(counters(), before) << "time does not pass before setScreenSize";
    EXPECT_EQ(TestPeer::mTextureBG(renderer), 5U);
    EXPECT_EQ(TestPeer::mDrawFrameBuffer(renderer), 6U);
}

/// No disturbance may bring a NaN or an infinity into a height field.
TEST_F(WaterTest, IgnoresDisturbancesThatAreNoNumbers) {
    // How many of all seven disturbances draw with this as argument i; the radius is the one at 4.
    const auto draws = [&](size_t i, float argument) {
        float a[8] = {20.0F, 30.0F, 40.0F, 35.0F, 10.0F, 0.5F, 0.5F, 0.5F};
        a[i] = argument;
        glRecorder().counts.clear();
        painted.addDropLine(a, a + 2, a[4], a[5], a[6]);
        water.addDropLine(a, a + 2, a[4], a[5], a[6]);
        pond.addDropLine(a, a + 2, a[4], a[5]);
        painted.addHorizontalWave(a[0], a[4], a[5], a[6], a[7], a[6]);
        water.addHorizontalWave(a[0], a[4], a[5], a[6], a[7], a[6]);
        water.addDrop(a, a[4], a[5], a[6]);
        pond.addDrop(a, a[4], a[5]);
        log.take();
        return glRecorder().counts["glDrawArrays"];
    };
    constexpr float infinity = std::numeric_limits<float>::infinity();
    const int readers[8] = {7, 5, 3, 3, 7, 7, 5, 2}; // how many of the seven read the argument
    for (size_t i = 0; i < 8; ++i) {
        for (const float bad : {std::nanf(""), infinity, -infinity})
            EXPECT_EQ(draws(i, bad), 7 - readers[i]) << "argument " << i;
    }
    EXPECT_EQ(draws(4, 0.0F), 0);
    // Finite, but beyond what squares in floats hold.
    for (const float huge : {1e30F, -1e30F, 1e-42F}) {
        for (size_t i = 0; i < 5; ++i)
            EXPECT_EQ(draws(i, huge), 7);
    }
    update(1);
    const auto isFinite = testing::Truly([](float height) { return std::isfinite(height); });
    for (const GLuint texture : {painted.getTexture(), water.getTexture(), pond.getTexture()})
        EXPECT_THAT(channel(texture), Each(isFinite));
}

/// A drop under a picture of noise, each effect in its own frame: where it falls the picture moves, elsewhere not.
TEST_F(WaterTest, TheChainShowsADropWhereItFell) {
    Field noise;
    for (int i = 0; i < width * height * 4; ++i)
        noise.push_back(i * 7919 % 256 / 255.0F);
    const GLuint picture = tidalume::headless::makeTexture(GL_RGBA8, width, height, noise);
    NormalMapBuilder normals;
    ShallowWaterRenderer renderer;
    makeReady(width, height, normals, renderer);
    renderer.setTexture(static_cast<int>(picture));
    float drop[2] = {30.0F, 10.0F};
    float fromBelow[2] = {30.0F, height - 10.0F};
    water.addDrop(drop, 8.0F, 0.3F, 1.0F);
    painted.addDropLine(drop, drop, 8.0F, 0.3F, 1.0F);
    pond.addDrop(fromBelow, 16.0F, 0.55F);
    log.take();
    for (const GLuint heights : {water.getTexture(), painted.getTexture(), pond.getTexture()}) {
        normals.build(heights);
        renderer.render(heights, normals.getTexture());
        const Field rgba = tidalume::headless::readFramebuffer(width, height).rgba;
        int moved = 0;
        for (int i = 0; i < width * height * 4; ++i) {
            if (std::fabs(rgba[i] - noise[i]) < 1.01F / 255.0F) continue;
            EXPECT_LT(std::hypot(i / 4 % width + 0.5 - 30.0, height - i / 4 / width - 0.5 - 10.0), 9.5);
            ++moved;
        }
        EXPECT_GT(moved, 300);
    }
    glDeleteTextures(1, &picture);
}

} // namespace
