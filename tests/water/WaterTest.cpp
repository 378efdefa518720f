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
#include <tuple>

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::FloatNear;
using testing::Pointwise;

class WaterCallsTest : public CallsTest {
  protected:
    /// A pass: what comes before its quad.
    static void expectPass(const std::function<void()>& action, const std::string& expected) {
        expectCalls(action, expected + "; quad; glFlush; glUseProgram 0; glBindFramebuffer FRAMEBUFFER 0");
    }

    /// Programs and targets: look-ups, formats and labels. In which order a target is made is Metaball2DRenderer's
    /// test.
    template <typename Effect>
    void expectSetUp(Effect& effect, const std::string& expected) {
        expectCalls([&] { (effect.init(), effect.setScreenSize(width, height)); }, expected,
                    {"Location", "createProgram", "TexImage2D", "mTexture", "mFBO"});
    }

    float a[2] = {12.0F, 20.5F};
    float b[2] = {90.0F, 40.0F};
};

/// Lines leave whatever blending and depth test they find.
TEST_F(WaterCallsTest, IntensityMapBuilder) {
    IntensityMapBuilder builder;
    expectSetUp(builder, R"(
        [createProgram mProgramDropLine]; ?matrixMVP; ?center; ?center2; ?radius; ?strength; ?preserveWeight; ?vertices
        [createProgram mProgramHorizontalWave]
        ?matrixMVP; ?center; ?radius; ?strength; ?waveRadius; ?waveCount; ?preserveWeight; ?vertices
        R16F 97 61 mTexture; [glGenFramebuffers mFBONormal]; [glBindFramebuffer mFBONormal]
        [glFramebufferTexture2D mFBONormal mTexture])");
    expectPass([&] { builder.addDropLine(a, b, 10.0F, 0.5F, 0.25F); }, R"(target 1 97 61; glUseProgram 1
        matrixMVP 1; center 12 20.5; center2 90 40; radius 10; strength 0.5; preserveWeight 0.25)");
    expectPass([&] { builder.addHorizontalWave(30.0F, 10.0F, 0.5F, 7.0F, 2.0F, 0.25F); }, R"(
        glDisable BLEND; glDisable DEPTH_TEST; target 1 97 61; glUseProgram 2
        matrixMVP 1; center 30; radius 10; strength 0.5; waveRadius 7; waveCount 2; preserveWeight 0.25)");
}

TEST_F(WaterCallsTest, NormalMapBuilder) {
    NormalMapBuilder builder;
    expectSetUp(builder, R"([createProgram mProgram]; ?matrixMVP; ?heightMax; ?textureHeight; ?vertices
        RGB16F 97 61 mTextureNormal; [glGenFramebuffers mFBONormal]
        [glBindFramebuffer mFBONormal]; [glFramebufferTexture2D mFBONormal mTextureNormal])");
    expectPass([&] { builder.build(7); }, R"(glDisable BLEND; glDisable DEPTH_TEST; target 1 97 61; glUseProgram 1
        textureHeight 0; unit 0 texture 7; heightMax 100; matrixMVP 1)");
}

/// The three disturbances set their uniforms in three different orders.
TEST_F(WaterCallsTest, ShallowWaterIterative) {
    ShallowWaterIterative water;
    expectSetUp(water, R"(
        [createProgram mProgramDrop]; ?matrixMVP; ?center; ?radius; ?strength; ?preserveWeight; ?vertices
        [createProgram mProgramDropLine]; ?matrixMVP; ?center; ?center2; ?radius; ?strength; ?preserveWeight; ?vertices
        [createProgram mProgramHorizontalWave]
        ?matrixMVP; ?center; ?radius; ?strength; ?waveRadius; ?waveCount; ?preserveWeight; ?vertices
        [createProgram mProgramUpdate]; ?matrixMVP; ?textureWater; ?vertices
        RG16F 97 61 mTexturesWater[0]; RG16F 97 61 mTexturesWater[1]; [glGenFramebuffers mFBOsWater[0]]
        [glBindFramebuffer mFBOsWater[0]]; [glFramebufferTexture2D mFBOsWater[0] mTexturesWater[0]]
        [glBindFramebuffer mFBOWater[1]]; [glFramebufferTexture2D mFBOsWater[1] mTexturesWater[1]])");
    expectPass([&] { water.addDrop(a, 10.0F, 0.5F, 0.25F); }, R"(target 1 97 61; glUseProgram 1
        ?textureWater 0; unit 0 texture 2; center 12 20.5; radius 10; strength 0.5; preserveWeight 0.25; matrixMVP 1)");
    expectPass([&] { water.addDropLine(a, b, 10.0F, 0.5F, 0.25F); }, R"(target 2 97 61; glUseProgram 2
        ?textureWater 0; unit 0 texture 1; center 12 20.5; center2 90 40; radius 10; strength 0.5; matrixMVP 1
        preserveWeight 0.25)");
    expectPass([&] { water.addHorizontalWave(30.0F, 10.0F, 0.5F, 7.0F, 2.0F, 0.25F); },
               R"(target 1 97 61; glUseProgram 3
        ?textureWater 0; unit 0 texture 2; center 30; radius 10; strength 0.5; waveRadius 7; waveCount 2
        preserveWeight 0.25; matrixMVP 1; [glUniformMatrix4fv matrixMVP])");
    water.setIterationCount(1);
    expectPass([&] { water.update(); }, R"(target 2 97 61; [glBindFramebuffer mFBOsWater[0]]
        glFramebufferTexture2D 2; [glFramebufferTexture2D mFBOsWater[0] mTexturesWater[0]]; glUseProgram 4
        textureWater 0; unit 0 texture 1; [glBindTexture mProgramUpdate]; matrixMVP 1
        [glUniformMatrix4fv matrixMVP])");
}

