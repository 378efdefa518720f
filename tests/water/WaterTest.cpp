#include "effects/water/IntensityMapBuilder.h"
#include "effects/water/NormalMapBuilder.h"
#include "effects/water/ShallowWater.h"
#include "effects/water/ShallowWaterIterative.h"
#include "effects/water/ShallowWaterRenderer.h"
#include "testing/TestPeer.h"
#include "tests/pictures/Field.h"
#include "tests/support/GLTest.h"

#include <tuple>

namespace {

using namespace tidalume;
using namespace tidalume::pictures;
using testing::AllOf, testing::AnyOf, testing::Each, testing::ElementsAre, testing::Ge, testing::HasSubstr, testing::Le;

class WaterTest : public GLTest {
  protected:
    WaterTest() { makeReady(width, height, painted, normals, water, renderer, pond); }

    /// How many steps the pond runs.
    int steps(int updates) {
        glRecorder().counts.clear();
        while (updates-- > 0)
            pond.update();
        return glRecorder().counts["glDrawArrays"];
    }

    IntensityMapBuilder painted;
    NormalMapBuilder normals;
    ShallowWaterIterative water;
    ShallowWaterRenderer renderer;
    ShallowWater pond;
    float a[2] = {12.0F, 20.5F};
    float b[2] = {90.0F, 40.0F};
};

TEST_F(WaterTest, PondLogsDropsAndBuildsAnew) {
    pond.addDrop(a, 10, 0.5F);
    EXPECT_THAT(
        log.take(),
        ElementsAre("2 ShallowWater: addDrop center[12.000000,20.500000] radius[10.000000] strength[0.500000]"));
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
    for (const auto& [bad, text] : {std::pair(0.0F, "0"), {-1, "-1"}, {1000.1F, "1000.1"}, {NAN, "nan"}}) {
        EXPECT_FALSE(pond.setStepRate(bad));
        EXPECT_THAT(log.take(), ElementsAre(HasSubstr(text + std::string("]: must be above 0 and at most 1000"))));
    }
    EXPECT_GE(steps(50), 100) << "as before";
}

/// One percent on either side of the border of what is stable.
TEST_F(WaterTest, PondRefusesPhysicsThatAreNotStable) {
    EXPECT_TRUE(pond.setPhysics(-2.8125F, 0.0F, 0.5F, 0.125F));
    const std::string weights = "Term = 0.0224609 -1 0.494385";
    EXPECT_CALLS(runStep(pond), weights, "Term");
    const char* unstable =
        "6 ShallowWater: setPhysics waveSpeed[2.84375] viscosity[0] gridSpacing[0.5] timeStep[0.125]: "
        "(waveSpeed timeStep / gridSpacing)^2 must be at most 0.5";
    EXPECT_FALSE(pond.setPhysics(2.84375F, 0.0F, 0.5F, 0.125F));
    EXPECT_THAT(log.take(), ElementsAre(unstable));
    EXPECT_FALSE(pond.setPhysics(1.0F, -0.1F, 1.0F, 0.1F));
    EXPECT_THAT(log.take(), ElementsAre(HasSubstr("must be finite, viscosity at least 0")));
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
