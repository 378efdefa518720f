#pragma once

#include "reference/Values.h"

#include <utility>

namespace tidalume::reference::plain {

/// Of a radial gradient, at a distance from its centre.
inline Values gradientColor(double distance, double begin, const Values& beginColor, double end,
                            const Values& endColor) {
    return mix(beginColor, endColor, std::clamp((distance - begin) / (end - begin), 0.0, 1.0));
}

/// Where a rotation code from 0 to 5 looks into a bitmap, at shares of the rectangle from its lower left corner.
inline std::pair<double, double> rotated(int code, double x, double y) {
    const double u[6] = {x, 1.0 - y, 1.0 - x, y, x, 1.0 - x};
    const double v[6] = {y, x, 1.0 - y, 1.0 - x, 1.0 - y, y};
    return {u[code], v[code]};
}

} // namespace tidalume::reference::plain
