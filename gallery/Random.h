#pragma once

#include <cstdlib>

namespace tidalume::gallery {

/// A number from low up to high, from lrand48: the front end's seed decides it.
inline float randomBetween(float low, float high) {
    return low + (high - low) * static_cast<float>(lrand48() >> 7) * 0x1p-24F;
}

} // namespace tidalume::gallery
