#include "tests/pictures/PictureCase.h"

#include <GLES3/gl3.h>

#include <cmath>
#include <cstring>

namespace tidalume::pictures {

Comparison compare(const headless::PixelArray& drawn, const std::function<Values(int x, int y)>& formula) {
    Comparison worst = {};
    int compared = 0;
    for (int y = 0; y < drawn.height; ++y) {
        for (int x = 0; x < drawn.width; ++x) {
            const Values expected = formula(x, y);
            for (int c = 0; c < static_cast<int>(expected.size()); ++c) {
                const double value = expected[static_cast<size_t>(c)];
                const double difference = std::fabs(value - drawn.at(x, y)[c]);
                if (!std::isnan(value)) ++compared;
                // A drawn NaN counts as the largest difference of all.
                if (std::isnan(value) || difference <= worst.largest || std::isnan(worst.largest)) continue;
                worst = {difference, x, y, c, drawn.at(x, y)[c], value, 0, 0};
            }
        }
    }
    worst.compared = compared;
    worst.pixels = drawn.width * drawn.height;
    return worst;
}

double toleranceHere(const PictureCase& picture) {
    const Tolerance& tolerance = picture.tolerance;
    const bool isSoftpipe = std::strstr(reinterpret_cast<const char*>(glGetString(GL_RENDERER)), "softpipe") != nullptr;
    // Corners are rounded to 1/2^bits of a pixel.
    GLint bits = 0;
    glGetIntegerv(GL_SUBPIXEL_BITS, &bits);
    return (isSoftpipe && tolerance.coarsePoints > 0.0 ? tolerance.coarsePoints : tolerance.value) +
           picture.slope * std::exp2(-bits - 1);
}

PictureTable allPictures() {
    PictureTable all;
    for (const PictureTable& table : {metaballPictures(), vectorPictures(), cometPictures(), waterPictures()})
        all.insert(all.end(), table.begin(), table.end());
    return all;
}

} // namespace tidalume::pictures
