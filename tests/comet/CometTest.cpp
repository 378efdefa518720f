#include "effects/comet/CometPath.h"
#include "effects/comet/CometRenderer.h"
#include "headless/Pixels.h"
#include "reference/CometLaunch.h"
#include "reference/CometMesh.h"
#include "testing/TestPeer.h"
#include "tests/support/FailingMalloc.h"
#include "tests/support/GLTest.h"

#include <cfloat>
#include <iterator>
#include <random>

namespace {

namespace plain = tidalume::reference::plain;

class CometTest : public GLTest {
  protected:
    CometTest() { comets.init(); }

    /// Launches towards the last touch, and again in plain form from the same state of the random stream.
    void expectLaunch(long seed, const Vector3& touch) {
        srand48(seed);
        comets.updateControlPoints();
        const long next = lrand48();
        srand48(seed);
        launches[0] = plain::drawLaunch(touch, nullptr);
        launches[1] = plain::drawLaunch(touch, &launches[0]);
        EXPECT_EQ(next, lrand48()) << "as many draws";
        for (const int comet : {0, 1}) {
            const auto& [start, beyond, aside] = launches[comet];
            paths[comet] = tidalume::cometPath(start, touch, beyond, aside);
            EXPECT_TRUE(same(&TestPeer::mControlPoints(comets)[comet][0].x, &paths[comet].controlPoints[0].x, 9));
        }
    }

    CometRenderer comets;
    plain::CometLaunch launches[2];
    tidalume::CometPath paths[2];
};

/// Paths, meshes and heads, on screens of any size. A flight goes on in a new context.
TEST_F(CometTest, FlightsAreReasonableAndFollowTheRandomStreamToTheBit) {
    expectLaunch(0, {FLT_MAX, FLT_MAX, 0.0F}); // never touched: the last of each comet's 10,000 candidates is kept
    std::mt19937 random(1);
    for (int seed = 0; seed < 300 && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        const float width = 1 + random() % 3000;
        const float height = 1 + random() % 3000;
        const float x = random() % 1000 * 0.001F * width;
        const float y = random() % 1000 * 0.001F * height;
        comets.setScreenSize(width, height);
        comets.push(x, y, 1);
        expectLaunch(seed, Vector3(2.0 * (x / width - 0.5), 2.0 * (0.5 - y / height), 0.0F));
        const auto& launched = TestPeer::mControlPoints(comets);
        if (seed % 100 == 0) {
            comets.GLContextDestroyed();
            context.recreate();
            comets.init();
        }
        const double t = random() % 1001 * 0.001;
        comets.render(t);
        const float heads[2][2] = {{comets.getCore1X(), comets.getCore1Y()}, {comets.getCore2X(), comets.getCore2Y()}};
        for (int comet = 0; comet < 2; ++comet) {
            const auto& [start, touch, end] = launched[comet];
            const auto& [from, beyond, aside] = launches[comet];
            const auto& path = paths[comet].coefficients;
            const Vector3 way = touch - start, behind = end - touch;
            const float length = Vector3(way).length();
            EXPECT_NEAR((behind.x * way.x + behind.y * way.y) / length, beyond * length, 1e-6);
            EXPECT_NEAR((behind.y * way.x - behind.x * way.y) / length, aside, 1e-6);
            for (const auto& [s, passed] : {std::pair(0.0F, start), {1 / (1 + beyond), touch}, {1.0F, end}})
                EXPECT_LE((tidalume::pointOnPath(path, s) - passed).length(), 2e-6) << s;

            const Vector3 head = tidalume::pointOnPath(path, t, t * t);
            EXPECT_EQ(heads[comet][0], static_cast<float>(width * 0.5 + head.x * (width * 0.5)));
            EXPECT_EQ(heads[comet][1], static_cast<float>((1.0 - (0.5 + head.y * 0.5)) * height));
            for (const int mesh : {2 * comet, 2 * comet + 1}) {
                float expected[3 * 303];
                plain::computeTailMesh(path, width, height, t, mesh % 2 ? 0.15F : 0.25F, expected);
                EXPECT_TRUE(same(comets.getVertices(mesh), expected, std::size(expected)));
            }
        }
    }
}

TEST_F(CometTest, Frame) {
    EXPECT_CALLS(comets.setScreenSize(1080, 1920), "");
    EXPECT_CALLS(comets.render(0.5), ""); // before the first push
    EXPECT_CALLS(comets.push(500.0F, 900.0F, 0), "");
    comets.render(0.1);
    const Vector3 end = TestPeer::mControlPoints(comets)[0][2];
    for (const auto& [t, circles] : {std::pair(0.1, 1), {0.75, 1}, {0.8, 2}, {0.85, 2}, {0.9, 3}}) {
        glRecorder().counts.clear();
        comets.render(t);
        EXPECT_EQ(glRecorder().counts["glDrawArrays"], circles) << "cores, and rings from 0.75 and 0.85 on, at " << t;
    }
    EXPECT_EQ(TestPeer::mControlPoints(comets)[0][2].x, end.x) << "launched once";
    comets.push(1.0F, 1.0F, -1);
    EXPECT_CALLS(comets.render(0.5), ""); // hidden
    comets.push(500.0F, 900.0F, 0);
    comets.render(0.5);
    EXPECT_NE(TestPeer::mControlPoints(comets)[0][2].x, end.x) << "launched again";
}

TEST_F(CometTest, DrawsCoresAndRingsWithoutTheTailsProgram) {
    comets.GLContextDestroyed();
    context.recreate();
    glRecorder().faults.cannotCompile = "texcoords";
    comets.init();
    comets.setScreenSize(width, height);
    comets.push(48, 30, CometRenderer::ACTION_LAUNCH);
    comets.render(0.8);
    log.take();
    const std::vector<float> pixels = tidalume::headless::readFramebuffer(width, height).rgba;
    EXPECT_THAT(pixels, testing::Contains(testing::Gt(0.3F))) << "a ring";
}

TEST_F(CometTest, ShowsNothingWithoutOneOfItsArrays) {
    for (int refused = 0; refused < 6; ++refused) {
        CometRenderer incomplete;
        incomplete.push(500.0F, 900.0F, 0);
        failingMalloc(refused);
        incomplete.init();
        EXPECT_TRUE(failingMalloc(-1)) << refused;
        EXPECT_CALLS(incomplete.render(0.5), "");
        incomplete.updateMesh(0.5F); // writes nowhere
    }
}

} // namespace
