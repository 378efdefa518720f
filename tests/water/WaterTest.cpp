#include "effects/water/IntensityMapBuilder.h"
#include "effects/water/NormalMapBuilder.h"
#include "effects/water/ShallowWater.h"
#include "effects/water/ShallowWaterIterative.h"
#include "effects/water/ShallowWaterRenderer.h"
#include "testing/TestPeer.h"
#include "tests/pictures/Field.h"
#include "tests/support/GLTest.h"

#include <array>
#include <tuple>

namespace {

using namespace tidalume;
using namespace tidalume::pictures;
using testing::AllOf, testing::AnyOf, testing::Each, testing::ElementsAre, testing::Ge, testing::HasSubstr, testing::Le;

class WaterTest : public GLTest {
  protected:
    WaterTest() {
        glRecorder().faults.renderer = "a GPU";
        makeReady(width, height, painted, normals, water, renderer, pond);
    }
    ~WaterTest() override { glDeleteTextures(3, std::array{70U, 80U, 90U}.data()); } // what the tests have bound

    /// What a pass that covers its whole target says to tile-based GPUs.
    static inline const std::string discard = "; glIsEnabled BLEND; glClear COLOR_BUFFER_BIT;";

    /// A pass into a framebuffer.
    /// @param setUp  what comes before its quad
    static std::string pass(const std::string& target, const std::string& setUp) {
        return "glViewport 0 0 97 61; glBindFramebuffer " + target + ";" + setUp + R"(
            glVertexAttribPointer vertices 3 FLOAT 0 0; glEnableVertexAttribArray vertices; glDrawArrays TRIANGLE_STRIP 0 4
            glDisableVertexAttribArray vertices; glFlush; glUseProgram 0; glBindFramebuffer 0)";
    }

    /// A pass of the water, which reads the other texture.
    static std::string disturbance(int target, const std::string& program, const std::string& uniforms) {
        return pass("mFBOsWater[" + std::to_string(target) + "]",
                    "glUseProgram " + program + ";?textureWater; textureWater = 0; glActiveTexture TEXTURE0;" +
                        "glBindTexture mTexturesWater[" + std::to_string(1 - target) + "];" + uniforms + discard);
    }

    /// How many steps the pond runs.
    int steps(int updates) {
        glRecorder().counts.clear();
        while (updates-- > 0)
            pond.update();
        return glRecorder().counts["glDrawArrays"];
    }

    /// What is heard of targets that are made: their formats, and what the library checks.
    static constexpr char labels[] = "glTexImage2D|\\[";

    IntensityMapBuilder painted;
    NormalMapBuilder normals;
    ShallowWaterIterative water;
    ShallowWaterRenderer renderer;
    ShallowWater pond;
    float a[2] = {12.0F, 20.5F};
    float b[2] = {90.0F, 40.0F};
};

/// Lines leave whatever blending and depth test they find. A uniform that no shader has is set all the same.
TEST_F(WaterTest, HeightsAndNormals) {
    const std::string opaque = "glDisable BLEND; glDisable DEPTH_TEST;";
    EXPECT_CALLS(painted.addDropLine(a, b, 10, 0.5F, 0.25F), pass("mFBONormal", R"(glUseProgram mProgramDropLine
        matrixMVP = ...; center = 12 20.5; center2 = 90 40; radius = 10; strength = 0.5; preserveWeight = 0.25)"));
    EXPECT_CALLS(painted.addHorizontalWave(30, 10, 0.5F, 7, 2, NAN), opaque + pass("mFBONormal", R"(
        glUseProgram mProgramHorizontalWave; matrixMVP = ...; center = 30; radius = 10; strength = 0.5
        waveRadius = 7; waveCount = 2; preserveWeight = nan)"));
    EXPECT_CALLS(normals.build(70), opaque + pass("mFBONormal", R"(glUseProgram mProgram; textureHeight = 0
        glActiveTexture TEXTURE0; glBindTexture 70; heightMax = 100; matrixMVP = ...)" +
                                                                    discard));
    const std::string target = "[glGenFramebuffers mFBONormal]; [glBindFramebuffer mFBONormal];";
    EXPECT_CALLS(normals.setScreenSize(61, 97), R"(glTexImage2D RGB16F 61 97 RGB HALF_FLOAT
        [glTexImage2D mTextureNormal];)" + target + "[glFramebufferTexture2D mFBONormal mTextureNormal]",
                 labels);
    EXPECT_CALLS(painted.setScreenSize(61, 97), R"(glTexImage2D R16F 61 97 RED HALF_FLOAT
        [glTexImage2D mTexture];)" + target + "[glFramebufferTexture2D mFBONormal mTexture]",
                 labels);
}

