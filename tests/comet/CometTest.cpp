#include "bench/plain/CometMesh.h"
#include "effects/comet/CometRenderer.h"
#include "tests/support/FailingMalloc.h"
#include "tests/support/GLTest.h"
#include "tests/support/TestPeer.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <gmock/gmock.h>
#include <limits>
#include <random>

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr int columns = 100;
constexpr int rows = 2;
constexpr int vertexCount = 303;
constexpr int indexCount = 1200;

/// What a launch draws from the random stream and computes, written down independently of the renderer, with each
/// step in the given precision.
struct Replay {
    Vector3 points[2][3];
    Vector3 curve[2][3];
    int candidates = 0;

    static float range(float a, float b) { return a + static_cast<double>(b - a) * lrand48() / 2147483648.0; }

    Vector3 start(int comet) {
        ++candidates;
        const long side = lrand48() % 4;
        const float w = range(-1.0F, 1.0F);
        const float beyond = comet == 0 ? 1.1F : 0.7F;
        const Vector3 starts[4] = {{-1.0F, w, 0.0F}, {1.0F, w, 0.0F}, {w, -beyond, 0.0F}, {w, beyond, 0.0F}};
        return starts[side];
    }

    void launch(const Vector3& touch) {
        for (int comet = 0; comet < 2; ++comet) {
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
            const float s = distance / length;
            const float divisor = static_cast<double>(s) * s - s;
            curve[comet][2] = ((touch - begin) + (end - begin) * -s) / divisor;
            curve[comet][1] = (end - begin) - curve[comet][2];
            curve[comet][0] = points[comet][0] = begin;
            points[comet][1] = touch;
            points[comet][2] = end;
        }
    }

    Vector3 at(int comet, float s, float s2) const {
        return curve[comet][2] * s2 + curve[comet][1] * s + curve[comet][0];
    }
};

class CometTest : public GLTest {
  protected:
    static constexpr float screenWidth = 1080.0F;
    static constexpr float screenHeight = 1920.0F;

    CometTest() {
        comets.init();
        comets.setScreenSize(1080, 1920);
    }

    const Vector3& controlPoint(int comet, int point) { return TestPeer::mControlPoints(comets)[comet][point]; }
    const Vector3 (&curve(int comet))[3] { return TestPeer::mCurveCoefficients(comets)[comet]; }
    std::vector<float> heads() {
        return {comets.getCore1X(), comets.getCore1Y(), comets.getCore2X(), comets.getCore2Y()};
    }

    /// Launches and replays from the same state of the random stream.
    template <typename Seed>
    void expectReplayed(Replay& replay, Seed seed) {
        seed();
        comets.updateControlPoints();
        const long next = lrand48();
        seed();
        replay.launch({TestPeer::mTargetX(comets), TestPeer::mTargetY(comets), 0.0F});
        EXPECT_EQ(next, lrand48()) << "as many draws";
        EXPECT_EQ(std::memcmp(TestPeer::mControlPoints(comets), replay.points, sizeof replay.points), 0);
        EXPECT_EQ(std::memcmp(TestPeer::mCurveCoefficients(comets), replay.curve, sizeof replay.curve), 0);
    }

    CometRenderer comets;
};

