#pragma once

#include "headless/Picture.h"

#include <cstdint>

namespace tidalume::gallery {

/// A pond bed of pebbles, drawn by the processor: the same seed and size give the same picture.
/// @param width, height  in pixels, at least 1; the pebbles' size follows the shorter of the two
Picture pebbles(int width, int height, std::uint32_t seed);

/// The middle part of a picture, scaled to cover width x height pixels. Transparent pixels are laid over black, the
/// result is opaque.
Picture coverFit(const Picture& picture, int width, int height);

} // namespace tidalume::gallery
