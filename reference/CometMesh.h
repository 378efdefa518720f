#pragma once

#include "math/Vector3.h"

namespace tidalume::reference::plain {

/// The tail mesh of a comet in the form of its formulas: every vertex computes the path and its normal anew.
/// @param path      D, E, F of the path D + E s + F s^2
/// @param vertices  303 vertices (x, 0, y), 3 rows of 101
inline void computeTailMesh(const Vector3 (&path)[3], float screenWidth, float screenHeight, float t, float spread,
                            float* vertices) {
    constexpr int columns = 100;
    constexpr int rows = 2;
    const auto evaluate = [](const Vector3(&c)[3], float s) { return c[2] * (s * s) + c[1] * s + c[0]; };

    const Vector3 tip = evaluate(path, 0.92F * t);
    Vector3 cap[3];
    for (int row = rows; row >= 0; --row) {
        for (int column = columns; column >= 0; --column) {
            const float u = static_cast<float>(column) / static_cast<float>(columns);
            const float v = static_cast<float>(row) / static_cast<float>(rows);
            const float before = static_cast<float>(column - 1) / static_cast<float>(columns);

            const float halfWidth = 0.025F + u * (spread * t);
            const auto offset = static_cast<float>(halfWidth * (2.0 * v) - halfWidth);
            const Vector3 onPath = evaluate(path, (1.0F - u) * t);
            const Vector3 tangent = onPath - evaluate(path, (1.0F - before) * t);
            Vector3 normal(-tangent.y, tangent.x, 0.0F);
            normal.normalize();
            const float normalY = screenWidth * normal.y / screenHeight;
            Vector3 place(onPath.x + offset * normal.x, onPath.y + offset * normalY, 0.0F);

            if (column == static_cast<int>(columns * 0.1F)) {
                const Vector3 mirrored(onPath.x - offset * normal.x, onPath.y - offset * normalY, 0.0F);
                cap[0] = place;
                cap[2] = ((tip - place) + (mirrored - place) * -0.5F) / -0.25F;
                cap[1] = (mirrored - place) - cap[2];
            }
            if (u < 0.1F) place = evaluate(cap, static_cast<float>(0.5 + u * -4.999999925494195));

            float* vertex = vertices + 3 * (row * (columns + 1) + column);
            vertex[0] = place.x;
            vertex[1] = 0.0F;
            vertex[2] = place.y;
        }
    }
}

} // namespace tidalume::reference::plain
