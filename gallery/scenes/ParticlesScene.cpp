#include "gallery/scenes/ParticlesScene.h"

#include "gallery/Blend.h"
#include "gallery/Color.h"
#include "gallery/Math.h"

#include <algorithm>
#include <cmath>

namespace tidalume::gallery {

namespace {

constexpr float opaqueAlphaFactor = 12.5F; // the effect multiplies it by 0.08
constexpr float maxParticleRadius = 90;    // in pixels, on any screen

} // namespace

ParticlesScene::ParticlesScene() {
    mParameters = {
        {"radius", "Size of the blob under a finger", 10, 100, mRadius},
        {"opacity", "Opacity", 0.1F, 1, mOpacity},
        mQuality.parameter(),
        {"hue", "Colour", -180, 180, mHue},
    };
}

void ParticlesScene::setUp(int width, int height, const Picture&) {
    mWidth = width;
    mHeight = height;
    mUnit = static_cast<float>(std::min(width, height)) / 540;
    mGraphics.init();
    mGraphics.setScreenSize(width, height);
    mQuality.setUp();
    fitField();
}

void ParticlesScene::contextLost() {
    for (MetaballRenderer& emitter : mEmitters)
        emitter.GLContextDestroyed();
    mGraphics.GLContextDestroyed();
}

void ParticlesScene::touch(const Touch& touch) {
    constexpr int press = 0;
    constexpr int release = 1;
    constexpr int stream = 7;
    if (touch.pointer >= static_cast<int>(mEmitters.size())) return;
    const int action = touch.action == TouchAction::Down ? press : touch.action == TouchAction::Up ? release : stream;
    mEmitters[static_cast<std::size_t>(touch.pointer)].push(touch.x, touch.y, action);
}

void ParticlesScene::drawFrame() {
    fitField();
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
    drawBackdrop();
    for (MetaballRenderer& emitter : mEmitters)
        emitter.render(mRadius * mUnit, opaqueAlphaFactor * mOpacity);
    drawTint();
}

// Three fingers go down one after another, sweep to and fro, and lift one after another.
std::vector<Touch> ParticlesScene::demonstration(int frame) const {
    constexpr int period = 240;
    constexpr int length = 110;
    constexpr float places[3][2] = {{0.28F, 0.84F}, {0.74F, 0.80F}, {0.50F, 0.62F}};
    std::vector<Touch> touches;
    for (int i = 0; i < 3; ++i) {
        const int step = frame % period - 2 - 6 * i;
        const float pressX = places[i][0] * static_cast<float>(mWidth);
        const float pressY = places[i][1] * static_cast<float>(mHeight);
        if (step == 0) touches.push_back({pressX, pressY, TouchAction::Down, i});
        if (step < 4 || step > length) continue;
        const float sweep = std::sin(twoPi * static_cast<float>(step - 4) / (length - 4));
        const float angle = (i % 2 == 0 ? 0.8F : -0.8F) * sweep;
        const float reach = 0.16F * static_cast<float>(std::min(mWidth, mHeight));
        const TouchAction action = step == length ? TouchAction::Up : TouchAction::Move;
        touches.push_back({pressX + reach * std::sin(angle), pressY - reach * std::cos(angle), action, i});
    }
    return touches;
}

void ParticlesScene::fitField() {
    if (!mQuality.fit(std::max(maxParticleRadius, mRadius * mUnit))) return;
    for (MetaballRenderer& emitter : mEmitters) {
        emitter.init(mQuality.value());
        emitter.setScreenSize(mWidth, mHeight);
    }
}

void ParticlesScene::drawBackdrop() {
    Color depth = rotateHue({0.07F, 0.09F, 0.20F, 1}, mHue);
    Color glow = rotateHue({0.24F, 0.25F, 0.85F, 1}, mHue);
    setBlend(mGraphics, Blend::Over);
    mGraphics.renderRadialGradient(0.5F * static_cast<float>(mWidth), 1.05F * static_cast<float>(mHeight), 0,
                                   glow.data(), 1.1F * static_cast<float>(mHeight), depth.data());
}

// The effect paints white. Gradients, multiplied over it, give the drops their colours.
void ParticlesScene::drawTint() {
    Color yellow = rotateHue({1.00F, 0.86F, 0.42F, 1}, mHue);
    Color coral = rotateHue({1.00F, 0.42F, 0.48F, 1}, mHue);
    Color clear = {1.00F, 1.00F, 1.00F, 1};
    Color violet = rotateHue({0.66F, 0.55F, 1.00F, 1}, mHue);
    const auto width = static_cast<float>(mWidth);
    const auto height = static_cast<float>(mHeight);
    setBlend(mGraphics, Blend::Multiply);
    mGraphics.renderRadialGradient(0.5F * width, 0.95F * height, 0.1F * height, yellow.data(), 0.6F * height,
                                   coral.data());
    mGraphics.renderRadialGradient(0.5F * width, 0.95F * height, 0.4F * height, clear.data(), 1.0F * height,
                                   violet.data());
}

} // namespace tidalume::gallery
