#pragma once

#include "tests/pictures/PictureCase.h"

#include <algorithm>
#include <cmath>
#include <random>

namespace tidalume::pictures {

/// Texels of one to four channels, rows from the bottom, with coordinates clamped to the edge.
struct Field {
    int width, height, channels;
    std::vector<double> values = {};

    Values at(int x, int y) const {
        const int pixel = std::clamp(y, 0, height - 1) * width + std::clamp(x, 0, width - 1);
        return {&values[static_cast<size_t>(pixel * channels)], static_cast<size_t>(channels)};
    }

    /// With linear filter, at shares of the width and height.
    Values sample(double u, double v) const {
        const int x = static_cast<int>(std::floor(u * width - 0.5));
        const int y = static_cast<int>(std::floor(v * height - 0.5));
        const double share = u * width - 0.5 - x;
        return mix(mix(at(x, y), at(x + 1, y), share), mix(at(x, y + 1), at(x + 1, y + 1), share),
                   v * height - 0.5 - y);
    }
};

/// Random multiples of 1/unit within [lowest, highest].
inline Field randomField(int width, int height, int channels, double lowest, double highest, double unit,
                         unsigned seed = 0) {
    std::mt19937 random(seed + static_cast<unsigned>(channels));
    std::uniform_int_distribution<int> steps(static_cast<int>(lowest * unit), static_cast<int>(highest * unit));
    Field field = {width, height, channels};
    for (int i = 0; i < width * height * channels; ++i)
        field.values.push_back(steps(random) / unit);
    return field;
}

/// A field in a texture, which it owns.
struct Texture {
    Texture(GLenum format, const Field& texels)
        : texels(texels), name(headless::makeTexture(format, texels.width, texels.height, floats(texels.values))) {}
    ~Texture() { glDeleteTextures(1, &name); }
    Texture(const Texture&) = delete;

    const Field texels;
    const GLuint name;
};

} // namespace tidalume::pictures