/// The three disturbances set their uniforms in three different orders.
TEST_F(WaterTest, ShallowWaterIterative) {
    EXPECT_CALLS(water.addDrop(a, 10, 0.5F, 0.25F), disturbance(0, "mProgramDrop", R"(
        center = 12 20.5; radius = 10; strength = 0.5; preserveWeight = 0.25; matrixMVP = ...)"));
    EXPECT_CALLS(water.addDropLine(a, b, 10, 0.5F, 0.25F), disturbance(1, "mProgramDropLine", R"(
        center = 12 20.5; center2 = 90 40; radius = 10; strength = 0.5; matrixMVP = ...; preserveWeight = 0.25)"));
    EXPECT_CALLS(water.addHorizontalWave(30, 10, 0.5F, 7, 2, 0.25F), disturbance(0, "mProgramHorizontalWave", R"(
        center = 30; radius = 10; strength = 0.5; waveRadius = 7; waveCount = 2; preserveWeight = 0.25
        matrixMVP = ...; [glUniformMatrix4fv matrixMVP])"));
    water.setIterationCount(1);
    EXPECT_CALLS(water.update(), pass("mFBOsWater[1]", R"([glBindFramebuffer mFBOsWater[0]]
        glFramebufferTexture2D mTexturesWater[1]; [glFramebufferTexture2D mFBOsWater[0] mTexturesWater[0]]
        glUseProgram mProgramUpdate; textureWater = 0; glActiveTexture TEXTURE0; glBindTexture mTexturesWater[0]
        [glBindTexture mProgramUpdate]; matrixMVP = ...; [glUniformMatrix4fv matrixMVP])" +
                                                           discard));
    EXPECT_CALLS(water.setScreenSize(61, 97), R"(
        glTexImage2D RG16F 61 97 RG HALF_FLOAT; [glTexImage2D mTexturesWater[0]]
        glTexImage2D RG16F 61 97 RG HALF_FLOAT; [glTexImage2D mTexturesWater[1]]; [glGenFramebuffers mFBOsWater[0]]
        [glBindFramebuffer mFBOsWater[0]]; [glFramebufferTexture2D mFBOsWater[0] mTexturesWater[0]]
        [glBindFramebuffer mFBOWater[1]]; [glFramebufferTexture2D mFBOsWater[1] mTexturesWater[1]])",
                 labels);
}

TEST_F(WaterTest, ShallowWaterRenderer) {
    renderer.setTexture(90);
    EXPECT_CALLS(renderer.render(70, 80), R"(glDisable BLEND; glDisable DEPTH_TEST; glViewport 0 0 97 61
        glBindFramebuffer 0; glUseProgram mProgram; heightMax = 100; [glUniform1f maxHeight]
        light = -0.271607 0.724286 0.63375; [glUniform3fv light]; materialSpecular = 0; [glUniform1f materialSpecular]
        materialShininess = 50; [glUniform1f materialShininess]; matrixMVP = ...; [glUniformMatrix4fv matrixMVP]
        screenWidth = 97; [glUniform1f screenWidth]; screenHeight = 61; [glUniform1f screenHeight]
        textureFlip = 0; [glUniform1b mBGFlip]; textureNormal = 0; textureHeight = 1; textureBG = 2
        glActiveTexture TEXTURE0; glBindTexture 80; glActiveTexture TEXTURE1; glBindTexture 70
        glActiveTexture TEXTURE2; glBindTexture 90
        glTexParameteri TEXTURE_MIN_FILTER LINEAR; glTexParameteri TEXTURE_MAG_FILTER LINEAR
        glTexParameteri TEXTURE_WRAP_S MIRRORED_REPEAT; glTexParameteri TEXTURE_WRAP_T MIRRORED_REPEAT
        glVertexAttribPointer vertices 3 FLOAT 0 0; glEnableVertexAttribArray vertices
        glVertexAttribPointer texcoords 2 FLOAT 0 0; glEnableVertexAttribArray texcoords; glDrawArrays TRIANGLE_STRIP 0 4
        glDisableVertexAttribArray texcoords; glDisableVertexAttribArray vertices
        glActiveTexture TEXTURE2; glBindTexture 0; glActiveTexture TEXTURE1; glBindTexture 0
        glActiveTexture TEXTURE0; glBindTexture 0; glUseProgram 0; glBindFramebuffer 0)");
}

TEST_F(WaterTest, ShallowWater) {
    const std::string matrix = "?mvpMatrix; mvpMatrix = ...; [glUniformMatrix4fv mvpMatrix];";
    const std::string quad = R"(glViewport 0 0 97 61
        ?quadCoord; glVertexAttribPointer quadCoord 3 FLOAT 0 0; [glVertexAttribPointer program]
        ?quadCoord; glEnableVertexAttribArray quadCoord; [glEnableVertexAttribArray program]
        glDrawArrays TRIANGLE_STRIP 0 4; [glDrawArrays DropletPsudoRenderer::program]
        ?quadCoord; glDisableVertexAttribArray quadCoord; [glDisableVertexAttribArray program]; glFlush;)";
    EXPECT_CALLS(pond.addDrop(a, 10, 0.5F), R"(glBindFramebuffer mFBOsWater[0]; glEnable BLEND
        glBlendEquation FUNC_ADD; glBlendFunc SRC_COLOR DST_COLOR; glUseProgram mProgramDrop
        ?center; center = 12 20.5; ?radius; radius = 5; ?strength; strength = 0.5;)" +
                                                matrix + quad + "glUseProgram 0; glDisable BLEND; glBindFramebuffer 0");
    EXPECT_EQ(log.take().at(0),
              "2 ShallowWater: addDrop center[12.000000,20.500000] radius[10.000000] strength[0.500000]");
    EXPECT_CALLS(pond.addDropLine(a, b, 10, 0.5F),
                 R"(glBindFramebuffer mFBOsWater[0]; glUseProgram mProgramDropLine
        ?textureWater; textureWater = 0; glActiveTexture TEXTURE0; glBindTexture mTexturesWater[2]
        ?center; center = 12 20.5; ?center2; center2 = 90 40; ?radius; radius = 5; ?strength; strength = 0.5;)" +
                     matrix + discard + quad + "glUseProgram 0; glBindFramebuffer 0");
    EXPECT_CALLS(pond.update(),
                 R"(glBindFramebuffer mFBOsWater[1]
        [glBindFramebuffer mFBOsWater[mCurrentBufferIndex]]; glFramebufferTexture2D mTexturesWater[1]
        [glFramebufferTexture2D mFBOsWater[mCurrentBufferIndex] mTexturesWater[mCurrentBufferIndex]]
        glUseProgram mProgramUpdate; ?texture1; texture1 = 0; glActiveTexture TEXTURE0; glBindTexture mTexturesWater[0]
        ?texture2; texture2 = 1; glActiveTexture TEXTURE1; glBindTexture mTexturesWater[2];)" +
                     matrix + "?Term; Term = 0.308996 -0.993521 0.421131; [glUniform3fv Term];" + discard + quad +
                     "glBindTexture 0; glActiveTexture TEXTURE0; glBindTexture 0; glUseProgram 0; glBindFramebuffer 0");
    EXPECT_CALLS(pond.setScreenSize(61, 97), R"([glGenTextures mTexturesWater]
        glTexImage2D R16F 61 97 RED HALF_FLOAT; [glTexImage2D mTexturesWater[0]]
        glTexImage2D R16F 61 97 RED HALF_FLOAT; [glTexImage2D mTexturesWater[1]]
        glTexImage2D R16F 61 97 RED HALF_FLOAT; [glTexImage2D mTexturesWater[2]]
        [glGenFramebuffers mFBOsWater[0]]
        [glBindFramebuffer mFBOsWater[0]]; [glFramebufferTexture2D mFBOsWater[0] mTexturesWater[0]]
        [glBindFramebuffer mFBOWater[1]]; [glFramebufferTexture2D mFBOsWater[1] mTexturesWater[1]]
        [glBindFramebuffer mFBOWater[2]]; [glFramebufferTexture2D mFBOsWater[2] mTexturesWater[2]])",
                 labels);
    pond.init();
    EXPECT_EQ(glRecorder().counts["glDeleteProgram"], 3) << "the programs of the first init";
}

