#pragma once

#include <cstdlib>

namespace tidalume::gallery {

/// A number from low up to high, from lrand48, which the front end seeds.
inline float randomBetween(float low, float high) {
    return low + (high - low) * static_cast<float>(lrand48() >> 7) * 0x1p-24F;
}

} // namespace tidalume::gallery
