#include "bench/plain/CometMesh.h"
#include "effects/comet/CometRenderer.h"
#include "tests/support/CallsTest.h"
#include "tests/support/FailingMalloc.h"
#include "tests/support/TestPeer.h"

#include <cfloat>
#include <cstdlib>
#include <cstring>
#include <gmock/gmock.h>
#include <random>

namespace {

using testing::ElementsAre;

/// What launches draw from the random stream and compute, written down independently of the renderer, with each step in
/// the given precision.
struct Replay {
    Vector3 points[2][3];
    Vector3 curve[2][3];
    float touched[2]; ///< where the paths pass the touch

    static float range(float a, float b) { return a + static_cast<double>(b - a) * lrand48() / 2147483648.0; }

    void launch(int comet, const Vector3& touch) {
        auto& [start, middle, end] = points[comet];
        float distance = 0.0F;
        bool rejected = true;
        for (int attempt = 0; rejected && attempt < 10000; ++attempt) {
            const long side = lrand48() % 4;
            const float w = range(-1.0F, 1.0F);
            const float beyond = comet == 0 ? 1.1F : 0.7F;
            const Vector3 starts[] = {{-1.0F, w, 0.0F}, {1.0F, w, 0.0F}, {w, -beyond, 0.0F}, {w, beyond, 0.0F}};
            start = starts[side];
            distance = (touch - start).length();
            rejected = distance < 0.75F || distance > 1.5F || (comet == 1 && points[0][0].y * start.y > 0.0F);
        }
        Vector3 direction = touch - start;
        direction.normalize();
        const double k = comet == 0 ? range(0.4F, 0.5F) : range(0.7F, 0.8F);
        const float length = distance + k * distance;
        Vector3 side(-direction.y, direction.x, 0.0F);
        side.normalize();
        if (lrand48() % 2 == 1) side = side * -1.0F;
        middle = touch;
        end = start + direction * length + side * range(0.1F, 0.2F);
        const float s = touched[comet] = distance / length;
        const float divisor = static_cast<double>(s) * s - s;
        curve[comet][2] = ((touch - start) + (end - start) * -s) / divisor;
        curve[comet][1] = (end - start) - curve[comet][2];
        curve[comet][0] = start;
    }

    Vector3 at(int comet, float s, float s2) const {
        return curve[comet][2] * s2 + curve[comet][1] * s + curve[comet][0];
    }
};

/// A pixel in normalised device coordinates.
Vector3 touchAt(float x, float y, float screenWidth = 1080.0F, float screenHeight = 1920.0F) {
    return Vector3(2.0 * (x / screenWidth - 0.5), 2.0 * (0.5 - y / screenHeight), 0.0F);
}

class CometTest : public CallsTest {
  protected:
    CometTest() {
        comets.init();
        comets.setScreenSize(1080, 1920);
    }

    /// Launches towards the last touch and replays from the same state of the random stream.
    void expectReplayed(long seed, const Vector3& touch) {
        srand48(seed);
        comets.updateControlPoints();
        const long next = lrand48();
        srand48(seed);
        replay.launch(0, touch);
        replay.launch(1, touch);
        EXPECT_EQ(next, lrand48()) << "as many draws";
        EXPECT_EQ(std::memcmp(TestPeer::mControlPoints(comets), replay.points, sizeof replay.points), 0);
        EXPECT_EQ(std::memcmp(TestPeer::mCurveCoefficients(comets), replay.curve, sizeof replay.curve), 0);
    }

