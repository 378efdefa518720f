#include "gallery/Color.h"

#include <algorithm>
#include <cmath>

namespace tidalume::gallery {

Color turnHue(const Color& color, float degrees) {
    const float angle = degrees * 3.1415927F / 180;
    const float along = std::cos(angle);
    const float across = std::sin(angle) / std::sqrt(3.0F);
    const auto& [red, green, blue, alpha] = color;
    const float grey = (red + green + blue) / 3 * (1 - along);
    const auto turn = [&](float channel, float next, float last) {
        return std::clamp(channel * along + grey + (last - next) * across, 0.0F, 1.0F);
    };
    return {turn(red, green, blue), turn(green, blue, red), turn(blue, red, green), alpha};
}

} // namespace tidalume::gallery
