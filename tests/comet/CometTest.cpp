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

    Vector3 onPath(int comet, float s) { return curve(comet)[2] * (s * s) + curve(comet)[1] * s + curve(comet)[0]; }

    /// Paths through a random point of the screen.
    void launch(long seed) {
        srand48(seed);
        const auto x = static_cast<float>(drand48()) * screenWidth;
        const auto y = static_cast<float>(drand48()) * screenHeight;
        comets.push(x, y, 0);
        comets.updateControlPoints();
    }

    /// Place of a mesh's vertex in row and column.
    Vector3 vertex(int mesh, int row, int column) {
        const float* v = comets.getVertices(mesh) + 3 * (row * (columns + 1) + column);
        return {v[0], v[2], v[1]};
    }

    CometRenderer comets;
};

double uniform(double a, double b) {
    return a + (b - a) * static_cast<double>(lrand48()) / 2147483648.0;
}

double distance(const Vector3& a, const Vector3& b) {
    return std::hypot(static_cast<double>(a.x - b.x), static_cast<double>(a.y - b.y));
}

double scalarProduct(const Vector3& a, const Vector3& b) {
    return static_cast<double>(a.x) * static_cast<double>(b.x) + static_cast<double>(a.y) * static_cast<double>(b.y);
}

void expectNear(const Vector3& actual, const Vector3& expected, double tolerance) {
    EXPECT_LE(distance(actual, expected), tolerance) << actual.x << ", " << actual.y;
    EXPECT_EQ(actual.z, 0.0F);
}

/// The start point that the next two random numbers give.
Vector3 replayStart(int comet) {
    const long side = lrand48() % 4;
    const auto w = static_cast<float>(uniform(-1.0, 1.0));
    const float beyond = comet == 0 ? 1.1F : 0.7F;
    const Vector3 starts[4] = {{-1.0F, w, 0.0F}, {1.0F, w, 0.0F}, {w, -beyond, 0.0F}, {w, beyond, 0.0F}};
    return starts[side];
}

TEST_F(CometTest, PathsAreReasonableAndFollowTheRandomStream) {
    int candidates = 0;
    constexpr int launches = 3000;
    for (long seed = 0; seed < launches && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        launch(seed);
        const long next = lrand48();

        srand48(seed);
        drand48();
        drand48();
        for (int comet = 0; comet < 2; ++comet) {
            const Vector3 start = controlPoint(comet, 0);
            const Vector3 touch = controlPoint(comet, 1);
            const Vector3 end = controlPoint(comet, 2);
            const double length = distance(start, touch);
            EXPECT_GE(length, 0.75);
            EXPECT_LE(length, 1.5);
            if (comet == 1) {
                EXPECT_LE(controlPoint(0, 0).y * start.y, 0.0F) << "both start in the same half";
            }

            // The first acceptable candidate of the stream is the one that was taken.
            Vector3 candidate = replayStart(comet);
            for (++candidates; distance(candidate, start) > 1e-6; ++candidates) {
                const double d = distance(candidate, touch);
                const bool sameHalf = comet == 1 && controlPoint(0, 0).y * candidate.y > 0.0F;
                ASSERT_TRUE(d < 0.75 + 1e-6 || d > 1.5 - 1e-6 || sameHalf);
                candidate = replayStart(comet);
            }

            const double k = comet == 0 ? uniform(0.4, 0.5) : uniform(0.7, 0.8);
            const double sign = lrand48() % 2 == 1 ? -1.0 : 1.0;
            const double offset = sign * uniform(0.1, 0.2);
            const Vector3 direction = (touch - start) * static_cast<float>(1.0 / length);
            const Vector3 side(-direction.y, direction.x, 0.0F);
            EXPECT_NEAR(scalarProduct(end - start, direction), (1.0 + k) * length, 2e-6);
            EXPECT_NEAR(scalarProduct(end - start, side), offset, 2e-6);

            expectNear(onPath(comet, 0.0F), start, 0.0);
            expectNear(onPath(comet, static_cast<float>(1.0 / (1.0 + k))), touch, 1e-5);
            expectNear(onPath(comet, 1.0F), end, 1e-6);
        }
        EXPECT_EQ(lrand48(), next) << "other random numbers were drawn than those";
    }
    EXPECT_GT(candidates, 2 * launches + launches / 2) << "hardly any candidate was ever refused";
}

