#include "effects/comet/CometRenderer.h"

#include "foundation/Diagnostics.h"
#include "foundation/ProgramTable.h"
#include "shaders/CometRenderer.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <new>

namespace shaders = tidalume::shaders::cometRenderer;

GLuint CometRenderer::mProgramCoreOfComet = 0;
GLint CometRenderer::mCoreOfCometT0 = -1;
GLint CometRenderer::mCoreOfCometFillmode = -1;
GLint CometRenderer::mCoreOfCometRadius = -1;
GLint CometRenderer::mCoreOfCometVertices = -1;
GLuint CometRenderer::mProgramTailOfComet = 0;
GLint CometRenderer::mTailOfCometT0 = -1;
GLint CometRenderer::mTailOfCometVertices = -1;
GLint CometRenderer::mTailOfCometTexcoords = -1;
int CometRenderer::mInstanceCount = 0;

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

/// A column of the tail's body: what the two meshes of a comet share.
struct CometRenderer::CrossSection {
    float u;      ///< 0 at the head, 1 at the end of the tail
    float x, y;   ///< point on the path
    float nx, ny; ///< the path's normal; offsets along it are equally long in pixels in every direction
};

namespace {

constexpr int columnCount = 100;
constexpr int rowCount = 2;
constexpr int vertexCount = (rowCount + 1) * (columnCount + 1);
constexpr int triangleCount = 2 * rowCount * columnCount;

/// The rounded front takes the first tenth of the columns.
constexpr float capLength = 0.1F;
constexpr int capColumn = static_cast<int>(columnCount * capLength);

/// How much wider than at the head a comet's two tails are at the end of a flight, in half screen widths.
constexpr float tailSpreads[2] = {0.25F, 0.15F};

/// Near the middle of an edge only 2.7 % of the candidates are acceptable; far outside the screen none is.
constexpr int maxStartAttempts = 10000;

constexpr double pi = 3.141592;

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
    {0.85F, 0.85F, 0.7225F, 2.000000317891489, 0.3529411665708551}, // 0.3 / (1 - 0.85F), 0.3 / 0.85F
};

/// D + E s + F s^2
Vector3 evaluate(const Vector3 (&coefficients)[3], float s, float s2) {
    return coefficients[2] * s2 + coefficients[1] * s + coefficients[0];
}

Vector3 evaluate(const Vector3 (&coefficients)[3], float s) {
    return evaluate(coefficients, s, s * s);
}

float* newTexCoords() {
    auto* texCoords = new (std::nothrow) float[vertexCount * 2];
    float* next = texCoords;
    for (int row = 0; next && row <= rowCount; ++row) {
        for (int column = 0; column <= columnCount; ++column) {
            *next++ = static_cast<float>(column) / columnCount;
            *next++ = 1.0F - static_cast<float>(row) / rowCount;
        }
    }
    return texCoords;
}

unsigned short* newIndices() {
    auto* indices = new (std::nothrow) unsigned short[triangleCount * 3];
    unsigned short* next = indices;
    for (int row = 0; next && row < rowCount; ++row) {
        for (int column = 0; column < columnCount; ++column) {
            const int a = row * (columnCount + 1) + column;
            const int b = a + columnCount + 1;
            for (const int index : {b, a + 1, a, b, b + 1, a + 1})
                *next++ = static_cast<unsigned short>(index);
        }
    }
    return indices;
}

/// A flat grid, until the first frame's mesh takes its place.
float* newVertices() {
    auto* vertices = new (std::nothrow) float[vertexCount * 3];
    float* next = vertices;
    for (int row = 0; next && row <= rowCount; ++row) {
        for (int column = 0; column <= columnCount; ++column) {
            *next++ = static_cast<float>(column) / columnCount;
            *next++ = 0.0F;
            *next++ = static_cast<float>(row) / rowCount;
        }
    }
    return vertices;
}

} // namespace

CometRenderer::CometRenderer() {
    ++mInstanceCount;
}

CometRenderer::~CometRenderer() {
    if (--mInstanceCount == 0) tidalume::deletePrograms(mPrograms);
    delete[] mTexCoords;
    mTexCoords = nullptr;
    delete[] mIndices;
    mIndices = nullptr;
    for (float*& vertices : mVertices) {
        delete[] vertices;
        vertices = nullptr;
    }
}

void CometRenderer::init() {
    tidalume::buildPrograms(mPrograms);
    mColumns = columnCount;
    mRows = rowCount;
    mTriangleCount = triangleCount;
    mVertexCount = vertexCount;
    if (!mTexCoords) mTexCoords = newTexCoords();
    if (!mIndices) mIndices = newIndices();
    for (float*& vertices : mVertices) {
        if (!vertices) vertices = newVertices();
    }
}

