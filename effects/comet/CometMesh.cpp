#include "effects/comet/CometMesh.h"

#include "effects/comet/CometPath.h"

#include <cmath>
#include <initializer_list>

namespace tidalume {
namespace {

/// The rounded front takes the first tenth of the columns.
constexpr float capLength = 0.1F;
constexpr int capColumn = static_cast<int>(CometMesh::columns * capLength);

constexpr int middleRow = CometMesh::rows / 2;

/// Where on the path the tip lies, as a share of the progress: a little before the base of the front, which is at 0.9.
constexpr float tipShare = 0.92F;

/// Of half the screen's width, at the head.
constexpr float halfWidthAtHead = 0.025F;

float along(int column) {
    return static_cast<float>(column) / CometMesh::columns;
}

float across(int row) {
    return static_cast<float>(row) / CometMesh::rows;
}

/// The columns of the tail's body from the base of its front on, one array per quantity: compilers compute several
/// columns at once then.
struct Sections {
    static constexpr int count = CometMesh::columns + 1 - capColumn;
    float x[count], y[count];             ///< points on the path
    float toEdgeX[count], toEdgeY[count]; ///< from there to the upper edge
};

Sections computeSections(const Vector3 (&path)[3], float t, float spread, float width, float height) {
    Sections sections; // NOLINT(cppcoreguidelines-pro-type-member-init): written whole below
    const auto [constant, linear, quadratic] = path;
    float x[Sections::count + 1], y[Sections::count + 1]; // from the column before the body on
    for (int i = 0; i <= Sections::count; ++i) {
        const float s = (1.0F - along(capColumn - 1 + i)) * t;
        x[i] = quadratic.x * (s * s) + linear.x * s + constant.x;
        y[i] = quadratic.y * (s * s) + linear.y * s + constant.y;
    }
    for (int i = 0; i < Sections::count; ++i) {
        const float normalX = -(y[i + 1] - y[i]);
        const float normalY = x[i + 1] - x[i];
        const float length = std::sqrt(normalX * normalX + normalY * normalY);
        const float scale = length == 0.0F ? 1.0F : 1.0F / length; // a path that stands still has no normal
        const float halfWidth = halfWidthAtHead + along(capColumn + i) * (spread * t);
        sections.x[i] = x[i + 1];
        sections.y[i] = y[i + 1];
        sections.toEdgeX[i] = halfWidth * (scale * normalX);
        sections.toEdgeY[i] = halfWidth * (width * (scale * normalY) / height);
    }
    return sections;
}

template <typename Visit>
void forEachVertex(Visit visit) {
    for (int row = 0; row <= CometMesh::rows; ++row) {
        for (int column = 0; column <= CometMesh::columns; ++column)
            visit(row, column);
    }
}

} // namespace

void computeCometTail(const Vector3 (&path)[3], float t, float spread, float width, float height, float* vertices) {
    const Sections sections = computeSections(path, t, spread, width, height);
    const Vector3 tip = pointOnPath(path, tipShare * t);
    for (int row = 0; row <= CometMesh::rows; ++row) {
        const auto side = static_cast<float>(row - middleRow); // of the path: lower edge, middle, upper edge
        const auto edgeX = [&](int i, float side) { return sections.x[i] + side * sections.toEdgeX[i]; };
        const auto edgeY = [&](int i, float side) { return sections.y[i] + side * sections.toEdgeY[i]; };
        float* vertex = vertices + 3 * row * (CometMesh::columns + 1);
        const auto store = [&](float x, float y) {
            *vertex++ = x;
            *vertex++ = 0.0F; // kept: x-0-y
            *vertex++ = y;
        };

        // The front folds the row from its base to the tip, on a curve that ends at the base's other edge.
        const Vector3 edge(edgeX(0, side), edgeY(0, side), 0.0F);
        const Vector3 otherEdge(edgeX(0, -side), edgeY(0, -side), 0.0F);
        const Vector3 quadratic = ((tip - edge) + (otherEdge - edge) * -0.5F) / -0.25F;
        const Vector3 cap[3] = {edge, (otherEdge - edge) - quadratic, quadratic};
        for (int column = 0; column < capColumn; ++column) {
            const Vector3 point = pointOnPath(cap, static_cast<float>(0.5 + along(column) * (-0.5 / capLength)));
            store(point.x, point.y);
        }
        for (int i = 0; i < Sections::count; ++i)
            store(edgeX(i, side), edgeY(i, side));
    }
}

void fillCometTexCoords(float* texCoords) {
    forEachVertex([&](int row, int column) {
        *texCoords++ = along(column);
        *texCoords++ = 1.0F - across(row);
    });
}

void fillCometIndices(unsigned short* indices) {
    for (int row = 0; row < CometMesh::rows; ++row) {
        for (int column = 0; column < CometMesh::columns; ++column) {
            const int a = row * (CometMesh::columns + 1) + column;
            const int b = a + CometMesh::columns + 1;
            for (const int index : {b, a + 1, a, b, b + 1, a + 1})
                *indices++ = static_cast<unsigned short>(index);
        }
    }
}

void fillCometGrid(float* vertices) {
    forEachVertex([&](int row, int column) {
        *vertices++ = along(column);
        *vertices++ = 0.0F;
        *vertices++ = across(row);
    });
}

} // namespace tidalume