TEST_F(CometTest, TheSearchForAStartEnds) {
    constexpr float far = std::numeric_limits<float>::max();
    // Never touched, and touched where no start is near enough: the last candidate of each comet's 10,000 is kept.
    for (const float x : {0.0F, 1e6F, -far}) {
        SCOPED_TRACE(x);
        if (x != 0.0F) comets.push(x, 100.0F, 0);
        srand48(5);
        comets.updateControlPoints();
        const long next = lrand48();
        srand48(5);
        for (int comet = 0; comet < 2; ++comet) {
            Vector3 last;
            for (int i = 0; i < 10000; ++i)
                last = replayStart(comet);
            expectNear(controlPoint(comet, 0), last, 1e-6);
            for (int i = 0; i < 3; ++i)
                lrand48();
        }
        EXPECT_EQ(lrand48(), next);
        comets.render(0.9);
    }

    comets.push(std::numeric_limits<float>::quiet_NaN(), 100.0F, 0);
    srand48(5);
    comets.render(0.9);
    srand48(5);
    expectNear(controlPoint(0, 0), replayStart(0), 1e-6);
}

TEST_F(CometTest, TouchesAndHeadsConvertBetweenPixelsAndTheScreen) {
    comets.push(0.0F, 0.0F, -1);
    EXPECT_EQ(TestPeer::mTargetX(comets), -1.0F);
    EXPECT_EQ(TestPeer::mTargetY(comets), 1.0F);
    comets.push(810.0F, 1440.0F, -3);
    EXPECT_EQ(TestPeer::mTargetX(comets), 0.5F);
    EXPECT_EQ(TestPeer::mTargetY(comets), -0.5F);

    const auto heads = [&] {
        return std::vector<float>{comets.getCore1X(), comets.getCore1Y(), comets.getCore2X(), comets.getCore2Y()};
    };
    comets.render(0.5);
    EXPECT_THAT(heads(), ElementsAre(540.0F, 960.0F, 540.0F, 960.0F)) << "hidden";
    comets.push(100.0F, 100.0F, 2);
    comets.render(0.5);
    EXPECT_THAT(heads(), ElementsAre(540.0F, 960.0F, 540.0F, 960.0F)) << "continued before a launch";
    EXPECT_THAT(std::vector<float>(comets.getVertices(0), comets.getVertices(0) + 3 * vertexCount), Each(0.0F));

    launch(3);
    comets.push(300.0F, 300.0F, 0);
    comets.push(600.0F, 800.0F, 0);
    comets.render(0.1);
    for (int comet = 0; comet < 2; ++comet)
        expectNear(controlPoint(comet, 1), {120.0F / 1080.0F, 160.0F / 960.0F, 0.0F}, 1e-6);
    const Vector3 end = controlPoint(0, 2);
    comets.push(1.0F, 1.0F, 1);
    comets.render(0.8);
    expectNear(controlPoint(0, 2), end, 0.0);
    for (int comet = 0; comet < 2; ++comet) {
        const Vector3 head = onPath(comet, 0.8F);
        EXPECT_NEAR(heads()[2 * comet], (head.x + 1.0F) * 540.0F, 1e-3);
        EXPECT_NEAR(heads()[2 * comet + 1], (1.0F - head.y) * 960.0F, 1e-3);
    }
}

