#include "effects/comet/CometRenderer.h"

#include "effects/comet/CometMesh.h"
#include "effects/comet/CometPath.h"
#include "foundation/Diagnostics.h"
#include "foundation/ProgramTable.h"
#include "shaders/CometRenderer.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <new>

namespace shaders = tidalume::shaders::cometRenderer;

const tidalume::ProgramTable CometRenderer::mPrograms = {
    "CometRenderer",
    "CometRenderer Shader Init : %lf ms",
    {
        {&mProgramCoreOfComet,
         "CometRendererProgramCoreOfComet",
         "createProgram mProgramCoreOfComet",
         shaders::coreVertex,
         shaders::coreFragment,
         {{&mCoreOfCometT0, "t0"}, {&mCoreOfCometFillmode, "fillMode"}, {&mCoreOfCometRadius, "radius"}},
         {{&mCoreOfCometVertices, "vertices"}}},
        {&mProgramTailOfComet,
         "CometRendererProgramTailOfComet",
         "createProgram mProgramTailOfComet",
         shaders::tailVertex,
         shaders::tailFragment,
         {{&mTailOfCometT0, "t0"}},
         {{&mTailOfCometVertices, "vertices"}, {&mTailOfCometTexcoords, "texcoords"}}},
    },
};

namespace {

/// How much wider than at the head a comet's two tails are at the end of a flight, in half screen widths.
constexpr float tailSpreads[2] = {0.25F, 0.15F};

constexpr double pi = 3.141592;       // kept: pi
constexpr double coreOpacity = 0.2;   ///< in the middle of a flight
constexpr double coreDiameter = 0.04; ///< of the screen's width, at launch
// kept: three-points
constexpr double coreShare = 0.9; ///< of the progress: the core lies at the base of the tail's rounded front

enum FillMode { ringMode = 0, discMode = 1 };

/// Rings that open around a fixed point of each path when the flight has passed it, and fade until its end.
struct Rings {
    double start;     ///< progress at which they appear
    float s, s2;      ///< the point's path parameter and its square
    double fade;      ///< alpha is fade (1 - t): 0.5 and 0.3 at the start
    double expansion; ///< diameter is expansion (t - start) in screen widths
};

constexpr Rings ringPairs[] = {
    {0.75, 0.75F, 0.5625F, 2.0, 0.3333333333333333},
    // kept: float-085
    {0.85F, 0.85F, 0.7225F, 2.000000317891489, 0.3529411665708551}, // 0.3 / (1 - 0.85F), 0.3 / 0.85F
};

/// Makes and fills an array where it is missing; it stays missing where there is no memory for it.
template <typename Element>
void makeArray(Element*& array, int count, void (*fill)(Element*)) {
    if (array) return;
    array = new (std::nothrow) Element[count];
    if (array) fill(array);
}

} // namespace

CometRenderer::CometRenderer() {
    ++mInstanceCount;
}

CometRenderer::~CometRenderer() {
    if (--mInstanceCount == 0) tidalume::deletePrograms(mPrograms);
    delete[] mTexCoords;
    delete[] mIndices;
    for (const float* vertices : mVertices)
        delete[] vertices;
}

void CometRenderer::init() {
    tidalume::buildPrograms(mPrograms);
    mColumns = tidalume::CometMesh::columns;
    mRows = tidalume::CometMesh::rows;
    mTriangleCount = tidalume::CometMesh::triangles;
    mVertexCount = tidalume::CometMesh::vertices;
    makeArray(mTexCoords, 2 * mVertexCount, tidalume::fillCometTexCoords);
    makeArray(mIndices, 3 * mTriangleCount, tidalume::fillCometIndices);
    for (float*& vertices : mVertices)
        makeArray(vertices, 3 * mVertexCount, tidalume::fillCometGrid);
}

bool CometRenderer::hasMeshes() const {
    return mTexCoords && mIndices && std::find(mVertices, mVertices + 4, nullptr) == mVertices + 4;
}

void CometRenderer::setScreenSize(int width, int height) {
    mScreenWidth = static_cast<float>(width);
    mScreenHeight = static_cast<float>(height);
}

