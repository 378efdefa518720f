#include "gallery/grounds/Paint.h"

#include <cmath>

namespace tidalume::gallery {

void paintDisc(Picture& picture, float x, float y, float radius, const Color& color) {
    paintAround(picture, x, y, radius + 0.5F, [&](float dx, float dy) {
        const float coverage = std::clamp(radius + 0.5F - std::hypot(dx, dy), 0.0F, 1.0F);
        return Color{color.red, color.green, color.blue, color.alpha * coverage};
    });
}

} // namespace tidalume::gallery
