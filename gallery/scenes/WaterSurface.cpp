#include "gallery/scenes/WaterSurface.h"

#include "gallery/Color.h"

#include <algorithm>
#include <cmath>

namespace tidalume::gallery {

namespace {

constexpr int maxSide = 2048; // of the field, however narrow the screen

// In texels at the default resolution: so far away that slopes show as light and shade.
constexpr float skyDepth = 3400;

// The light of the sky: even in the middle, brighter towards the upper left corner and darker towards the lower right.
// Light of 0.5 changes nothing; the water absorbs some of the red.
Picture sky() {
    constexpr int size = 128;
    constexpr Color tint = {0.88F, 0.98F, 1.02F};
    Picture picture(size, size);
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            const float t = 1 - static_cast<float>(x + y) / (size - 1);
            const float light = 0.5F + 0.10F * t + (t > 0 ? 0.22F : 0.14F) * std::pow(t, 3.0F);
            setPixel(picture, x, y, tint * light);
        }
    }
    return picture;
}

} // namespace

void WaterSurface::setUp(int width, int height, const Picture& ground) {
    mWidth = width;
    mHeight = height;
    mFieldTexels = 0;
    mDepth.init();
    mNormals.init();
    mRefraction.init();
    mReflection.init();
    mGraphics.init();
    mRefraction.setScreenSize(width, height);
    mGraphics.setScreenSize(width, height);

    mGround.load(ground);
    mSky.load(sky());
    mRefraction.setTexture(static_cast<int>(mGround.name()));
    mReflection.setTexture(static_cast<int>(mSky.name()));
    mGraphics.setBlendFunction(GL_DST_COLOR, GL_SRC_COLOR, GL_ZERO, GL_ONE); // twice the product

    // One texel, all of which lies on the crest of an endless wave.
    constexpr float endless = 1e9F;
    mDepth.setScreenSize(1, 1);
    mDepth.addHorizontalWave(0, endless, 1, 0, 1, 0);
}

bool WaterSurface::resizeField() {
    const auto texels = static_cast<int>(mTexels);
    if (texels == mFieldTexels) return false;
    mFieldTexels = texels;
    const int shorter = std::min(mWidth, mHeight);
    mColumns = std::min(mWidth * texels / shorter, maxSide);
    mRows = std::min(mHeight * texels / shorter, maxSide);
    mNormals.setScreenSize(mColumns, mRows);
    mReflection.setScreenSize(mColumns, mRows);
    mReflection.setHeightMax(skyDepth * scale());
    mReflected.resize(mColumns, mRows);
    mReflection.setDrawFrameBuffer(mReflected.framebuffer());
    return true;
}

void WaterSurface::contextLost() {
    mDepth.GLContextDestroyed();
    mNormals.GLContextDestroyed();
    mRefraction.GLContextDestroyed();
    mReflection.GLContextDestroyed();
    mGraphics.GLContextDestroyed();
    mGround.contextLost();
    mSky.contextLost();
    mReflected.contextLost();
}

void WaterSurface::draw(GLuint ripples, float steepness, float depth) {
    mNormals.setHeightMax(steepness);
    mNormals.build(ripples);
    mReflection.render(mDepth.getTexture(), mNormals.getTexture());
    mRefraction.setHeightMax(depth * static_cast<float>(mWidth) / static_cast<float>(mColumns));
    mRefraction.render(mDepth.getTexture(), mNormals.getTexture());
    mGraphics.renderBitmapRectangle(0, 0, static_cast<float>(mWidth), static_cast<float>(mHeight), mReflected.name());
}

} // namespace tidalume::gallery
