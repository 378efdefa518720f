#pragma once

#include "math/Vector3.h"

#include <cstdlib>

namespace tidalume::reference::plain {

/// What a launch draws from the random stream for one comet.
struct CometLaunch {
    Vector3 start;
    float beyond; ///< how far behind the touch the path ends, in shares of the way to it
    float aside;  ///< and how far to the left of that
};

inline float randomRange(float a, float b) {
    return static_cast<float>(a + static_cast<double>(b - a) * static_cast<double>(lrand48()) / 2147483648.0);
}

/// @param touch  in normalised device coordinates
/// @param first  the launch of the first comet, for the second one, which starts in the other half; null for the first
inline CometLaunch drawLaunch(const Vector3& touch, const CometLaunch* first) {
    CometLaunch launch = {};
    bool rejected = true;
    for (int attempt = 0; rejected && attempt < 10000; ++attempt) {
        const long side = lrand48() % 4;
        const float w = randomRange(-1.0F, 1.0F);
        const float height = first ? 0.7F : 1.1F;
        const Vector3 starts[] = {{-1.0F, w, 0.0F}, {1.0F, w, 0.0F}, {w, -height, 0.0F}, {w, height, 0.0F}};
        launch.start = starts[side];
        const float distance = (touch - launch.start).length();
        rejected = distance < 0.75F || distance > 1.5F || (first && first->start.y * launch.start.y > 0.0F);
    }
    launch.beyond = first ? randomRange(0.7F, 0.8F) : randomRange(0.4F, 0.5F);
    const bool isRight = lrand48() % 2 == 1;
    launch.aside = randomRange(0.1F, 0.2F) * (isRight ? -1.0F : 1.0F);
    return launch;
}

} // namespace tidalume::reference::plain