double distance(const Vector3& a, const Vector3& b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

TEST_F(CometTest, PathsAreReasonableAndFollowTheRandomStreamToTheBit) {
    std::mt19937 random(1);
    std::uniform_real_distribution<float> share(0.0F, 1.0F);
    Replay replay;
    constexpr int launches = 3000;
    for (long seed = 0; seed < launches && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        const float x = share(random) * screenWidth;
        const float y = share(random) * screenHeight;
        comets.push(x, y, 1);
        EXPECT_EQ(TestPeer::mTargetX(comets), static_cast<float>(2.0 * (x / screenWidth - 0.5)));
        EXPECT_EQ(TestPeer::mTargetY(comets), static_cast<float>(2.0 * (0.5 - y / screenHeight)));
        expectReplayed(replay, [&] { srand48(seed); });
        EXPECT_LE(controlPoint(0, 0).y * controlPoint(1, 0).y, 0.0F) << "both start in the same half";
        for (int comet = 0; comet < 2; ++comet) {
            const double length = distance(controlPoint(comet, 0), controlPoint(comet, 1));
            EXPECT_GE(length, 0.75);
            EXPECT_LE(length, 1.5);
            EXPECT_LE(distance(replay.at(comet, 1.0F, 1.0F), controlPoint(comet, 2)), 1e-6);
            double closest = 1.0;
            for (float s = 0.5F; s < 0.75F; s += 0.001F)
                closest = std::min(closest, distance(replay.at(comet, s, s * s), controlPoint(comet, 1)));
            EXPECT_LE(closest, 2e-3) << "the path passes the touch";
        }
        if (seed % 30 != 0) continue;

        // Heads, cores and rings lie on the paths.
        const double t = 0.85 + 0.15 * share(random) + 1e-7;
        glRecorder().points.clear();
        comets.render(t);
        std::vector<float> expectedHeads;
        std::vector<float> expectedPoints;
        const float base = 0.9 * t;
        for (const auto& [s, s2] : {std::pair{base, base * base}, {0.75F, 0.5625F}, {0.85F, 0.7225F}}) {
            for (int comet = 0; comet < 2; ++comet)
                expectedPoints.insert(expectedPoints.end(), {replay.at(comet, s, s2).x, replay.at(comet, s, s2).y});
        }
        for (int comet = 0; comet < 2; ++comet) {
            const Vector3 head = replay.at(comet, t, t * t);
            expectedHeads.push_back(540.0 + head.x * 540.0);
            expectedHeads.push_back((1.0 - (0.5 + head.y * 0.5)) * 1920.0);
        }
        EXPECT_EQ(glRecorder().points, expectedPoints);
        EXPECT_EQ(heads(), expectedHeads);
    }
    EXPECT_GT(replay.candidates, 2 * launches + launches / 2) << "hardly any candidate was ever refused";

    // The first comet starts in neither half: its second random number is 0.
    unsigned short state[3] = {0xb02f, 0x5dc8, 0xd50c};
    comets.push(540.0F, 960.0F, 1);
    expectReplayed(replay, [&] { seed48(state); });
    EXPECT_EQ(controlPoint(0, 0).y, 0.0F);
}

TEST_F(CometTest, TheSearchForAStartEnds) {
    Replay replay;
    // Never touched, and touched where no start is near enough: the last candidate of each comet's 10,000 is kept.
    for (const float x : {0.0F, 1e6F, -std::numeric_limits<float>::max()}) {
        SCOPED_TRACE(x);
        if (x != 0.0F) comets.push(x, 100.0F, 0);
        replay.candidates = 0;
        expectReplayed(replay, [] { srand48(5); });
        EXPECT_EQ(replay.candidates, 20000);
        comets.render(0.9);
    }
    comets.push(std::numeric_limits<float>::quiet_NaN(), 100.0F, 0);
    srand48(5);
    comets.render(0.9);
    srand48(5);
    EXPECT_EQ(distance(controlPoint(0, 0), replay.start(0)), 0.0) << "comparisons let a NaN pass";
}

/// A launch takes the last touch; a continued flight keeps its path, also in a new context.
TEST_F(CometTest, PushesLaunchContinueAndHide) {
    comets.render(0.5);
    EXPECT_THAT(heads(), ElementsAre(540.0F, 960.0F, 540.0F, 960.0F)) << "hidden";
    comets.push(100.0F, 100.0F, 2);
    comets.render(0.5);
    EXPECT_THAT(heads(), ElementsAre(540.0F, 960.0F, 540.0F, 960.0F)) << "continued before a launch";
    EXPECT_THAT(std::vector<float>(comets.getVertices(0), comets.getVertices(0) + 3 * vertexCount), Each(0.0F));

    comets.push(300.0F, 300.0F, 0);
    comets.push(600.0F, 800.0F, 0);
    comets.render(0.1);
    for (int comet = 0; comet < 2; ++comet)
        EXPECT_LE(distance(controlPoint(comet, 1), {120.0F / 1080.0F, 160.0F / 960.0F, 0.0F}), 1e-6);
    const Vector3 end = controlPoint(0, 2);
    comets.push(1.0F, 1.0F, 1);
    comets.render(0.8);
    EXPECT_EQ(distance(controlPoint(0, 2), end), 0.0);

    comets.GLContextDestroyed();
    EXPECT_EQ(TestPeer::mProgramCoreOfComet(comets), 0U);
    EXPECT_EQ(TestPeer::mTailOfCometTexcoords(comets), -1);
    context.recreate();
    comets.init();
    comets.render(0.9);
    EXPECT_EQ(distance(controlPoint(0, 2), end), 0.0);
}

TEST_F(CometTest, MeshTopology) {
    const float* texCoords = comets.getTexCoords();
    const float* vertices = comets.getVertices(3);
    for (int i = 0; i < vertexCount; ++i) {
        EXPECT_EQ(texCoords[2 * i], static_cast<float>(i % (columns + 1)) / 100.0F);
        EXPECT_EQ(texCoords[2 * i + 1], 1.0F - static_cast<float>(i / (columns + 1)) / 2.0F);
        EXPECT_THAT(std::vector<float>(vertices + 3 * i, vertices + 3 * i + 3),
                    ElementsAre(texCoords[2 * i], 0.0F, 1.0F - texCoords[2 * i + 1]));
    }

    // The triangles, all of one orientation, fill the flat grid without overlap.
    const unsigned short* indices = TestPeer::mIndices(comets);
    EXPECT_THAT(std::vector<int>(indices, indices + 6), ElementsAre(101, 1, 0, 101, 102, 1));
    double area = 0.0;
    for (int i = 0; i < indexCount; i += 3) {
        ASSERT_LT(*std::max_element(indices + i, indices + i + 3), vertexCount);
        const float* corner[3] = {vertices + 3 * indices[i], vertices + 3 * indices[i + 1],
                                  vertices + 3 * indices[i + 2]};
        const auto along = [&](int n, int axis) { return corner[n][axis] - corner[0][axis]; };
        const double twice = along(1, 0) * along(2, 2) - along(1, 2) * along(2, 0);
        EXPECT_NEAR(twice, -0.005, 1e-6);
        area += 0.5 * twice;
    }
    EXPECT_NEAR(area, -1.0, 1e-4);
}

TEST_F(CometTest, MeshesAreThoseOfThePlainFormToTheBit) {
    std::mt19937 random(1);
    std::uniform_real_distribution<float> progress(0.0F, 1.2F);
    std::uniform_int_distribution<int> size(1, 3000);
    const float spreads[4] = {0.25F, 0.15F, 0.25F, 0.15F};
    float expected[3 * vertexCount];
    for (int frame = 0; frame < 1000; ++frame) {
        const float width = size(random);
        const float height = size(random);
        const float t = frame == 0 ? 0.0F : frame == 1 ? 1.0F : progress(random);
        comets.setScreenSize(static_cast<int>(width), static_cast<int>(height));
        comets.push(0.3F * width, 0.6F * height, 0);
        srand48(frame);
        comets.updateControlPoints();
        comets.updateMesh(t);
        for (int mesh = 0; mesh < 4; ++mesh) {
            tidalume::bench::plain::computeTailMesh(curve(mesh / 2), width, height, t, spreads[mesh], expected);
            ASSERT_EQ(std::memcmp(comets.getVertices(mesh), expected, sizeof expected), 0)
                << "frame " << frame << ", mesh " << mesh;
        }
    }
}

/// The point draws rely on array 0, which the tails have enabled: both programs read their vertices from it.
TEST_F(CometTest, Frame) {
    EXPECT_EQ(TestPeer::mCoreOfCometVertices(comets), 0);
    EXPECT_EQ(TestPeer::mTailOfCometVertices(comets), 0);
    EXPECT_EQ(TestPeer::mTailOfCometTexcoords(comets), 1);
    const std::string points = "glVertexAttribPointer vertices 2 FLOAT 0 8; glDrawArrays POINTS 0 2;";
    const auto frame = [&](const std::string& t, const std::string& alpha, const std::string& size) {
        const std::string tail = R"(glVertexAttribPointer vertices 3 FLOAT 0 0; checkGLError glVertexAttribPointer
            glEnableVertexAttribArray vertices; checkGLError glEnableVertexAttribArray
            glDrawElements TRIANGLES 1200 UNSIGNED_SHORT; checkGLError glDrawElements;)";
        return R"(glDisable DEPTH_TEST; glBlendFuncSeparate SRC_ALPHA ONE_MINUS_SRC_ALPHA 0x1 ONE_MINUS_SRC_ALPHA
            glEnable BLEND; glUseProgram 2; glVertexAttribPointer texcoords 2 FLOAT 0 0
            checkGLError glVertexAttribPointer; glEnableVertexAttribArray texcoords
            checkGLError glEnableVertexAttribArray; glUniform1f t0 )" +
               t + "; checkGLError glUniform1f mTailOfCometT0;" + tail + tail + tail + tail +
               "glUseProgram 1; glUniform1f t0 " + alpha + R"(; checkGLError glUniform1f mCoreOfCometT0
            glUniform1i fillMode 1; checkGLError glUniform1f mCoreOfCometFillmode; glUniform1f radius )" +
               size + "; checkGLError glUniform1f mCoreOfCometRadius;" + points;
    };
    const auto rings = [&](const std::string& alpha, const std::string& size) {
        return "glUseProgram 1; glUniform1i fillMode 0; glUniform1f t0 " + alpha + "; glUniform1f radius " + size +
               ";" + points;
    };
    const std::string end = "glUseProgram 0; glDisable BLEND";
    const auto rendered = [&](double t) { return glRecorder().sequence([&] { comets.render(t); }); };

    EXPECT_EQ(rendered(0.5), "") << "before the first push";
    srand48(1);
    EXPECT_THAT(glRecorder().record([&] {
        comets.push(500.0F, 900.0F, 0);
        comets.updateControlPoints();
        comets.updateMesh(0.5F);
        comets.setScreenSize(1080, 1920);
    }),
                IsEmpty());
    EXPECT_EQ(rendered(0.0), calls(frame("0", "0", "43.2") + end));
    EXPECT_EQ(rendered(0.1), calls(frame("0.1", "0.0618034", "43.0634") + end));
    EXPECT_EQ(rendered(0.75), calls(frame("0.75", "0.141421", "22.1556") + end));
    EXPECT_EQ(rendered(0.8), calls(frame("0.8", "0.117557", "18.4709") + rings("0.4", "18") + end));
    EXPECT_EQ(rendered(0.85F), calls(frame("0.85", "0.0907982", "14.424") + rings("0.3", "36") + end));
    EXPECT_EQ(rendered(0.9),
              calls(frame("0.9", "0.0618035", "10.0037") + rings("0.2", "54") + rings("0.2", "19.0588") + end));
    comets.push(500.0F, 900.0F, -1);
    EXPECT_EQ(rendered(0.5), "") << "hidden";
}

TEST_F(CometTest, DrawsNothingWithoutMeshes) {
    for (int refused = -1; refused < 6; ++refused) {
        SCOPED_TRACE("refused array " + std::to_string(refused));
        CometRenderer other;
        if (refused >= 0) {
            failingMalloc(refused);
            other.init();
            EXPECT_TRUE(failingMalloc(-1));
        }
        other.setScreenSize(width, height);
        other.push(40.0F, 30.0F, 0);
        srand48(9);
        EXPECT_THAT(glRecorder().record([&] { other.render(0.5); }), IsEmpty());
        other.updateMesh(0.5F);
        const long next = lrand48();
        srand48(9);
        EXPECT_EQ(lrand48(), next) << "the launch is still to come";

        other.init();
        EXPECT_FALSE(glRecorder().record([&] { other.render(0.5); }).empty());
    }
}

} // namespace
