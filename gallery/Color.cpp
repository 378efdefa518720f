#include "gallery/Color.h"

#include "gallery/Math.h"

#include <algorithm>
#include <cmath>

namespace tidalume::gallery {

namespace {

std::uint8_t toByte(float channel) {
    return static_cast<std::uint8_t>(std::lround(255.0F * std::clamp(channel, 0.0F, 1.0F)));
}

} // namespace

Color operator*(const Color& color, float factor) {
    return {color.red * factor, color.green * factor, color.blue * factor, color.alpha};
}

Color mix(const Color& from, const Color& to, float t) {
    return {from.red + (to.red - from.red) * t, from.green + (to.green - from.green) * t,
            from.blue + (to.blue - from.blue) * t, from.alpha + (to.alpha - from.alpha) * t};
}

Color over(const Color& below, const Color& color) {
    return mix(below, {color.red, color.green, color.blue}, color.alpha);
}

void setPixel(Picture& picture, int x, int y, const Color& color) {
    std::uint8_t* pixel = picture.pixel(x, y);
    pixel[0] = toByte(color.red);
    pixel[1] = toByte(color.green);
    pixel[2] = toByte(color.blue);
    pixel[3] = toByte(color.alpha);
}

void blendPixel(Picture& picture, int x, int y, const Color& color) {
    const std::uint8_t* pixel = picture.pixel(x, y);
    const auto channel = [&](int i) { return static_cast<float>(pixel[i]) / 255; };
    setPixel(picture, x, y, over({channel(0), channel(1), channel(2)}, color));
}

} // namespace tidalume::gallery
