#include "gallery/scenes/FieldQuality.h"

#include <GLES3/gl3.h>

#include <algorithm>

namespace tidalume::gallery {

void FieldQuality::setUp() {
    GLfloat range[2] = {1, 1};
    glGetFloatv(GL_ALIASED_POINT_SIZE_RANGE, range);
    mMaxSpriteSize = range[1];
    mValue = 0;
}

bool FieldQuality::fit(float maxRadius) {
    constexpr float spritePerRadius = 2 * 1.21F; // of the effect, rounded up
    const float previous = mValue;
    mValue = std::max(mChosen, maxRadius * spritePerRadius / mMaxSpriteSize);
    return mValue != previous;
}

} // namespace tidalume::gallery