TEST_F(WaterCallsTest, ShallowWaterRenderer) {
    ShallowWaterRenderer renderer;
    expectCalls([&] { renderer.render(7, 8); }, "");
    expectSetUp(renderer, R"([createProgram mProgram]; ?textureNormal; ?textureHeight; ?textureBG; ?matrixMVP
        ?heightMax; ?light; ?materialSpecular; ?materialShininess; ?screenWidth; ?screenHeight; ?textureFlip; ?vertices
        ?texcoords)");
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
    expectCalls([&] { pond.drawFullScreenQuad(1); }, "");
    expectSetUp(pond, R"(
        [createProgram mProgramDrop]; [createProgram mProgramDropLine]; [createProgram mProgramUpdate]
        [glGenTextures mTexturesWater]; R16F 97 61 mTexturesWater[0]; R16F 97 61 mTexturesWater[1]
        R16F 97 61 mTexturesWater[2]; [glGenFramebuffers mFBOsWater[0]]
        [glBindFramebuffer mFBOsWater[0]]; [glFramebufferTexture2D mFBOsWater[0] mTexturesWater[0]]
        [glBindFramebuffer mFBOWater[1]]; [glFramebufferTexture2D mFBOsWater[1] mTexturesWater[1]]
        [glBindFramebuffer mFBOWater[2]]; [glFramebufferTexture2D mFBOsWater[2] mTexturesWater[2]])");
    const std::string matrix = "; ?mvpMatrix 1; [glUniformMatrix4fv mvpMatrix]; ";
    const std::string quad = R"(glViewport 0 0 97 61
        ?quadCoord; Pointer quadCoord 3 0; [glVertexAttribPointer program]
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
    const std::string unbound = "glBindTexture TEXTURE_2D 0; unit 0 texture 0; ";
    const std::string end = "glUseProgram 0; glBindFramebuffer FRAMEBUFFER 0";
    expectCalls([&] { pond.addDrop(a, 10.0F, 0.5F); },
                drop + matrix + quad + "glUseProgram 0; glDisable BLEND; glBindFramebuffer FRAMEBUFFER 0");
    EXPECT_EQ(log.take().at(0).message, "addDrop center[12.000000,20.500000] radius[10.000000] strength[0.500000]");
    expectCalls([&] { pond.addDropLine(a, b, 10.0F, 0.5F); }, line + matrix + quad + end);
    expectCalls([&] { pond.update(); }, step + matrix + term + quad + unbound + end);
    pond.init();
    EXPECT_EQ(glRecorder().counts["glDeleteProgram"], 3) << "the programs of the first init";
}

class WaterTest : public GLTest {
  protected:
    using Field = std::vector<float>;

    WaterTest() { makeReady(water, pond); }

    template <typename... Effects>
    static void makeReady(Effects&... effects) {
        (..., (effects.init(), effects.setScreenSize(width, height)));
    }

    /// One channel of a screen-sized texture, rows from the bottom.
    static Field channel(GLuint texture, size_t channel = 0) {
        const Field rgba = tidalume::headless::readTexture(texture, width, height).rgba;
        Field field;
        for (size_t i = channel; i < rgba.size(); i += 4)
            field.push_back(rgba[i]);
        return field;
    }

