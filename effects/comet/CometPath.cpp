#include "effects/comet/CometPath.h"

namespace tidalume {

CometPath cometPath(const Vector3& start, const Vector3& touch, float beyond, float aside) {
    Vector3 direction = touch - start;
    const float distance = direction.length();
    direction.normalize();
    const auto length = static_cast<float>(distance + static_cast<double>(beyond) * distance);
    Vector3 left(-direction.y, direction.x, 0.0F);
    left.normalize();
    const Vector3 end = start + direction * length + left * aside;

    // Passing the touch at s fixes the quadratic term.
    const float s = distance / length;
    const auto divisor = static_cast<float>(static_cast<double>(s) * s - s);
    const Vector3 quadratic = ((touch - start) + (end - start) * -s) / divisor;
    const Vector3 linear = (end - start) - quadratic;
    return {{start, touch, end}, {start, linear, quadratic}};
}

} // namespace tidalume