void CometRenderer::push(float x, float y, int action) {
    const float nx = x / mScreenWidth;
    const float ny = y / mScreenHeight;
    mTargetX = static_cast<float>(2.0 * (nx - 0.5));
    mTargetY = static_cast<float>(2.0 * (0.5 - ny));
    mTouchState = action;
}

float CometRenderer::randomRange(float a, float b) {
    // kept: random
    return static_cast<float>(a + static_cast<double>(b - a) * static_cast<double>(lrand48()) / 2147483648.0);
}

/// A point on the left or right edge of the screen, or at a height above or below its middle.
Vector3 CometRenderer::randomStart(float height) {
    const long side = lrand48() % 4;
    const float along = randomRange(-1.0F, 1.0F);
    const Vector3 starts[4] = {
        {-1.0F, along, 0.0F}, {1.0F, along, 0.0F}, {along, -height, 0.0F}, {along, height, 0.0F}};
    return starts[side];
}

/// The second comet does not start in the half of the screen in which the first one starts.
bool CometRenderer::isStartRejected(int comet, const Vector3& start, const Vector3& touch) const {
    const float distance = (touch - start).length();
    const bool isSameHalf = comet == 1 && mControlPoints[0][0].y * start.y > 0.0F;
    return distance < tidalume::nearestStart || distance > tidalume::farthestStart || isSameHalf;
}

void CometRenderer::computeControlPoints(int comet) {
    const tidalume::PathRanges& ranges = tidalume::pathRanges[comet];
    const Vector3 touch(mTargetX, mTargetY, 0.0F);
    Vector3 start;
    int attempts = 0;
    do {
        start = randomStart(ranges.startHeight);
    } while (isStartRejected(comet, start, touch) && ++attempts < tidalume::maxStartAttempts);
    const float beyond = randomRange(ranges.beyond[0], ranges.beyond[1]);
    const float sign = lrand48() & 1 ? -1.0F : 1.0F;
    const float aside = sign * randomRange(tidalume::asideRange[0], tidalume::asideRange[1]);

    const tidalume::CometPath path = tidalume::cometPath(start, touch, beyond, aside);
    std::copy_n(path.controlPoints, 3, mControlPoints[comet]);
    std::copy_n(path.coefficients, 3, mCurveCoefficients[comet]);
}

void CometRenderer::updateControlPoints() {
    computeControlPoints(0);
    computeControlPoints(1);
}

void CometRenderer::computeTailMesh(int mesh, float t, float spread) {
    const Vector3(&path)[3] = mCurveCoefficients[mesh / 2];
    tidalume::computeCometTail(path, t, spread, mScreenWidth, mScreenHeight, mVertices[mesh]);
}

void CometRenderer::updateMesh(float t) {
    if (!hasMeshes()) return;
    for (int mesh = 0; mesh < 4; ++mesh)
        computeTailMesh(mesh, t, tailSpreads[mesh % 2]);
}

void CometRenderer::render(double t) {
    if (mTouchState < 0 || !hasMeshes()) return;
    if (mTouchState == 0) {
        updateControlPoints();
        mTouchState = 1;
    }
    updateMesh(static_cast<float>(t));

    // kept: state-taken, blend-first
    glDisable(GL_DEPTH_TEST);
    glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    glEnable(GL_BLEND);

    drawTails(static_cast<float>(t));
    drawCores(t);
    for (int comet = 0; comet < 2; ++comet)
        mCores[comet] =
            tidalume::pointOnPath(mCurveCoefficients[comet], static_cast<float>(t), static_cast<float>(t * t));
    drawRings(t);

    glUseProgram(0);
    glDisable(GL_BLEND);
}

void CometRenderer::drawTails(float t) {
    glUseProgram(mProgramTailOfComet);
    glVertexAttribPointer(mTailOfCometTexcoords, 2, GL_FLOAT, GL_FALSE, 0, mTexCoords);
    checkGLError("glVertexAttribPointer"); // kept: single-checks, bare-labels
    glEnableVertexAttribArray(mTailOfCometTexcoords);
    checkGLError("glEnableVertexAttribArray");
    glUniform1f(mTailOfCometT0, t);
    checkGLError("glUniform1f mTailOfCometT0");

    for (int mesh = 0; mesh < 4; ++mesh) {
        glVertexAttribPointer(mTailOfCometVertices, 3, GL_FLOAT, GL_FALSE, 0, getVertices(mesh));
        checkGLError("glVertexAttribPointer");
        glEnableVertexAttribArray(mTailOfCometVertices);
        checkGLError("glEnableVertexAttribArray");
        glDrawElements(GL_TRIANGLES, 3 * mTriangleCount, GL_UNSIGNED_SHORT, mIndices);
        checkGLError("glDrawElements");
    }
}

