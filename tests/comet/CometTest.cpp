#include "bench/plain/CometMesh.h"
#include "effects/comet/CometRenderer.h"
#include "tests/support/CallsTest.h"
#include "tests/support/FailingMalloc.h"
#include "tests/support/TestPeer.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <gmock/gmock.h>
#include <random>

namespace {

using testing::ElementsAre;

constexpr int columns = 100;

/// What a launch draws from the random stream and computes, written down independently of the renderer, with each
/// step in the given precision.
struct Replay {
    Vector3 points[2][3];
    Vector3 curve[2][3];
    float touched[2]; ///< where the paths pass the touch

    static float range(float a, float b) { return a + static_cast<double>(b - a) * lrand48() / 2147483648.0; }

    static Vector3 start(int comet) {
        const long side = lrand48() % 4;
        const float w = range(-1.0F, 1.0F);
        const float beyond = comet == 0 ? 1.1F : 0.7F;
        const Vector3 starts[4] = {{-1.0F, w, 0.0F}, {1.0F, w, 0.0F}, {w, -beyond, 0.0F}, {w, beyond, 0.0F}};
        return starts[side];
    }

    void launch(int comet, const Vector3& touch) {
        Vector3 begin;
        float distance = 0.0F;
        int attempt = 0;
        do {
            begin = start(comet);
            distance = (touch - begin).length();
        } while ((distance < 0.75F || distance > 1.5F || (comet == 1 && points[0][0].y * begin.y > 0.0F)) &&
                 ++attempt < 10000);
        Vector3 direction = touch - begin;
        direction.normalize();
        const double k = comet == 0 ? range(0.4F, 0.5F) : range(0.7F, 0.8F);
        const float length = distance + k * distance;
        Vector3 side(-direction.y, direction.x, 0.0F);
        side.normalize();
        if (lrand48() % 2 == 1) side = side * -1.0F;
        const Vector3 end = begin + direction * length + side * range(0.1F, 0.2F);
        const float s = touched[comet] = distance / length;
        const float divisor = static_cast<double>(s) * s - s;
        curve[comet][2] = ((touch - begin) + (end - begin) * -s) / divisor;
        curve[comet][1] = (end - begin) - curve[comet][2];
        curve[comet][0] = points[comet][0] = begin;
        points[comet][1] = touch;
        points[comet][2] = end;
    }

