#pragma once

#include <cstdint>
#include <random>

namespace tidalume {

/// Chance of a look's own: the same numbers for the same seed, on every machine.
class Random {
  public:
    explicit Random(std::uint32_t seed = 1) : mEngine(mixed(seed)) {}

    /// A number from low up to high.
    float between(float low, float high) { return low + (high - low) * static_cast<float>(mEngine() >> 7) * 0x1p-24F; }

  private:
    /// Neighbouring seeds would begin with neighbouring numbers. The finaliser of MurmurHash3.
    static std::uint32_t mixed(std::uint32_t seed) {
        seed = (seed ^ (seed >> 16)) * 0x85ebca6bU;
        seed = (seed ^ (seed >> 13)) * 0xc2b2ae35U;
        return seed ^ (seed >> 16);
    }

    std::minstd_rand mEngine; // 31 bits, of which a float holds 24
};

} // namespace tidalume
