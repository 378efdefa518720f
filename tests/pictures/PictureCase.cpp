#include "tests/pictures/PictureCase.h"

#include <GLES3/gl3.h>

#include <cmath>
#include <cstring>

namespace tidalume::pictures {
namespace {

bool hasCoarsePoints() {
    return std::strstr(reinterpret_cast<const char*>(glGetString(GL_RENDERER)), "softpipe") != nullptr;
}

} // namespace

Comparison compare(const headless::PixelArray& drawn, const std::function<Values(int x, int y)>& formula) {
    Comparison comparison = {drawn.width, drawn.height, 0, {}, {}};
    for (int y = 0; y < drawn.height; ++y) {
        for (int x = 0; x < drawn.width; ++x) {
            const Values expected = formula(x, y);
            comparison.channels = static_cast<int>(expected.size());
            comparison.expected.insert(comparison.expected.end(), std::begin(expected), std::end(expected));
            comparison.drawn.insert(comparison.drawn.end(), drawn.at(x, y), drawn.at(x, y) + expected.size());
        }
    }
    return comparison;
}

Difference difference(const Comparison& comparison) {
    Difference result = {0.0, 0, 0, 0, 0};
    for (size_t i = 0; i < comparison.expected.size(); ++i) {
        if (std::isnan(comparison.expected[i])) continue;
        ++result.compared;
        const double difference = std::fabs(comparison.expected[i] - comparison.drawn[i]);
        // Written so that a drawn NaN counts as the largest difference of all.
        if (difference <= result.largest) continue;
        const auto pixel = static_cast<int>(i) / comparison.channels;
        result.largest = difference;
        result.x = pixel % comparison.width;
        result.y = pixel / comparison.width;
        result.channel = static_cast<int>(i) % comparison.channels;
        if (std::isnan(difference)) break;
    }
    return result;
}

double toleranceHere(const PictureCase& picture) {
    const Tolerance& tolerance = picture.tolerance;
    const bool coarse = hasCoarsePoints() && tolerance.coarsePoints > 0.0;
    // Corners are rounded to 1/2^bits of a pixel.
    GLint bits = 0;
    glGetIntegerv(GL_SUBPIXEL_BITS, &bits);
    return (coarse ? tolerance.coarsePoints : tolerance.value) + picture.slope * std::exp2(-bits - 1);
}

PictureTable allPictures() {
    PictureTable all;
    for (const PictureTable& table : {metaballPictures(), vectorPictures(), cometPictures(), waterPictures()})
        all.insert(all.end(), table.begin(), table.end());
    return all;
}

} // namespace tidalume::pictures
