#pragma once

#include "headless/Picture.h"

#include <cstdint>

/// The functions of the table of grounds; see Ground::draw.
namespace tidalume::gallery {

Picture sand(int width, int height, std::uint32_t seed);
Picture tiles(int width, int height, std::uint32_t seed);
Picture sunset(int width, int height, std::uint32_t seed);
Picture teal(int width, int height, std::uint32_t seed);
Picture pebbles(int width, int height, std::uint32_t seed);
Picture night(int width, int height, std::uint32_t seed);
Picture ember(int width, int height, std::uint32_t seed);
Picture dusk(int width, int height, std::uint32_t seed);

} // namespace tidalume::gallery