    Vector3 at(int comet, float s, float s2) const {
        return curve[comet][2] * s2 + curve[comet][1] * s + curve[comet][0];
    }
};

double distance(const Vector3& a, const Vector3& b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

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

    std::vector<float> heads() {
        return {comets.getCore1X(), comets.getCore1Y(), comets.getCore2X(), comets.getCore2Y()};
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
    std::uniform_real_distribution<float> share(0.0F, 1.0F);
    std::uniform_int_distribution<int> size(1, 3000);
    for (int seed = 0; seed < 3000 && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        const float screenWidth = size(random);
        const float screenHeight = size(random);
        const float x = share(random) * screenWidth;
        const float y = share(random) * screenHeight;
        comets.setScreenSize(screenWidth, screenHeight);
        comets.push(x, y, 1);
        expectReplayed(seed, touchAt(x, y, screenWidth, screenHeight));
        EXPECT_LE(replay.points[0][0].y * replay.points[1][0].y, 0.0F) << "not both start in the same half";
        for (int comet = 0; comet < 2; ++comet) {
            const auto& [start, touch, end] = replay.points[comet];
            EXPECT_NEAR(distance(start, touch), 1.125, 0.375);
            EXPECT_LE(distance(replay.at(comet, 1.0F, 1.0F), end), 1e-6);
            const float s = replay.touched[comet];
            EXPECT_LE(distance(replay.at(comet, s, s * s), touch), 1e-6) << "the path passes the touch";
        }

        const float tailT = seed < 2 ? seed : 1.2F * share(random);
        comets.updateMesh(tailT);
        for (int mesh = 0; mesh < 4; ++mesh) {
            float expected[3 * 303];
            tidalume::bench::plain::computeTailMesh(replay.curve[mesh / 2], screenWidth, screenHeight, tailT,
                                                    mesh % 2 ? 0.15F : 0.25F, expected);
            EXPECT_EQ(std::memcmp(comets.getVertices(mesh), expected, sizeof expected), 0) << "mesh " << mesh;
        }
        if (seed % 30 != 0) continue;
        const double t = share(random);
        comets.render(t);
        for (int comet = 0; comet < 2; ++comet) {
            const Vector3 head = replay.at(comet, t, t * t);
            EXPECT_EQ(heads()[2 * comet], static_cast<float>(screenWidth * 0.5 + head.x * (screenWidth * 0.5)));
            EXPECT_EQ(heads()[2 * comet + 1], static_cast<float>((1.0 - (0.5 + head.y * 0.5)) * screenHeight));
        }
    }
}

/// The last candidate of each comet's 10,000 is kept.
TEST_F(CometTest, TheSearchForAStartEnds) {
    expectReplayed(0, {FLT_MAX, FLT_MAX, 0.0F}); // never touched
    comets.push(1e6F, 100.0F, 0);
    expectReplayed(0, touchAt(1e6F, 100.0F));
}

/// A launch takes the last touch; a continued flight keeps its path, also in a new context.
TEST_F(CometTest, PushesLaunchAndContinue) {
    comets.push(100.0F, 100.0F, 2);
    comets.render(0.5);
    EXPECT_THAT(heads(), ElementsAre(540.0F, 960.0F, 540.0F, 960.0F)) << "continued before a launch";
    comets.push(300.0F, 300.0F, 0);
    comets.push(600.0F, 800.0F, 0);
    comets.render(0.1);
    const auto& points = TestPeer::mControlPoints(comets);
    EXPECT_EQ(distance(points[0][1], touchAt(600.0F, 800.0F)), 0.0);
    const Vector3 end = points[0][2];
    comets.render(0.2);
    comets.push(1.0F, 1.0F, 1);
    comets.GLContextDestroyed();
    context.recreate();
    comets.init();
    comets.render(0.9);
    EXPECT_EQ(distance(points[0][2], end), 0.0);
}

TEST_F(CometTest, MeshTopology) {
    const unsigned short* indices = TestPeer::mIndices(comets);
    for (int quad = 0; quad < 2 * columns; ++quad, indices += 6) {
        const int a = quad + quad / columns; // a row has a vertex more than quads
        const int b = a + columns + 1;
        EXPECT_THAT(std::vector<int>(indices, indices + 6), ElementsAre(b, a + 1, a, b, b + 1, a + 1));
    }
}

/// The point draws rely on array 0, which the tails have enabled: both programs read their vertices from it.
TEST_F(CometTest, Frame) {
    EXPECT_EQ(TestPeer::mCoreOfCometVertices(comets), 0);
    EXPECT_EQ(TestPeer::mTailOfCometVertices(comets), 0);
    const std::string points = "Pointer vertices 2 8; glDrawArrays POINTS 0 2; ";
    const auto frame = [&](const std::string& t, const std::string& alpha, const std::string& radius) {
        const std::string tail = R"(Pointer vertices 3 0; [glVertexAttribPointer]; Enable vertices
            [glEnableVertexAttribArray]; glDrawElements TRIANGLES 1200 UNSIGNED_SHORT; [glDrawElements]; )";
        return R"(glDisable DEPTH_TEST; glBlendFuncSeparate SRC_ALPHA ONE_MINUS_SRC_ALPHA 0x1 ONE_MINUS_SRC_ALPHA
            glEnable BLEND; glUseProgram 2; Pointer texcoords 2 0; [glVertexAttribPointer]; Enable texcoords
            [glEnableVertexAttribArray]; t0 )" +
               t + "; [glUniform1f mTailOfCometT0]; " + tail + tail + tail + tail + "glUseProgram 1; t0 " + alpha +
               "; [glUniform1f mCoreOfCometT0]; fillMode 1; [glUniform1f mCoreOfCometFillmode]; radius " + radius +
               "; [glUniform1f mCoreOfCometRadius]; " + points;
    };
    const auto rings = [&](const std::string& alpha, const std::string& radius) {
        return "glUseProgram 1; fillMode 0; t0 " + alpha + "; radius " + radius + "; " + points;
    };
    expectCalls([&] { comets.render(0.5); }, ""); // before the first push
    comets.push(500.0F, 900.0F, 0);
    const std::pair<double, std::string> frames[] = {
        {0.1, frame("0.1", "0.0618034", "43.0634")},
        {0.8, frame("0.8", "0.117557", "18.4709") + rings("0.4", "18")},
        {0.9, frame("0.9", "0.0618035", "10.0037") + rings("0.2", "54") + rings("0.2", "19.0588")}};
    for (const auto& frame : frames)
        expectCalls([&] { comets.render(frame.first); }, frame.second + "glUseProgram 0; glDisable BLEND");
    comets.push(500.0F, 900.0F, -1);
    expectCalls([&] { comets.render(0.5); }, ""); // hidden
}

TEST_F(CometTest, DrawsNothingWithoutMeshes) {
    for (int refused = 0; refused < 6; ++refused) {
        SCOPED_TRACE(refused);
        CometRenderer other;
        other.push(40.0F, 30.0F, 0);
        failingMalloc(refused);
        other.init();
        EXPECT_TRUE(failingMalloc(-1));
        expectCalls([&] { (other.render(0.5), other.updateMesh(0.5F)); }, "");
        other.init();
        EXPECT_FALSE(glRecorder().record([&] { other.render(0.5); }).empty());
    }
}

} // namespace
