#pragma once

#include "reference/Values.h"

#include <functional>
#include <utility>
#include <vector>

/// The white layers of a frame of comets, at a point.
namespace tidalume::reference::plain {

/// In pixels from the bottom-left corner, and how white it is there.
struct Point {
    double x, y, alpha = 0.0;
};

/// The alpha of something white at a point.
using Layer = std::function<double(const Point&)>;

inline double cross(const Point& o, const Point& a, const Point& b) {
    return (a.x - o.x) * (b.y - o.y) - (a.y - o.y) * (b.x - o.x);
}

/// A triangle whose alpha is linear between its corners.
inline Layer triangle(const Point& a, const Point& b, const Point& c) {
    return [=, area = cross(a, b, c)](const Point& p) {
        const double first = cross(b, c, p) / area, second = cross(c, a, p) / area, third = 1.0 - first - second;
        const bool inside = first >= 0.0 && second >= 0.0 && third > 0.0;
        return inside ? first * a.alpha + second * b.alpha + third * c.alpha : 0.0;
    };
}

/// Everything between two distances from a centre.
inline Layer annulus(const Point& centre, double inner, double outer, double alpha) {
    return [=](const Point& p) {
        const double d = std::hypot(p.x - centre.x, p.y - centre.y);
        return d >= inner && d <= outer ? alpha : 0.0;
    };
}

/// How much white all layers let through at a point.
inline double transparency(const std::vector<Layer>& layers, const Point& p) {
    double through = 1.0;
    for (const Layer& layer : layers)
        through *= 1.0 - layer(p);
    return through;
}

/// How bright tails and cores are at progress t.
inline double glow(double t) {
    return 0.2 * std::sin(t * 3.141592);
}

/// The radius of a core, as a share of the screen's width.
inline double coreRadius(double t) {
    return 0.02 * (1.0 - std::pow(t, 2.5));
}

/// The rings of a comet: each lies around a column of the mesh of the whole path; its outer radius is a share of the
/// screen's width, and below 0 before it begins. Rings are 3 pixels wide.
inline std::vector<std::pair<int, double>> rings(double t) {
    return {{25, (t - 0.75) / 6.0}, {15, (t - 0.85) * 0.15 / 0.85}};
}

inline double ringAlpha(double t) {
    return 2.0 * (1.0 - t);
}

} // namespace tidalume::reference::plain