TEST_F(WaterTest, IterativePassesAndNames) {
    for (const auto& [count, passes] : {std::pair(-1, 8), {3, 3}, {0, 3}}) { // a count below 1 changes nothing
        const GLuint before = water.getTexture();
        water.setIterationCount(count);
        glRecorder().counts.clear();
        water.update();
        EXPECT_EQ(glRecorder().counts["glDrawArrays"], passes);
        EXPECT_EQ(water.getTexture() == before, passes % 2 == 0);
    }
    const Field heights(water.getTexture(), width, height);
    EXPECT_THAT(heights.rgba, Each(AnyOf(0.0F, 1.0F))) << "still water stays still";
}

/// What the application has set and what only counts survives a loss of the context. Time passes also without a size,
/// but no step is run then.
TEST_F(WaterTest, PondTimeAndALossOfTheContext) {
    EXPECT_EQ(steps(40), 16);
    const float time = TestPeer::mTime(pond);
    renderer.setTexture(5);
    renderer.setDrawFrameBuffer(6);
    const auto state = [&] {
        return std::tuple(TestPeer::mCurrentBufferIndex(pond), TestPeer::mTextureBG(renderer),
                          TestPeer::mDrawFrameBuffer(renderer));
    };
    const auto before = state();
    const auto forget = [](auto&... effects) { (..., effects.GLContextDestroyed()); };
    forget(painted, normals, water, renderer, pond);
    EXPECT_CALLS(steps(40), "");
    EXPECT_NEAR(TestPeer::mTime(pond), 2 * time, 1e-3);
    EXPECT_GE(TestPeer::mNextStepTime(pond), TestPeer::mTime(pond));
    context.recreate();
    makeReady(width, height, renderer, pond);
    EXPECT_EQ(state(), before);
}

