#pragma once

#include "math/Vector3.h"

namespace tidalume {

/// The quadratic path of one comet, in normalised device coordinates: D + E s + F s^2, from its start at s = 0 to its
/// end at s = 1.
struct CometPath {
    Vector3 controlPoints[3]; ///< start, touched point, end
    Vector3 coefficients[3];  ///< D, E, F
};

/// The path from a start through a touched point to an end behind it.
/// @param start, touch  two different points, z = 0
/// @param beyond        how far behind the touched point the end lies, as a share of the way from the start to it
/// @param aside         how far the end lies to the left of that line; below 0 to the right
CometPath cometPath(const Vector3& start, const Vector3& touch, float beyond, float aside);

/// The point at s, whose square is given: callers round it in different precisions.
inline Vector3 pointOnPath(const Vector3 (&coefficients)[3], float s, float squareOfS) {
    return coefficients[2] * squareOfS + coefficients[1] * s + coefficients[0];
}

/// The point at s.
inline Vector3 pointOnPath(const Vector3 (&coefficients)[3], float s) {
    return pointOnPath(coefficients, s, s * s);
}

/// What a comet's path is drawn from.
struct PathRanges {
    float startHeight; ///< above or below the middle of the screen: beyond its edge for the first comet, within for the
                       ///< second
    float beyond[2];   ///< how far the path goes on behind the touch, as a share
};
inline constexpr PathRanges pathRanges[2] = {{1.1F, {0.4F, 0.5F}}, {0.7F, {0.7F, 0.8F}}}; // kept: start-height

inline constexpr float nearestStart = 0.75F, farthestStart = 1.5F; ///< to the touch
inline constexpr float asideRange[2] = {0.1F, 0.2F};

/// Near the middle of an edge only 2.7 % of the candidates are acceptable; far outside the screen none is.
inline constexpr int maxStartAttempts = 10000;

} // namespace tidalume
