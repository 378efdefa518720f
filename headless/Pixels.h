#pragma once

#include "headless/Picture.h"

#include <GLES3/gl3.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tidalume::headless {

/// Pixels read back from the GL: four floats each (red, green, blue, alpha; a channel that the source lacks reads 0,
/// a missing alpha 1). Row 0 is the bottom row, which is row 0 of a texture.
struct PixelArray {
    int width = 0;           ///< in pixels
    int height = 0;          ///< in pixels
    std::vector<float> rgba; ///< width * height * 4 values; 8-bit channels are scaled to [0, 1]

    /// The four channels of column x in row y, counted from the bottom.
    const float* at(int x, int y) const {
        return rgba.data() +
               (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)) * 4;
    }
};

/// Number of channels of GL_R16F, GL_RG16F, GL_RGB16F, GL_RGBA16F or GL_RGBA8; throws Error for any other format.
int channelCount(GLenum internalFormat);

/// Makes a texture of width x height texels in one of the five formats of channelCount(), with GL_LINEAR filtering
/// and GL_CLAMP_TO_EDGE wrapping. The caller owns the name; the texture binding of the active unit is restored.
/// @param values width * height * channelCount() values, bottom row first; for GL_RGBA8 they are limited to [0, 1] and
///               rounded, for the others the driver rounds or truncates to half floats. Throws Error where their number
///               is another.
GLuint makeTexture(GLenum internalFormat, int width, int height, const std::vector<float>& values);

/// The same from bytes, where 255 stands for 1.
GLuint makeTexture(GLenum internalFormat, int width, int height, const std::vector<std::uint8_t>& values);

/// Level 0 of a texture of width x height texels, through a temporary framebuffer; the framebuffer binding is restored.
/// Throws Error where the driver cannot render to the texture's format (some cannot to GL_RGB16F), since OpenGL ES
/// has no other way to read a texture.
PixelArray readTexture(GLuint texture, int width, int height);

/// The lower left width x height pixels of the framebuffer that is bound for reading.
PixelArray readFramebuffer(int width, int height);

/// The lower left width x height pixels of the 8-bit framebuffer that is bound for reading, as an opaque picture:
/// what a window would show, whatever the drawing left in the alpha channel.
Picture framebufferPicture(int width, int height);

} // namespace tidalume::headless
