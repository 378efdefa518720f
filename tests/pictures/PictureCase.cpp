#include "tests/pictures/PictureCase.h"

#include <GLES3/gl3.h>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace tidalume::pictures {

Comparison compare(const headless::PixelArray& drawn, const std::function<Values(int x, int y)>& formula) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    Comparison worst = {};
    int compared = 0;
    for (int i = 0; i < drawn.width * drawn.height; ++i) {
        const int x = i % drawn.width, y = i / drawn.width;
        const Values expected = formula(x, y);
        if (expected.size() > 0 && !std::isnan(expected.sum())) ++compared;
        for (size_t channel = 0; channel < expected.size(); ++channel) {
            const double value = expected[channel], found = drawn.at(x, y)[channel];
            if (std::isnan(value)) continue;
            const double difference = std::isnan(found) ? infinity : std::fabs(value - found);
            if (difference > worst.largest) worst = {difference, x, y, found, value};
        }
    }
    if (2 * compared <= drawn.width * drawn.height) worst.largest = infinity;
    return worst;
}

double toleranceHere(const PictureCase& picture) {
    const Tolerance& tolerance = picture.tolerance;
    const char* renderer = reinterpret_cast<const char*>(glGetString(GL_RENDERER));
    return std::strstr(renderer, "softpipe") ? std::max(tolerance.value, tolerance.coarsePoints) : tolerance.value;
}

} // namespace tidalume::pictures
