#pragma once

#include <random>
#include <vector>

namespace tidalume::test {

/// Evenly distributed numbers, the same for each seed.
inline std::vector<float> noise(unsigned int seed, int count, float lowest, float highest) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> distribution(lowest, highest);
    std::vector<float> values(static_cast<size_t>(count));
    for (float& value : values)
        value = distribution(random);
    return values;
}

} // namespace tidalume::test
