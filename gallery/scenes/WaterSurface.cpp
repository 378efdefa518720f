#include "gallery/scenes/WaterSurface.h"

#include "gallery/Color.h"

#include <algorithm>
#include <cmath>

namespace tidalume::gallery {

namespace {

constexpr int longestSide = 2048; // of the field, however narrow the screen

/// In texels of a field of the usual fineness: so far away that slopes show as light and shade.
constexpr float skyDepth = 3400;

/// The light of the sky: even in the middle, brighter towards the upper left corner and darker towards the lower right
/// one. 0.5 stands for light that changes nothing; the water swallows some of the red.
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
    mDepth.init();
    mNormals.init();
    mRefraction.init();
    mReflection.init();
    mGraphics.init();
    mRefraction.setScreenSize(width, height);
    mGraphics.setScreenSize(width, height);

    mGround.load(ground);
    mSky.load(sky());
    fitField();
    mRefraction.setTexture(static_cast<int>(mGround.name()));
    mReflection.setTexture(static_cast<int>(mSky.name()));
    mReflection.setDrawFrameBuffer(mReflected.framebuffer());
    mGraphics.setBlendFunction(GL_DST_COLOR, GL_SRC_COLOR, GL_ZERO, GL_ONE); // twice the product

    // One texel, all of which lies on the crest of an endless wave.
    constexpr float endless = 1e9F;
    mDepth.setScreenSize(1, 1);
    mDepth.addHorizontalWave(0, endless, 1, 0, 1, 0);
}

bool WaterSurface::setTexels(int texels) {
    if (texels == mTexels) return false;
    mTexels = texels;
    fitField();
    return true;
}

void WaterSurface::fitField() {
    const int shorter = std::min(mWidth, mHeight);
    mColumns = std::min(mWidth * mTexels / shorter, longestSide);
    mRows = std::min(mHeight * mTexels / shorter, longestSide);
    mNormals.setScreenSize(mColumns, mRows);
    mReflection.setScreenSize(mColumns, mRows);
    mReflection.setHeightMax(skyDepth * scale());
    mReflected.resize(mColumns, mRows);
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