    static float& at(Field& field, int x, int y) {
        return field[std::clamp(y, 0, height - 1) * width + std::clamp(x, 0, width - 1)];
    }

    template <typename Visit>
    static void forEachTexel(Visit visit) {
        for (int i = 0; i < width * height; ++i)
            visit(i % width, i / width);
    }

    /// Makes the pond run its next step.
    void step() {
        const GLuint before = pond.getTexture();
        while (pond.getTexture() == before)
            pond.update();
    }

    float middle[2] = {48.5F, 30.5F};
    ShallowWaterIterative water;
    ShallowWater pond;
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
        Field old = h;
        forEachTexel([&](int x, int y) {
            const float sum = at(old, x - 1, y) + at(old, x + 1, y) + at(old, x, y - 1) + at(old, x, y + 1);
            const float velocity = (at(v, x, y) + (sum / 4 - at(old, x, y)) * 2.0F) * 0.99F;
            const float loss = velocity == 0.0F ? 0.0F : std::copysign(0.00001F, velocity);
            at(h, x, y) = stored(at(old, x, y) + velocity - loss, truncates);
            at(v, x, y) = stored(velocity, truncates);
        });
        if (pass % 8 == 0) water.update();
    }
    const float largest = *std::max_element(h.begin(), h.end());
    EXPECT_GT(largest, 0.005F) << "something must be left to compare";
    const float oneStep = std::ldexp(1.0F, std::ilogb(largest) - 10);
    EXPECT_THAT(channel(water.getTexture()), Pointwise(FloatNear(oneStep), h));
}

/// Waves are symmetric to the bit: a drop of one texel is, and a sum of four half floats is exact in every order. The
/// damping takes 1 % of the velocity per pass, so 2 % of the kinetic energy, which is half of the whole; stores that
/// truncate take a little more.
TEST_F(WaterTest, StillWaterStaysStillAndADropMakesSymmetricWavesThatDecay) {
    const auto update = [&](int updates) {
        for (int i = 0; i < updates; ++i)
            water.update();
        for (int i = 0; i < 10 * updates; ++i)
            step();
    };
    update(2);
    EXPECT_THAT(channel(water.getTexture()), Each(0.0F));
    EXPECT_THAT(channel(water.getTexture(), 1), Each(0.0F));
    EXPECT_THAT(channel(pond.getTexture()), Each(0.0F));

    water.addDrop(middle, 1.0F, 0.9F, 1.0F);
    pond.addDrop(middle, 2.0F, 0.9F);
    log.take();
    update(12);
    for (Field field : {channel(water.getTexture()), channel(pond.getTexture())}) {
        EXPECT_GT(std::fabs(at(field, 2, 2)), 1e-3F) << "the waves have reached the corner";
        forEachTexel([&](int x, int y) {
            EXPECT_EQ(at(field, x, y), at(field, width - 1 - x, y)) << x << ", " << y;
            EXPECT_EQ(at(field, x, y), at(field, x, height - 1 - y)) << x << ", " << y;
        });
    }

    water.setScreenSize(width, height + 1);
    water.setScreenSize(width, height); // another size makes still water
    water.addDrop(middle, 12.0F, 1.0F, 1.0F);
    std::vector<double> energies; // kinetic and potential, where waves run at the square root of a half
    for (int i = 0; i < 5; ++i) {
        update(10);
        Field h = channel(water.getTexture());
        Field v = channel(water.getTexture(), 1);
        energies.push_back(0.0);
        forEachTexel([&](int x, int y) {
            const double right = at(h, x + 1, y) - at(h, x, y);
            const double up = at(h, x, y + 1) - at(h, x, y);
            energies.back() += 0.5 * at(v, x, y) * at(v, x, y) + 0.25 * (right * right + up * up);
        });
    }
    for (int i = 1; i < 5; ++i)
        EXPECT_NEAR(energies[i] / energies[i - 1] / std::pow(0.99, 80), 0.97, 0.05) << i;
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
    water.addDrop(middle, 12.0F, 1.0F, 1.0F);
    const Field drop = channel(water.getTexture());
    water.swapWaterTexture();
    EXPECT_THAT(channel(water.getTexture()), Each(0.0F)) << "the state before the drop";
    water.swapWaterTexture();
    water.setScreenSize(width, height);
    EXPECT_EQ(channel(water.getTexture()), drop) << "the same size keeps the water";
}

