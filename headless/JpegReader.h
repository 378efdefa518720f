#pragma once

#include "headless/Picture.h"

#include <cstdint>
#include <vector>

namespace tidalume::headless {

/// Decodes a JPEG file's bytes, turned upright by its EXIF orientation. Throws Error with the reason for what is
/// broken, ends too early, or is stored in CMYK.
Picture readJpeg(const std::vector<std::uint8_t>& bytes);

/// Throws Error for a picture that is too large to be read; see readPicture().
void checkPictureSize(std::uint32_t width, std::uint32_t height);

} // namespace tidalume::headless
