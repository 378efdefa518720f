#pragma once

#include "gallery/Color.h"

#include <algorithm>
#include <array>

/// What the grounds are painted with. Alpha blends as usual and pictures stay opaque.
namespace tidalume::gallery {

/// Runs from the first color to the last without a kink, drawn towards those in between: a Bézier curve, 0 <= t <= 1.
template <std::size_t count>
Color curve(std::array<Color, count> colors, float t) {
    for (std::size_t left = count - 1; left > 0; --left) {
        for (std::size_t i = 0; i < left; ++i)
            colors[i] = mix(colors[i], colors[i + 1], t);
    }
    return colors[0];
}

/// A picture of colorAt(x, y), the pixels' middles in shares of the sides.
template <typename ColorAt>
Picture paint(int width, int height, ColorAt colorAt) {
    Picture picture(width, height);
    for (int y = 0; y < height; ++y) {
        const float down = (static_cast<float>(y) + 0.5F) / static_cast<float>(height);
        for (int x = 0; x < width; ++x)
            setPixel(picture, x, y, colorAt((static_cast<float>(x) + 0.5F) / static_cast<float>(width), down));
    }
    return picture;
}

/// Lays colorAt(dx, dy) over the pixels around a point; all in pixels, dx and dy from the point, which extent bounds.
template <typename ColorAt>
void paintAround(Picture& picture, float x, float y, float extent, ColorAt colorAt) {
    const auto first = [&](float middle) { return std::max(0, static_cast<int>(middle - extent)); };
    const auto last = [&](float middle, int length) { return std::min(length - 1, static_cast<int>(middle + extent)); };
    for (int row = first(y); row <= last(y, picture.height); ++row) {
        for (int column = first(x); column <= last(x, picture.width); ++column) {
            const Color color = colorAt(static_cast<float>(column) + 0.5F - x, static_cast<float>(row) + 0.5F - y);
            if (color.alpha > 0) blendPixel(picture, column, row, color);
        }
    }
}

/// A disc whose edge is one pixel soft.
void paintDisc(Picture& picture, float x, float y, float radius, const Color& color);

} // namespace tidalume::gallery