TEST_F(WaterTest, PondTimeAndParameters) {
    glRecorder().counts.clear();
    for (int i = 0; i < 40; ++i)
        pond.update();
    EXPECT_EQ(glRecorder().counts["glDrawArrays"], 16);
    const GLuint first = pond.getTexture();
    for (const bool isFirst : {false, false, true}) {
        step();
        EXPECT_EQ(pond.getTexture() == first, isFirst) << "three steps return to the same name";
    }
    const auto& term = TestPeer::mTerm(pond);
    EXPECT_THAT(term, ElementsAre(0.30899593F, -0.99352103F, 0.42113128F));
    TestPeer::mWaveSpeed(pond) = 1.0F;
    TestPeer::mViscosity(pond) = 0.5F;
    pond.updateParameters();
    EXPECT_NE(term[0], 0.30899593F);
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
    EXPECT_EQ(std::get<0>(before), 2);
    water.GLContextDestroyed();
    pond.GLContextDestroyed();
    renderer.GLContextDestroyed();
    pond.update();
    context.recreate();
    makeReady(pond);
    EXPECT_EQ(counters(), before) << "time does not pass before setScreenSize";
    EXPECT_THAT(channel(pond.getTexture()), Each(0.0F));
    EXPECT_EQ(TestPeer::mTextureBG(renderer), 5U);
    EXPECT_EQ(TestPeer::mDrawFrameBuffer(renderer), 6U);
}

/// No disturbance may bring a NaN or an infinity into a height field.
TEST_F(WaterTest, IgnoresDisturbancesThatAreNoNumbers) {
    IntensityMapBuilder painted;
    makeReady(painted);
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
        EXPECT_EQ(log.take().size(), 1U) << "the pond logs every drop";
        return glRecorder().counts["glDrawArrays"];
    };
    EXPECT_EQ(draws(4, 0.0F) + draws(4, -0.0F), 0);
    using Limits = std::numeric_limits<float>;
    const int readers[8] = {7, 5, 3, 3, 7, 7, 5, 2}; // how many of the seven read the argument
    for (size_t i = 0; i < 8; ++i) {
        for (const float bad : {Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity()})
            EXPECT_EQ(draws(i, bad), 7 - readers[i]) << "argument " << i;
    }
    // Finite, but beyond what squares in floats hold.
    for (const float huge : {1e30F, -1e30F, Limits::max(), 1e-42F}) {
        for (size_t i = 0; i < 5; ++i)
            EXPECT_EQ(draws(i, huge), 7);
    }
    water.update();
    step();
    for (const GLuint texture : {painted.getTexture(), water.getTexture(), pond.getTexture()})
        EXPECT_THAT(channel(texture), Each(testing::Truly([](float height) { return std::isfinite(height); })));
}

/// A drop under a picture of noise, each effect in its own frame, on a driver with and without rendering to three
/// channels: where it falls the picture moves, elsewhere it does not.
TEST_F(WaterTest, TheChainShowsADropWhereItFell) {
    Field noise;
    for (int i = 0; i < width * height * 4; ++i)
        noise.push_back(i * 7919 % 256 / 255.0F);
    const GLuint picture = tidalume::headless::makeTexture(GL_RGBA8, width, height, noise);
    IntensityMapBuilder painted;
    ShallowWaterRenderer renderer;
    makeReady(painted, renderer);
    renderer.setTexture(static_cast<int>(picture));
    float drop[2] = {30.0F, 10.0F};
    float fromBelow[2] = {30.0F, height - 10.0F};
    water.addDrop(drop, 8.0F, 0.3F, 1.0F);
    painted.addDropLine(drop, drop, 8.0F, 0.3F, 1.0F);
    pond.addDrop(fromBelow, 16.0F, 0.55F);
    log.take();
    const auto shown = [&](GLuint heights, GLint format) {
        NormalMapBuilder normals;
        makeReady(normals);
        EXPECT_EQ(glRecorder().formatOfTexture[normals.getTexture()], format);
        normals.build(heights);
        renderer.render(heights, normals.getTexture());
        return tidalume::headless::readFramebuffer(width, height).rgba;
    };
    for (const GLuint heights : {water.getTexture(), painted.getTexture(), pond.getTexture()}) {
        const Field rgba = shown(heights, GL_RGB16F);
        glRecorder().faults.notRenderable = {GL_RGB16F};
        EXPECT_EQ(shown(heights, GL_RGBA16F), rgba);
        glRecorder().faults = {};
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
