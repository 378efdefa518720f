#pragma once

#include "reference/Values.h"

#include <vector>

namespace tidalume::reference::plain {

/// In pixels from the top-left corner; the rest of what a call takes for each.
struct Ball {
    float x, y, radius;
    float unused[3] = {};
};

/// The field of balls at a point.
inline double field(const std::vector<Ball>& balls, double x, double y) {
    double sum = 0.0;
    for (const Ball& ball : balls) {
        const double d = std::hypot(x - ball.x, y - ball.y) / (ball.radius * 1.2093284);
        if (ball.radius > 0.0F && d < 1.0) sum += std::pow(1.0 - d * d, 2.0);
    }
    return sum;
}

/// How much of a pixel lies within a soft outline. The change of the field from pixel to pixel is taken along both
/// axes, so an outline of a pixel is wider where it is oblique.
/// @param x, y  from the centre of the ball
inline double coverage(double x, double y, double radius) {
    const double distance = std::hypot(x, y);
    const double breadth = (std::fabs(x) + std::fabs(y)) / std::max(distance, 1.0);
    return std::clamp((radius - distance) / breadth + 0.5, 0.0, 1.0);
}

/// A colour that is premultiplied by its alpha, over another.
inline Values over(const Values& color, const Values& ground) {
    return ground * (1.0 - color[3]) + color;
}

} // namespace tidalume::reference::plain
