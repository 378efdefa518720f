#pragma once

#include "headless/Picture.h"

namespace tidalume::gallery {

/// A color that is shown has channels of 0 to 1.
struct Color {
    float red = 0;
    float green = 0;
    float blue = 0;
    float alpha = 1;

    /// The four channels in this order, as the effects take colors.
    float* data() { return &red; }
};

/// The color made brighter or darker; alpha stays.
Color operator*(const Color& color, float factor);

/// As in GLSL: from at t = 0, to at t = 1, linear in between, alpha too.
Color mix(const Color& from, const Color& to, float t);

/// A color laid over an opaque one by its alpha; the result is opaque.
Color over(const Color& below, const Color& color);

/// Stores a color, clamped and rounded to 8 bits.
void setPixel(Picture& picture, int x, int y, const Color& color);

/// Lays a color over an opaque pixel.
void blendPixel(Picture& picture, int x, int y, const Color& color);

} // namespace tidalume::gallery
