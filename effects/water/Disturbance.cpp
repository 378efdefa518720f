#include "effects/water/Disturbance.h"

#include <algorithm>
#include <cmath>

namespace tidalume {

bool isDisturbance(float radius, std::initializer_list<float> others) {
    const auto isFinite = [](float value) { return std::isfinite(value); };
    return radius != 0.0F && std::isfinite(radius) && std::all_of(others.begin(), others.end(), isFinite);
}

} // namespace tidalume
