#include "looks/FieldScreen.h"

#include <GLES3/gl3.h>

#include <algorithm>
#include <cmath>

namespace tidalume {

namespace {

// Of the effect.
constexpr float margin = 120;
constexpr float spritePerRadius = 2 * 1.21F; // rounded up

} // namespace

// The size is rounded up, so that the part that the surface shows is exact.
void FieldScreen::fit(int width, int height) {
    mPerPixel = static_cast<float>(mShorterSide) / static_cast<float>(std::min(width, height));
    const float shownWidth = static_cast<float>(width) * mPerPixel;
    const float shownHeight = static_cast<float>(height) * mPerPixel;
    mWidth = static_cast<int>(std::ceil(shownWidth));
    mHeight = static_cast<int>(std::ceil(shownHeight));
    const float fieldWidth = static_cast<float>(mWidth) + 2 * margin;
    const float fieldHeight = static_cast<float>(mHeight) + 2 * margin;
    mArea[0] = margin / fieldWidth;
    mArea[1] = 1 - (margin + shownHeight) / fieldHeight;
    mArea[2] = (margin + shownWidth) / fieldWidth;
    mArea[3] = 1 - margin / fieldHeight;

    GLfloat range[2] = {1, 1};
    glGetFloatv(GL_ALIASED_POINT_SIZE_RANGE, range);
    mLargestSprite = range[1];
    mQuality = 0;
}

// In coarse steps: a ball that grows does not give the field another size in every frame.
bool FieldScreen::fitQuality(float scale, float largestRadius) {
    constexpr float step = 1.25F;
    const float previous = mQuality;
    mQuality = mPerPixel / scale;
    while (largestRadius * spritePerRadius / mQuality > mLargestSprite)
        mQuality *= step;
    return mQuality != previous;
}

} // namespace tidalume
