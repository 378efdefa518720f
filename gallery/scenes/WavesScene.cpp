#include "gallery/scenes/WavesScene.h"

#include "gallery/Math.h"

#include <algorithm>
#include <cmath>

namespace tidalume::gallery {

namespace {

constexpr int period = 120; // frames from one wave to the next

// In texels of a height field at the default resolution.
constexpr float crest = 31;
constexpr float bend = 8;
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
    if (touch.action == TouchAction::Move) mWay += mSurface.toRow(touch.y - mFingerY);
    mFingerY = touch.y;
}

void WavesScene::drawFrame() {
    mSurface.fitField(mWaves);
    paintWaves();
    mSurface.draw(mWaves.getTexture(), steepness * mSurface.scale(), depth * mSurface.scale());
    ++mFrame;
}

// The bands of the waves lie side by side, so that each frame paints the whole screen; their curves sway together.
void WavesScene::paintWaves() {
    const float time = static_cast<float>(mFrame % period) / period;
    const float radius = crest * mLength * mSurface.scale();
    const float reach = bend * mSurface.scale();
    const float swing = reach * std::cos(twoPi * time);
    // To the other side the curve runs backwards: a band is painted as wide as the sway says, which must not be
    // negative.
    const float sway = std::fabs(swing);
    const float count = std::copysign(mCount, swing);
    const float spacing = 2 * (radius + reach);
    mWay = std::fmod(mWay + spacing / period, spacing);
    const float bottom = static_cast<float>(mSurface.rows()) + spacing;
    for (float y = mWay - 2 * spacing; y < bottom; y += spacing) {
        mWaves.addHorizontalWave(y, spacing / 2 - sway, strength * mStrength, sway, count, 0);
    }
}

} // namespace tidalume::gallery