bool CometRenderer::hasMeshes() const {
    return mTexCoords && mIndices &&
           std::all_of(std::begin(mVertices), std::end(mVertices), [](const float* vertices) { return vertices; });
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
    return static_cast<float>(a + static_cast<double>(b - a) * static_cast<double>(lrand48()) / 2147483648.0);
}

/// A point on the left or right edge, or beyond (first comet) or within (second) the upper or lower one.
Vector3 CometRenderer::randomStart(int comet) {
    const long side = lrand48() % 4;
    const float along = randomRange(-1.0F, 1.0F);
    const float height = comet == 0 ? 1.1F : 0.7F;
    switch (side) {
    case 0:
        return {-1.0F, along, 0.0F};
    case 1:
        return {1.0F, along, 0.0F};
    case 2:
        return {along, -height, 0.0F};
    default:
        return {along, height, 0.0F};
    }
}

bool CometRenderer::isStartRejected(int comet, const Vector3& start, float distance) const {
    const bool sameHalf = comet == 1 && mControlPoints[0][0].y * start.y > 0.0F;
    return distance < 0.75F || distance > 1.5F || sameHalf;
}

void CometRenderer::computeControlPoints(int comet) {
    const Vector3 touch(mTargetX, mTargetY, 0.0F);
    Vector3 start;
    Vector3 direction;
    float distance = 0.0F;
    int attempts = 0;
    do {
        start = randomStart(comet);
        direction = touch - start;
        distance = direction.length();
    } while (isStartRejected(comet, start, distance) && ++attempts < maxStartAttempts);
    direction.normalize();

    const float beyond = comet == 0 ? randomRange(0.4F, 0.5F) : randomRange(0.7F, 0.8F);
    const auto length = static_cast<float>(distance + static_cast<double>(beyond) * distance);
    Vector3 side(-direction.y, direction.x, 0.0F);
    side.normalize();
    if (lrand48() & 1) side = side * -1.0F;
    const Vector3 end = start + direction * length + side * randomRange(0.1F, 0.2F);

    // The path passes through the start at 0, the touch at s and the end at 1.
    const float s = distance / length;
    const auto divisor = static_cast<float>(static_cast<double>(s) * s - s);
    const Vector3 quadratic = ((touch - start) + (end - start) * -s) / divisor;
    const Vector3 linear = (end - start) - quadratic;

    const Vector3 points[3] = {start, touch, end};
    const Vector3 coefficients[3] = {start, linear, quadratic};
    std::copy(std::begin(points), std::end(points), mControlPoints[comet]);
    std::copy(std::begin(coefficients), std::end(coefficients), mCurveCoefficients[comet]);
}

void CometRenderer::updateControlPoints() {
    computeControlPoints(0);
    computeControlPoints(1);
}

void CometRenderer::updateMesh(float t) {
    if (!hasMeshes()) return;
    CrossSection sections[columnCount + 1];
    for (int comet = 0; comet < 2; ++comet) {
        computeCrossSections(comet, t, sections);
        computeTailMesh(2 * comet, t, tailSpreads[0], sections);
        computeTailMesh(2 * comet + 1, t, tailSpreads[1], sections);
    }
}

/// Fills the columns of the body, from the base of the cap on.
void CometRenderer::computeCrossSections(int comet, float t, CrossSection* sections) const {
    const auto pathPoint = [&](float u) { return evaluate(mCurveCoefficients[comet], (1.0F - u) * t); };
    const auto along = [&](int column) { return static_cast<float>(column) / static_cast<float>(mColumns); };

    Vector3 previous = pathPoint(along(capColumn - 1));
    for (int column = capColumn; column <= mColumns; ++column) {
        const float u = along(column);
        const Vector3 point = pathPoint(u);
        const Vector3 tangent = point - previous;
        Vector3 normal(-tangent.y, tangent.x, 0.0F);
        normal.normalize();
        sections[column] = {u, point.x, point.y, normal.x, mScreenWidth * normal.y / mScreenHeight};
        previous = point;
    }
}

