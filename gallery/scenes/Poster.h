#pragma once

#include <algorithm>

namespace tidalume::gallery {

/// Where a poster of 540 x 960 units lies on a surface: as large as fits, in the middle.
struct Poster {
    static constexpr float width = 540;
    static constexpr float height = 960;

    Poster() = default;
    Poster(float surfaceWidth, float surfaceHeight)
        : scale(std::min(surfaceWidth / width, surfaceHeight / height)), left((surfaceWidth - scale * width) / 2),
          top((surfaceHeight - scale * height) / 2) {}

    /// From units of the poster to pixels of the surface.
    float x(float posterX) const { return left + scale * posterX; }
    float y(float posterY) const { return top + scale * posterY; }

    float scale = 1; ///< pixels of a unit
    float left = 0;  ///< in pixels
    float top = 0;   ///< in pixels
};

} // namespace tidalume::gallery
