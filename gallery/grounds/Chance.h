#pragma once

#include <cstdint>

/// Chance that a seed alone decides, the same on every machine.
namespace tidalume::gallery {

/// Marsaglia's xorshift with 32 bits of state.
class Chance {
  public:
    explicit Chance(std::uint32_t seed);

    std::uint32_t next();

    float between(float low, float high) { return low + (high - low) * static_cast<float>(next() >> 8) * 0x1p-24F; }

  private:
    std::uint32_t mState;
};

/// A fixed value in [-1, 1] for every point of the integer lattice.
float latticeNoise(int x, int y, std::uint32_t seed);

/// latticeNoise(), smoothly interpolated.
float valueNoise(float x, float y, std::uint32_t seed);

} // namespace tidalume::gallery