void CometRenderer::computeTailMesh(int mesh, float t, float spread, const CrossSection* sections) {
    const Vector3 tip = evaluate(mCurveCoefficients[mesh / 2], 0.92F * t);
    for (int row = 0; row <= mRows; ++row) {
        float* vertices = mVertices[mesh] + 3 * row * (mColumns + 1);
        const auto store = [&](int column, float x, float y) {
            vertices[3 * column] = x;
            vertices[3 * column + 1] = 0.0F;
            vertices[3 * column + 2] = y;
        };
        const float across = static_cast<float>(row) / static_cast<float>(mRows);
        const auto offsetFromPath = [&](const CrossSection& section) {
            const float halfWidth = 0.025F + section.u * (spread * t);
            return static_cast<float>(halfWidth * (2.0 * across) - halfWidth);
        };

        for (int column = capColumn; column <= mColumns; ++column) {
            const CrossSection& section = sections[column];
            const float offset = offsetFromPath(section);
            store(column, section.x + offset * section.nx, section.y + offset * section.ny);
        }

        // The cap folds the row from the base to the tip, on a curve that ends at the base's other edge.
        const CrossSection& base = sections[capColumn];
        const float offset = offsetFromPath(base);
        const Vector3 edge(base.x + offset * base.nx, base.y + offset * base.ny, 0.0F);
        const Vector3 otherEdge(base.x - offset * base.nx, base.y - offset * base.ny, 0.0F);
        const Vector3 quadratic = ((tip - edge) + (otherEdge - edge) * -0.5F) / -0.25F;
        const Vector3 cap[3] = {edge, (otherEdge - edge) - quadratic, quadratic};
        for (int column = 0; column < capColumn; ++column) {
            const float u = static_cast<float>(column) / static_cast<float>(mColumns);
            const Vector3 point = evaluate(cap, static_cast<float>(0.5 + u * (-0.5 / capLength)));
            store(column, point.x, point.y);
        }
    }
}

void CometRenderer::render(double t) {
    if (mTouchState < 0 || !hasMeshes()) return;
    if (mTouchState == 0) {
        updateControlPoints();
        mTouchState = 1;
    }
    updateMesh(static_cast<float>(t));

    glDisable(GL_DEPTH_TEST);
    glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    glEnable(GL_BLEND);

    drawTails(static_cast<float>(t));
    drawCores(t);
    for (int comet = 0; comet < 2; ++comet)
        mCores[comet] = evaluate(mCurveCoefficients[comet], static_cast<float>(t), static_cast<float>(t * t));
    drawRings(t);

    glUseProgram(0);
    glDisable(GL_BLEND);
}

void CometRenderer::drawTails(float t) {
    glUseProgram(mProgramTailOfComet);
    glVertexAttribPointer(mTailOfCometTexcoords, 2, GL_FLOAT, GL_FALSE, 0, mTexCoords);
    checkGLError("glVertexAttribPointer");
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
    glUniform1f(mCoreOfCometT0, static_cast<float>(std::sin(t * pi) * 0.2));
    checkGLError("glUniform1f mCoreOfCometT0");
    glUniform1i(mCoreOfCometFillmode, discMode);
    checkGLError("glUniform1f mCoreOfCometFillmode");
    glUniform1f(mCoreOfCometRadius, static_cast<float>(0.04 * mScreenWidth * (1.0 - std::sqrt(t) * (t * t))));
    checkGLError("glUniform1f mCoreOfCometRadius");
    const auto s = static_cast<float>(0.9 * t);
    drawPoints(s, s * s);
}

void CometRenderer::drawRings(double t) {
    for (const Rings& rings : ringPairs) {
        if (!(t > rings.start)) continue;
        glUseProgram(mProgramCoreOfComet);
        glUniform1i(mCoreOfCometFillmode, ringMode);
        glUniform1f(mCoreOfCometT0, static_cast<float>(rings.fade * (1.0 - t)));
        glUniform1f(mCoreOfCometRadius, static_cast<float>(mScreenWidth * rings.expansion * (t - rings.start)));
        drawPoints(rings.s, rings.s2);
    }
}

/// Draws a sprite on each path. The tails' arrays stay enabled for the next frame; a driver that does not go by the
/// locations in the text may have placed this program's array elsewhere.
void CometRenderer::drawPoints(float s, float s2) {
    const Vector3 first = evaluate(mCurveCoefficients[0], s, s2);
    const Vector3 second = evaluate(mCurveCoefficients[1], s, s2);
    const float points[4] = {first.x, first.y, second.x, second.y};
    glVertexAttribPointer(mCoreOfCometVertices, 2, GL_FLOAT, GL_FALSE, 2 * sizeof(float), points);
    glEnableVertexAttribArray(mCoreOfCometVertices);
    glDrawArrays(GL_POINTS, 0, 2);
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

void CometRenderer::GLContextDestroyed() {
    tidalume::forgetPrograms(mPrograms);
}

CometRenderer* createCometRenderer() {
    return new CometRenderer();
}
