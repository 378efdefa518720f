#pragma once

#include <algorithm>
#include <cmath>
#include <valarray>
#include <vector>

namespace tidalume::reference::plain {

constexpr double pi = 3.141592653589793;

/// The channels of a pixel, or the parts of a vector.
using Values = std::valarray<double>;

inline Values mix(const Values& from, const Values& to, double share) {
    return from + (to - from) * share;
}

/// What a texture holds, with GL_CLAMP_TO_EDGE wrapping. Row 0 is the bottom row.
struct Texels {
    int width, height;
    std::vector<float> rgba;

    double at(int x, int y, int channel = 0) const {
        return rgba[4 * (std::clamp(y, 0, height - 1) * width + std::clamp(x, 0, width - 1)) + channel];
    }

    Values texel(int x, int y) const { return {at(x, y, 0), at(x, y, 1), at(x, y, 2), at(x, y, 3)}; }

    /// Between the texels, as GL_LINEAR defines it, at shares of width and height.
    Values filtered(double u, double v) const {
        const double x = u * width - 0.5, y = v * height - 0.5;
        const int left = static_cast<int>(std::floor(x)), bottom = static_cast<int>(std::floor(y));
        const auto row = [&](int y) { return mix(texel(left, y), texel(left + 1, y), x - left); };
        return mix(row(bottom), row(bottom + 1), y - bottom);
    }

    /// Sum of the four next texels' first channel.
    double neighbours(int x, int y) const { return at(x - 1, y) + at(x + 1, y) + at(x, y - 1) + at(x, y + 1); }
};

} // namespace tidalume::reference::plain
