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

/// A bright colour: red at 0 degrees, green at 120, blue at 240; white with a saturation of 0.
Color fromHue(float degrees, float saturation);

} // namespace tidalume
