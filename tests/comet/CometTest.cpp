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
            expectSame(&TestPeer::mControlPoints(comets)[comet][0].x, &paths[comet].controlPoints[0].x, 9);
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
                expectSame(comets.getVertices(mesh), expected, std::size(expected));
            }
        }
    }
}

TEST_F(CometTest, MeshTopology) {
    const unsigned short* indices = TestPeer::mIndices(comets);
    for (int quad = 0; quad < 200; ++quad, indices += 6) {
        const int a = quad + quad / 100; // a row has a vertex more than quads
        const int b = a + 101;
        EXPECT_THAT(std::vector<int>(indices, indices + 6), testing::ElementsAre(b, a + 1, a, b, b + 1, a + 1));
    }
    for (int i = 0; i < 303; ++i) {
        EXPECT_EQ(comets.getTexCoords()[2 * i], i % 101 / 100.0F);
        EXPECT_EQ(comets.getTexCoords()[2 * i + 1], 1 - i / 101 / 2.0F);
    }
}

TEST_F(CometTest, Frame) {
    EXPECT_CALLS(comets.setScreenSize(1080, 1920), "");
    EXPECT_CALLS(comets.render(0.5), ""); // before the first push
    EXPECT_CALLS(comets.push(500.0F, 900.0F, 0), "");
    comets.render(0.1);
    const Vector3 end = TestPeer::mControlPoints(comets)[0][2];
    const auto expectFrame = [&](double t, const std::string& cores, const std::string& rings) {
        EXPECT_CALLS(comets.render(t), cores + "; glDrawArrays POINTS 0 2;" + rings, "t0|radius|fillMode|glDrawArrays");
    };
    expectFrame(0.1, "t0 = 0.1; t0 = 0.0618034; fillMode = 1; radius = 43.0634", "");
    expectFrame(0.75, "t0 = 0.75; t0 = 0.141421; fillMode = 1; radius = 22.1556", "");
    expectFrame(0.8, "t0 = 0.8; t0 = 0.117557; fillMode = 1; radius = 18.4709",
                "fillMode = 0; t0 = 0.4; radius = 18; glDrawArrays POINTS 0 2");
    expectFrame(0.9, "t0 = 0.9; t0 = 0.0618035; fillMode = 1; radius = 10.0037",
                "fillMode = 0; t0 = 0.2; radius = 54; glDrawArrays POINTS 0 2;"
                "fillMode = 0; t0 = 0.2; radius = 19.0588; glDrawArrays POINTS 0 2");
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
    log.take();
    comets.setScreenSize(width, height);
    comets.push(48, 30, CometRenderer::ACTION_LAUNCH);
    EXPECT_CALLS(comets.render(0.8), R"(glDrawElements TRIANGLES 1200 UNSIGNED_SHORT
        glDrawElements TRIANGLES 1200 UNSIGNED_SHORT; glDrawElements TRIANGLES 1200 UNSIGNED_SHORT
        glDrawElements TRIANGLES 1200 UNSIGNED_SHORT; glDrawArrays POINTS 0 2; glDrawArrays POINTS 0 2)",
                 "glDraw");
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