void CometRenderer::drawCores(double t) {
    glUseProgram(mProgramCoreOfComet);
    glUniform1f(mCoreOfCometT0, static_cast<float>(std::sin(t * pi) * coreOpacity));
    checkGLError("glUniform1f mCoreOfCometT0");
    glUniform1i(mCoreOfCometFillmode, discMode);
    checkGLError("glUniform1f mCoreOfCometFillmode"); // kept: fillmode
    glUniform1f(mCoreOfCometRadius, static_cast<float>(coreDiameter * mScreenWidth * (1.0 - std::sqrt(t) * (t * t))));
    checkGLError("glUniform1f mCoreOfCometRadius");
    const auto s = static_cast<float>(coreShare * t);
    drawPoints(s, s * s);
}

void CometRenderer::drawRings(double t) {
    for (const Rings& rings : ringPairs) {
        if (!(t > rings.start)) continue;
        glUseProgram(mProgramCoreOfComet); // kept: rebind
        glUniform1i(mCoreOfCometFillmode, ringMode);
        glUniform1f(mCoreOfCometT0, static_cast<float>(rings.fade * (1.0 - t)));
        glUniform1f(mCoreOfCometRadius, static_cast<float>(mScreenWidth * rings.expansion * (t - rings.start)));
        drawPoints(rings.s, rings.s2);
    }
}

/// Draws a sprite on each path. The tails' arrays stay enabled for the next frame; a driver that does not go by
/// the locations in the text may have placed this program's array elsewhere.
void CometRenderer::drawPoints(float s, float s2) {
    const Vector3 first = tidalume::pointOnPath(mCurveCoefficients[0], s, s2);
    const Vector3 second = tidalume::pointOnPath(mCurveCoefficients[1], s, s2);
    const float points[4] = {first.x, first.y, second.x, second.y};
    glVertexAttribPointer(mCoreOfCometVertices, 2, GL_FLOAT, GL_FALSE, 2 * sizeof(float), points);
    glEnableVertexAttribArray(mCoreOfCometVertices);
    glDrawArrays(GL_POINTS, 0, 2);
    // kept: comet-arrays
    const bool isTailArray =
        mCoreOfCometVertices == mTailOfCometVertices || mCoreOfCometVertices == mTailOfCometTexcoords;
    if (!isTailArray) glDisableVertexAttribArray(mCoreOfCometVertices);
}

float* CometRenderer::getVertices(int mesh) {
    return mVertices[mesh];
}

float* CometRenderer::getTexCoords() {
    return mTexCoords;
}

float CometRenderer::toPixelX(const Vector3& point) const {
    const double half = mScreenWidth * 0.5;
    return static_cast<float>(half + point.x * half);
}

float CometRenderer::toPixelY(const Vector3& point) const {
    return static_cast<float>((1.0 - (0.5 + point.y * 0.5)) * mScreenHeight);
}

float CometRenderer::getCore1X() {
    return toPixelX(mCores[0]);
}

float CometRenderer::getCore1Y() {
    return toPixelY(mCores[0]);
}

float CometRenderer::getCore2X() {
    return toPixelX(mCores[1]);
}

float CometRenderer::getCore2Y() {
    return toPixelY(mCores[1]);
}

Vector2 CometRenderer::getDrawnCore(int comet, float t) {
    const Vector3 point =
        tidalume::pointOnPath(mCurveCoefficients[comet == 0 ? 0 : 1], static_cast<float>(coreShare) * t);
    return {toPixelX(point), toPixelY(point)};
}

void CometRenderer::GLContextDestroyed() {
    tidalume::abandonPrograms(mPrograms);
}

CometRenderer* createCometRenderer() {
    return new CometRenderer();
}