    CometRenderer comets;
    Replay replay;
};

/// Paths, meshes and heads, on screens of any size.
TEST_F(CometTest, FlightsAreReasonableAndFollowTheRandomStreamToTheBit) {
    std::mt19937 random(1);
    for (int seed = 0; seed < 3000 && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        const float screenWidth = 1 + random() % 3000;
        const float screenHeight = 1 + random() % 3000;
        const float x = random() % 1000 * 0.001F * screenWidth;
        const float y = random() % 1000 * 0.001F * screenHeight;
        comets.setScreenSize(screenWidth, screenHeight);
        comets.push(x, y, 1);
        expectReplayed(seed, touchAt(x, y, screenWidth, screenHeight));
        EXPECT_LE(replay.points[0][0].y * replay.points[1][0].y, 0.0F) << "not both start in the same half";
        const double t = random() % 1001 * 0.001;
        comets.render(t);
        const float heads[2][2] = {{comets.getCore1X(), comets.getCore1Y()}, {comets.getCore2X(), comets.getCore2Y()}};
        for (int comet = 0; comet < 2; ++comet) {
            const auto& [start, touch, end] = replay.points[comet];
            EXPECT_NEAR((start - touch).length(), 1.125, 0.375);
            const float s = replay.touched[comet];
            EXPECT_LE((replay.at(comet, s, s * s) - touch).length(), 1e-6) << "the path passes the touch";

            const Vector3 head = replay.at(comet, t, t * t);
            EXPECT_EQ(heads[comet][0], static_cast<float>(screenWidth * 0.5 + head.x * (screenWidth * 0.5)));
            EXPECT_EQ(heads[comet][1], static_cast<float>((1.0 - (0.5 + head.y * 0.5)) * screenHeight));
            for (const int mesh : {2 * comet, 2 * comet + 1}) {
                float expected[3 * 303];
                tidalume::bench::plain::computeTailMesh(replay.curve[comet], screenWidth, screenHeight, t,
                                                        mesh % 2 ? 0.15F : 0.25F, expected);
                EXPECT_EQ(std::memcmp(comets.getVertices(mesh), expected, sizeof expected), 0) << "mesh " << mesh;
            }
        }
    }
}

/// The last candidate of each comet's 10,000 is kept.
TEST_F(CometTest, TheSearchForAStartEnds) {
    expectReplayed(0, {FLT_MAX, FLT_MAX, 0.0F}); // never touched
    comets.push(1e6F, 100.0F, 0);
    expectReplayed(0, touchAt(1e6F, 100.0F));
}

TEST_F(CometTest, MeshTopology) {
    const unsigned short* indices = TestPeer::mIndices(comets);
    for (int quad = 0; quad < 200; ++quad, indices += 6) {
        const int a = quad + quad / 100; // a row has a vertex more than quads
        const int b = a + 101;
        EXPECT_THAT(std::vector<int>(indices, indices + 6), ElementsAre(b, a + 1, a, b, b + 1, a + 1));
    }
}

/// A launch takes the last touch. The point draws rely on array 0, which the tails have enabled: both programs read
/// their vertices from it.
TEST_F(CometTest, Frame) {
    EXPECT_EQ(TestPeer::mCoreOfCometVertices(comets), 0);
    EXPECT_EQ(TestPeer::mTailOfCometVertices(comets), 0);
    expectCalls([&] { comets.render(0.5); }, ""); // before the first push
    comets.push(10.0F, 20.0F, 0);
    comets.push(500.0F, 900.0F, 0);
    const std::vector<const char*> progress = {"t0", "fillMode", "radius", "POINTS"};
    expectCalls([&] { comets.render(0.1); },
                "t0 0.1; t0 0.0618034; fillMode 1; radius 43.0634; glDrawArrays POINTS 0 2", progress);
    const auto& [start, touch, end] = TestPeer::mControlPoints(comets)[1];
    EXPECT_EQ((touch - touchAt(500.0F, 900.0F)).length(), 0.0F);
    const Vector3 flightsEnd = end;
    expectCalls([&] { comets.render(0.8); }, R"(t0 0.8; t0 0.117557; fillMode 1; radius 18.4709
        glDrawArrays POINTS 0 2; fillMode 0; t0 0.4; radius 18; glDrawArrays POINTS 0 2)",
                progress);
    const std::string beforeTails = R"(
        glDisable DEPTH_TEST; glBlendFuncSeparate SRC_ALPHA ONE_MINUS_SRC_ALPHA 0x1 ONE_MINUS_SRC_ALPHA; glEnable BLEND
        glUseProgram 2; Pointer texcoords 2 0; [glVertexAttribPointer]; Enable texcoords; [glEnableVertexAttribArray]
        t0 0.9; [glUniform1f mTailOfCometT0]; )";
    const std::string tail = R"(Pointer vertices 3 0; [glVertexAttribPointer]; Enable vertices
        [glEnableVertexAttribArray]; glDrawElements TRIANGLES 1200 UNSIGNED_SHORT; [glDrawElements]; )";
    const std::string cores = R"(glUseProgram 1; t0 0.0618035; [glUniform1f mCoreOfCometT0]; fillMode 1
        [glUniform1f mCoreOfCometFillmode]; radius 10.0037; [glUniform1f mCoreOfCometRadius]; )";
    const std::string rings = "glUseProgram 1; fillMode 0; t0 0.2; radius ";
    const std::string points = "; Pointer vertices 2 8; glDrawArrays POINTS 0 2; ";
    expectCalls([&] { comets.render(0.9); }, beforeTails + tail + tail + tail + tail + cores + points + rings + "54" +
                                                 points + rings + "19.0588" + points +
                                                 "glUseProgram 0; glDisable BLEND");
    comets.push(1.0F, 1.0F, -1);
    expectCalls([&] { comets.render(0.5); }, ""); // hidden
    comets.push(1.0F, 1.0F, 2);
    comets.GLContextDestroyed();
    context.recreate();
    comets.init();
    comets.render(0.9);
    EXPECT_EQ((end - flightsEnd).length(), 0.0F) << "the flight goes on, also in a new context";
}

TEST_F(CometTest, DrawsNothingWithoutMeshes) {
    for (int refused = 0; refused < 6; ++refused) {
        CometRenderer other;
        other.push(40.0F, 30.0F, 0);
        failingMalloc(refused);
        other.init();
        EXPECT_TRUE(failingMalloc(-1)) << refused;
        expectCalls([&] { (other.render(0.5), other.updateMesh(0.5F)); }, "");
    }
}

} // namespace
