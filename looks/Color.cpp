#include "looks/Color.h"

#include <algorithm>
#include <cmath>

namespace tidalume {

// Rodrigues' formula.
Color rotateHue(const Color& color, float degrees) {
    constexpr float pi = 3.14159265F;
    const float angle = degrees * pi / 180;
    const float along = std::cos(angle);
    const float across = std::sin(angle) / std::sqrt(3.0F);
    const auto& [red, green, blue, alpha] = color;
    const float grey = (red + green + blue) / 3 * (1 - along);
    const auto rotate = [&](float channel, float next, float last) {
        return std::clamp(channel * along + grey + (last - next) * across, 0.0F, 1.0F);
    };
    return {rotate(red, green, blue), rotate(green, blue, red), rotate(blue, red, green), alpha};
}

Color fromHue(float degrees, float saturation) {
    const auto channel = [&](float sixths) {
        const float turned = std::fmod(sixths + degrees / 60, 6.0F);
        return 1 - saturation * std::clamp(std::min(turned, 4 - turned), 0.0F, 1.0F);
    };
    return {channel(5), channel(3), channel(1)};
}

} // namespace tidalume