TEST_F(CometTest, MeshTopology) {
    const float* texCoords = comets.getTexCoords();
    for (int row = 0; row <= rows; ++row) {
        for (int column = 0; column <= columns; ++column) {
            const int i = row * (columns + 1) + column;
            EXPECT_EQ(texCoords[2 * i], static_cast<float>(column) / 100.0F);
            EXPECT_EQ(texCoords[2 * i + 1], 1.0F - static_cast<float>(row) / 2.0F);
            expectNear(vertex(3, row, column), {texCoords[2 * i], 1.0F - texCoords[2 * i + 1], 0.0F}, 0.0);
        }
    }

    // The triangles, all of one orientation, fill the flat grid without overlap.
    const unsigned short* indices = TestPeer::mIndices(comets);
    EXPECT_THAT(std::vector<int>(indices, indices + 6), ElementsAre(101, 1, 0, 101, 102, 1));
    double area = 0.0;
    for (int i = 0; i < indexCount; i += 3) {
        ASSERT_LT(*std::max_element(indices + i, indices + i + 3), vertexCount);
        const auto corner = [&](int n) {
            return vertex(0, indices[i + n] / (columns + 1), indices[i + n] % (columns + 1));
        };
        const Vector3 a = corner(1) - corner(0);
        const Vector3 b = corner(2) - corner(0);
        const auto twice =
            static_cast<double>(a.x) * static_cast<double>(b.y) - static_cast<double>(a.y) * static_cast<double>(b.x);
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
    std::vector<float> expected(3 * vertexCount);
    for (int frame = 0; frame < 1000; ++frame) {
        launch(frame);
        const int width = size(random);
        const int height = size(random);
        const float t = frame == 0 ? 0.0F : frame == 1 ? 1.0F : progress(random);
        comets.setScreenSize(width, height);
        comets.updateMesh(t);
        comets.setScreenSize(1080, 1920);
        for (int mesh = 0; mesh < 4; ++mesh) {
            tidalume::bench::plain::computeTailMesh(curve(mesh / 2), static_cast<float>(width),
                                                    static_cast<float>(height), t, spreads[mesh], expected.data());
            ASSERT_EQ(std::memcmp(comets.getVertices(mesh), expected.data(), expected.size() * sizeof(float)), 0)
                << "frame " << frame << ", mesh " << mesh;
        }
    }
}

TEST_F(CometTest, TailsLieOnThePathWidenAndCloseInTheTip) {
    const double farWidths[2] = {148.5, 94.5};
    for (long seed = 0; seed < 50; ++seed) {
        launch(seed);
        comets.updateMesh(0.0F);
        for (int row = 0; row <= rows; ++row)
            expectNear(vertex(2, row, 50), controlPoint(1, 0), 1e-6);

        comets.updateMesh(1.0F);
        for (int mesh = 0; mesh < 4; ++mesh) {
            const int comet = mesh / 2;
            for (int row = 0; row <= rows; ++row)
                expectNear(vertex(mesh, row, 0), onPath(comet, 0.92F), 2e-6);
            for (int column = columns / 10; column <= columns; ++column)
                expectNear(vertex(mesh, 1, column), onPath(comet, 1.0F - static_cast<float>(column) / 100.0F), 1e-6);
            for (const auto& [column, width] :
                 {std::pair{10, 13.5 + (farWidths[mesh % 2] - 13.5) * 0.1}, {columns, farWidths[mesh % 2]}}) {
                const Vector3 across = vertex(mesh, 2, column) - vertex(mesh, 0, column);
                EXPECT_NEAR(std::hypot(across.x * 540.0F, across.y * 960.0F), 2.0 * width, 1e-2);
            }
        }
    }
}

GLRecorder::Calls operator+(GLRecorder::Calls first, const GLRecorder::Calls& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

TEST_F(CometTest, Frame) {
    const std::string core = "glUseProgram " + std::to_string(TestPeer::mProgramCoreOfComet(comets));
    const std::string tail = "glUseProgram " + std::to_string(TestPeer::mProgramTailOfComet(comets));
    const GLRecorder::Calls points = {"glVertexAttribPointer vertices 2 FLOAT 0 8", "glDrawArrays POINTS 0 2"};
    const auto frame = [&](const std::string& t, const std::string& alpha, const std::string& size) {
        GLRecorder::Calls calls = {
            "glDisable DEPTH_TEST",
            "glBlendFuncSeparate SRC_ALPHA ONE_MINUS_SRC_ALPHA 0x1 ONE_MINUS_SRC_ALPHA",
            "glEnable BLEND",
            tail,
            "glVertexAttribPointer texcoords 2 FLOAT 0 0",
            "checkGLError glVertexAttribPointer",
            "glEnableVertexAttribArray texcoords",
            "checkGLError glEnableVertexAttribArray",
            "glUniform1f t0 " + t,
            "checkGLError glUniform1f mTailOfCometT0",
        };
        for (int mesh = 0; mesh < 4; ++mesh) {
            calls =
                calls + GLRecorder::Calls{
                            "glVertexAttribPointer vertices 3 FLOAT 0 0",   "checkGLError glVertexAttribPointer",
                            "glEnableVertexAttribArray vertices",           "checkGLError glEnableVertexAttribArray",
                            "glDrawElements TRIANGLES 1200 UNSIGNED_SHORT", "checkGLError glDrawElements",
                        };
        }
        return calls +
               GLRecorder::Calls{
                   core,
                   "glUniform1f t0 " + alpha,
                   "checkGLError glUniform1f mCoreOfCometT0",
                   "glUniform1i fillMode 1",
                   "checkGLError glUniform1f mCoreOfCometFillmode",
                   "glUniform1f radius " + size,
                   "checkGLError glUniform1f mCoreOfCometRadius",
               } +
               points;
    };
    const auto rings = [&](const std::string& alpha, const std::string& size) {
        return GLRecorder::Calls{core, "glUniform1i fillMode 0", "glUniform1f t0 " + alpha,
                                 "glUniform1f radius " + size} +
               points;
    };
    const GLRecorder::Calls end = {"glUseProgram 0", "glDisable BLEND"};
    const auto rendered = [&](double t) { return glRecorder().record([&] { comets.render(t); }); };

    EXPECT_THAT(rendered(0.5), IsEmpty()) << "before the first push";
    srand48(1);
    EXPECT_THAT(glRecorder().record([&] {
        comets.push(500.0F, 900.0F, 0);
        comets.updateControlPoints();
        comets.updateMesh(0.5F);
        comets.setScreenSize(1080, 1920);
    }),
                IsEmpty());
    EXPECT_EQ(rendered(0.0), frame("0", "0", "43.2") + end);
    EXPECT_EQ(rendered(0.1), frame("0.1", "0.0618034", "43.0634") + end);
    EXPECT_EQ(rendered(0.75), frame("0.75", "0.141421", "22.1556") + end);
    EXPECT_EQ(rendered(0.8), frame("0.8", "0.117557", "18.4709") + rings("0.4", "18") + end);
    EXPECT_EQ(rendered(static_cast<double>(0.85F)), frame("0.85", "0.0907982", "14.424") + rings("0.3", "36") + end);
    EXPECT_EQ(rendered(0.9), frame("0.9", "0.0618035", "10.0037") + rings("0.2", "54") + rings("0.2", "19.0588") + end);
    comets.push(500.0F, 900.0F, -1);
    EXPECT_THAT(rendered(0.5), IsEmpty()) << "hidden";
}

/// The point draws rely on the array that the tails have enabled.
TEST_F(CometTest, BothProgramsReadVerticesFromArray0) {
    EXPECT_EQ(TestPeer::mCoreOfCometVertices(comets), 0);
    EXPECT_EQ(TestPeer::mTailOfCometVertices(comets), 0);
    EXPECT_EQ(TestPeer::mTailOfCometTexcoords(comets), 1);
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

/// The application may give the comets a new context in mid-flight.
TEST_F(CometTest, AFlightOutlivesItsContext) {
    launch(2);
    comets.render(0.3);
    const Vector3 end = controlPoint(1, 2);
    comets.GLContextDestroyed();
    EXPECT_EQ(TestPeer::mProgramCoreOfComet(comets), 0U);
    EXPECT_EQ(TestPeer::mTailOfCometTexcoords(comets), -1);
    context.recreate();
    comets.init();
    comets.render(0.4);
    expectNear(controlPoint(1, 2), end, 0.0);
    EXPECT_NEAR(comets.getCore1X(), (onPath(0, 0.4F).x + 1.0F) * 540.0F, 1e-3);
}

} // namespace
