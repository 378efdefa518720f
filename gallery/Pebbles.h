#pragma once

#include "headless/Picture.h"

#include <cstdint>

namespace tidalume::gallery {

/// A pond bed of pebbles, drawn by the processor. The same seed and size give the same picture.
/// @param width, height  in pixels, at least 1; the pebbles' size follows the shorter of the two
Picture pebbles(int width, int height, std::uint32_t seed);

} // namespace tidalume::gallery
