#pragma once

#include <array>

namespace tidalume::gallery {

/// Red, green, blue and alpha, each 0 to 1.
using Color = std::array<float, 4>;

/// The color turned around the axis of the greys (Rodrigues' rotation), cut to what can be shown: 120 degrees make
/// green of red, 0 changes no bit. Brightness, as the mean of the three, and alpha stay.
Color turnHue(const Color& color, float degrees);

} // namespace tidalume::gallery
