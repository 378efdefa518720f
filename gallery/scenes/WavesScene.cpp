#include "gallery/scenes/WavesScene.h"

#include "gallery/Math.h"

#include <algorithm>
#include <cmath>

namespace tidalume::gallery {

namespace {

constexpr int period = 120; // frames from one wave to the next

// In texels of a height field at the default resolution.
constexpr float crestRadius = 31;
constexpr float bendAmplitude = 8;
constexpr float strength = 0.5F;
constexpr float steepness = 30;
constexpr float depth = 28;

} // namespace

WavesScene::WavesScene() {
    mParameters = {
        {"length", "Length of the waves", 0.4F, 3, mLength},
        {"count", "Bends across the screen", 0, 6, mCount},
        {"strength", "Height of the waves", 0, 2, mStrength},
        mSurface.resolution(),
    };
}

void WavesScene::setUp(int width, int height, const Picture& background) {
    mSurface.setUp(width, height, background);
    mWaves.init();
    mSurface.fitField(mWaves);
}

void WavesScene::contextLost() {
    mWaves.GLContextDestroyed();
    mSurface.contextLost();
}

void WavesScene::touch(const Touch& touch) {
    if (touch.pointer != 0) return;
    if (touch.action == TouchAction::Move) mOffset += mSurface.toRow(touch.y - mFingerY);
    mFingerY = touch.y;
}

void WavesScene::drawFrame() {
    mSurface.fitField(mWaves);
    paintWaves();
    mSurface.draw(mWaves.getTexture(), steepness * mSurface.scale(), depth * mSurface.scale());
    ++mFrame;
}

// The bands of the waves lie side by side and cover the screen. Their curves sway together.
void WavesScene::paintWaves() {
    const float time = static_cast<float>(mFrame % period) / period;
    const float radius = crestRadius * mLength * mSurface.scale();
    const float maxAmplitude = bendAmplitude * mSurface.scale();
    const float signedAmplitude = maxAmplitude * std::cos(twoPi * time);
    // The amplitude also sets the width of a band, so it must not be negative: the curve runs backwards instead.
    const float amplitude = std::fabs(signedAmplitude);
    const float count = std::copysign(mCount, signedAmplitude);
    const float spacing = 2 * (radius + maxAmplitude);
    mOffset = std::fmod(mOffset + spacing / period, spacing);
    const float bottom = static_cast<float>(mSurface.rows()) + spacing;
    for (float y = mOffset - 2 * spacing; y < bottom; y += spacing) {
        mWaves.addHorizontalWave(y, spacing / 2 - amplitude, strength * mStrength, amplitude, count, 0);
    }
}

} // namespace tidalume::gallery