TEST_F(WaterTest, PondStepsAsOftenAsItsRateSays) {
    EXPECT_TRUE(pond.setStepRate(0.01F));
    EXPECT_EQ(steps(50), 1) << "the one of the start; the next is far off";
    EXPECT_TRUE(pond.setStepRate(1000.0F));
    EXPECT_THAT(steps(50), AllOf(Ge(499), Le(501))) << "at once";
    // From 32,768 on a thousandth is less than half of a float's last bit.
    TestPeer::mTime(pond) = TestPeer::mNextStepTime(pond) = 40000.0F;
    EXPECT_THAT(steps(50), AllOf(Ge(100), Le(500)));
    for (const float bad : {0.0F, -1.0F, 1000.1F, NAN, INFINITY}) {
        EXPECT_FALSE(pond.setStepRate(bad));
        EXPECT_THAT(log.take(), ElementsAre(HasSubstr("must be above 0 and at most 1000"))) << bad;
    }
    EXPECT_GE(steps(50), 100) << "as before";
}

/// One percent on either side of the border of what is stable, and one argument at a time.
TEST_F(WaterTest, PondRefusesPhysicsThatAreNotStable) {
    EXPECT_TRUE(pond.setPhysics(-2.8125F, 0.0F, 0.5F, 0.125F));
    const std::string weights = "Term = 0.0224609 -1 0.494385";
    EXPECT_CALLS(runStep(pond), weights, "Term");
    const char* unstable =
        "6 ShallowWater: setPhysics waveSpeed[2.84375] viscosity[0] gridSpacing[0.5] timeStep[0.125]: "
        "(waveSpeed timeStep / gridSpacing)^2 must be at most 0.5";
    EXPECT_FALSE(pond.setPhysics(2.84375F, 0.0F, 0.5F, 0.125F));
    EXPECT_THAT(log.take(), ElementsAre(unstable));
    for (const float bad : {-0.1F, 0.0F, NAN, INFINITY, -INFINITY}) {
        for (int i = 0; i < 4; ++i) {
            if ((i == 0 && std::isfinite(bad)) || (i == 1 && bad == 0.0F)) continue;
            float physics[] = {1.0F, 0.1F, 1.0F, 0.1F};
            physics[i] = bad;
            EXPECT_FALSE(pond.setPhysics(physics[0], physics[1], physics[2], physics[3])) << bad << " as " << i;
            EXPECT_THAT(log.take(), ElementsAre(HasSubstr("must be finite, viscosity at least 0")))
                << bad << " as " << i;
        }
    }
    EXPECT_CALLS(runStep(pond), weights, "Term");
}

/// No disturbance may bring a NaN or an infinity into a height field, nor does one without a radius draw.
TEST_F(WaterTest, IgnoresDisturbancesThatAreNoNumbers) {
    const int readers[8] = {7, 5, 3, 3, 7, 7, 4, 2}; // how many of all seven disturbances read argument i
    for (size_t i = 0; i < 8; ++i) {
        for (const float bad : {NAN, INFINITY, 0.0F}) {
            if (bad == 0.0F && i != 4) continue;
            float c[8] = {20.0F, 30.0F, 40.0F, 35.0F, 10.0F, 0.5F, 0.5F, 0.5F};
            c[i] = bad;
            glRecorder().counts.clear();
            painted.addDropLine(c, c + 2, c[4], c[5], c[6]);
            painted.addHorizontalWave(c[0], c[4], c[5], c[6], c[7], c[6]);
            water.addDrop(c, c[4], c[5], c[6]);
            water.addDropLine(c, c + 2, c[4], c[5], c[6]);
            water.addHorizontalWave(c[0], c[4], c[5], c[6], c[7], c[6]);
            pond.addDrop(c, c[4], c[5]);
            pond.addDropLine(c, c + 2, c[4], c[5]);
            EXPECT_EQ(glRecorder().counts["glDrawArrays"], 7 - readers[i]) << bad << " as argument " << i;
        }
    }
    EXPECT_EQ(log.take().size(), 17U) << "each drop in the pond is logged";
}

} // namespace
