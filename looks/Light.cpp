#include "looks/Light.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace tidalume {

Light glowAt(float distance) {
    const float skirt = std::pow(1 - distance, 2.5F);
    const float middle = std::pow(std::max(1 - 2.3F * distance, 0.0F), 2.0F);
    const float core = std::clamp(1.6F * (1 - 6 * distance), 0.0F, 1.0F);
    return {1 - (1 - 0.35F * skirt) * (1 - 0.6F * middle) * (1 - core), std::max(0.8F * middle, core)};
}

Light emberAt(float distance) {
    const float ball = 1 - distance;
    return {std::pow(ball, 1.5F), std::pow(ball, 3.0F)};
}

void paintLight(ColorTarget& target, int size, Light (*lightAt)(float), const Color& color) {
    std::vector<std::uint8_t> pixels;
    const auto toByte = [](float channel) { return static_cast<std::uint8_t>(std::lround(255 * channel)); };
    const auto fromMiddle = [size](int i) { return (2 * static_cast<float>(i) + 1) / static_cast<float>(size) - 1; };
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            const Light light = lightAt(std::min(std::hypot(fromMiddle(x), fromMiddle(y)), 1.0F));
            for (const float channel : {color.red, color.green, color.blue})
                pixels.push_back(toByte(light.alpha * (channel + light.whiteness * (1 - channel))));
            pixels.push_back(toByte(light.alpha));
        }
    }
    target.resize(size, size, pixels.data());
}

} // namespace tidalume
