#pragma once

#include "testing/Noise.h"
#include "tests/pictures/PictureCase.h"

#include <algorithm>
#include <cmath>

namespace tidalume::pictures {

using test::noise;

/// A texture, and what it holds as the driver has stored it. Coordinates are clamped to the edge.
struct Field : headless::PixelArray {
    GLuint texture;

    Field(GLuint texture, int width, int height)
        : PixelArray(headless::readTexture(texture, width, height)), texture(texture) {}

    double at(int x, int y, int channel = 0) const {
        return PixelArray::at(std::clamp(x, 0, width - 1), std::clamp(y, 0, height - 1))[channel];
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

/// Noise in a new texture, which lives as long as the context.
inline Field noiseTexture(GLenum format, int width, int height, float lowest = 0.0F, float highest = 1.0F) {
    const int count = width * height * headless::channelCount(format);
    return {headless::makeTexture(format, width, height, noise(1, count, lowest, highest)), width, height};
}

template <typename... Effects>
void makeReady(int width, int height, Effects&... effects) {
    (..., (effects.init(), effects.setScreenSize(width, height)));
}

/// Makes the pond run its next step.
template <typename Pond>
void runStep(Pond& pond) {
    const GLuint before = pond.getTexture();
    while (pond.getTexture() == before)
        pond.update();
}

} // namespace tidalume::pictures
