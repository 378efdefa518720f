#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tidalume {

/// A picture of 8-bit pixels in memory.
struct Picture {
    int width = 0;  ///< in pixels
    int height = 0; ///< in pixels
    /// width * height pixels of red, green, blue, alpha; rows from the top, alpha not premultiplied.
    std::vector<std::uint8_t> rgba;

    Picture() = default;

    /// A transparent black picture.
    Picture(int width, int height)
        : width(width), height(height), rgba(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4) {}

    /// The four bytes of the pixel in column x of row y, row 0 at the top.
    /// @{
    const std::uint8_t* pixel(int x, int y) const { return rgba.data() + offset(x, y); }
    std::uint8_t* pixel(int x, int y) { return rgba.data() + offset(x, y); }
    /// @}

  private:
    std::size_t offset(int x, int y) const {
        return (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)) * 4;
    }
};

/// Multiplies the colours by their alpha, for a texture that is filtered or blended as premultiplied. To be done once;
/// files are written of pictures that are not premultiplied.
inline void premultiply(Picture& picture) {
    for (std::size_t pixel = 0; pixel < picture.rgba.size(); pixel += 4) {
        const int alpha = picture.rgba[pixel + 3];
        for (std::size_t channel = pixel; channel < pixel + 3; ++channel)
            picture.rgba[channel] = static_cast<std::uint8_t>((picture.rgba[channel] * alpha + 127) / 255);
    }
}

} // namespace tidalume
