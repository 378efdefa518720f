#pragma once

#include <cstdint>
#include <random>

namespace tidalume {

/// Chance of a look's own: the same numbers for the same seed, on every machine.
class Random {
  public:
    explicit Random(std::uint32_t seed = 1) : mEngine(seed) {}

    /// A number from low up to high.
    float between(float low, float high) { return low + (high - low) * static_cast<float>(mEngine() >> 7) * 0x1p-24F; }

  private:
    std::minstd_rand mEngine; // 31 bits, of which a float holds 24
};

} // namespace tidalume
