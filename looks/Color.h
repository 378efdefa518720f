#pragma once

namespace tidalume {

/// A colour, not premultiplied, with channels of 0 to 1.
struct Color {
    float red = 0;
    float green = 0;
    float blue = 0;
    float alpha = 1;
};

/// The colour rotated about the grey axis, then clamped: 120 degrees turn red into green, 0 changes no bit. Alpha
/// stays, and so does brightness, as the mean of the other three.
Color rotateHue(const Color& color, float degrees);

} // namespace tidalume
