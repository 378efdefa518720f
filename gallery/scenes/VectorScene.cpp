#include "gallery/scenes/VectorScene.h"

#include "gallery/Color.h"
#include "gallery/Math.h"
#include "gallery/Random.h"
#include "gallery/scenes/VectorBitmaps.h"

#include <algorithm>
#include <cmath>

namespace tidalume::gallery {

namespace {

constexpr int period = 240; // frames until the motion repeats

constexpr float posterWidth = 540;
constexpr float posterHeight = 960;
constexpr float windowX = 270;
constexpr float windowY = 232;
constexpr float windowRadius = 176;

} // namespace

VectorScene::VectorScene() {
    for (std::size_t i = 0; i < mBubbles.size(); ++i) {
        mBubbles[i].x =
            posterWidth * (static_cast<float>(i) + randomBetween(0.2F, 0.8F)) / static_cast<float>(mBubbles.size());
        mBubbles[i].start = randomBetween(0, 1);
        mBubbles[i].diameter = randomBetween(16, 46);
        mBubbles[i].rise = i % 3 == 0 ? 2 : 1;
    }
    mParameters = {
        {"speed", "Speed", 0, 3, mSpeed},
        {"lens", "Size of the lens", 40, 200, mLensDiameter},
        {"blend", "Blend of the lights", blendNames(), mBlend},
        {"hue", "Colour", -180, 180, mHue},
    };
}

void VectorScene::setUp(int width, int height, const Picture& background) {
    mScale = std::min(static_cast<float>(width) / posterWidth, static_cast<float>(height) / posterHeight);
    mLeft = 0.5F * (static_cast<float>(width) - mScale * posterWidth);
    mTop = 0.5F * (static_cast<float>(height) - mScale * posterHeight);
    mGraphics.init();
    mGraphics.setScreenSize(width, height);
    mBackground.load(background);
    mBoat.load(boatTile(std::max(8, static_cast<int>(150 * mScale))));
    mCoast.load(coast(std::max(8, static_cast<int>(2.3F * windowRadius * mScale))));
    mMask.load(windowMask(width, height, x(windowX), y(windowY), windowRadius * mScale));
}

void VectorScene::contextLost() {
    mGraphics.GLContextDestroyed();
    for (PictureTexture* texture : {&mBackground, &mBoat, &mCoast, &mMask})
        texture->contextLost();
}

void VectorScene::touch(const Touch& touch) {
    mFingers[static_cast<std::size_t>(touch.pointer)] = {touch.x, touch.y, touch.action != TouchAction::Up};
}

void VectorScene::drawFrame() {
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
    setBlend(mGraphics, Blend::Over);
    drawBackdrop();
    drawWindow();
    drawBubbles();
    drawBoats();
    drawLights();
    drawLenses();
    drawVignette();
    mTime = std::fmod(mTime + mSpeed / period, 1.0F);
}

std::vector<Touch> VectorScene::demonstration(int frame) const {
    constexpr int first = 20;
    const int step = frame % period;
    if (step < first) return {};
    const float t = static_cast<float>(step - first) / (period - first);
    const float posterX = 395 + 75 * std::cos(twoPi * t);
    const float posterY = 838 + 40 * std::sin(2 * twoPi * t);
    const TouchAction action = step == first        ? TouchAction::Down
                               : step == period - 1 ? TouchAction::Up
                                                    : TouchAction::Move;
    return {{x(posterX), y(posterY), action, 0}};
}

void VectorScene::drawBackdrop() {
    Color dawn = rotateHue({0.99F, 0.74F, 0.58F, 1}, mHue);
    Color night = rotateHue({0.09F, 0.08F, 0.20F, 1}, mHue);
    mGraphics.renderRadialGradient(x(windowX), y(-60), 120 * mScale, dawn.data(), 980 * mScale, night.data());
    Color glow = rotateHue({0.85F, 0.30F, 0.45F, 0.40F}, mHue);
    Color none = rotateHue({0.60F, 0.20F, 0.50F, 0}, mHue);
    mGraphics.renderRadialGradient(x(windowX), y(560), 0, glow.data(), 430 * mScale, none.data());
}

// The coast moves to and fro behind the mask.
void VectorScene::drawWindow() {
    const float height = 2.3F * windowRadius;
    const float pan = 0.5F + 0.5F * std::sin(twoPi * mTime);
    const float left = windowX - 0.5F * height - height * pan;
    mGraphics.renderAlphaMaskedBitmapRectangle(x(left), y(windowY - 0.5F * height), 2 * height * mScale,
                                               height * mScale, static_cast<int>(mCoast.name()),
                                               static_cast<int>(mMask.name()));
}

void VectorScene::drawBoats() {
    constexpr int columns = 3;
    constexpr int rotations = 6;
    constexpr float size = 128;
    constexpr float gap = 22;
    const float left = 0.5F * (posterWidth - columns * size - (columns - 1) * gap);
    for (int rotation = 0; rotation < rotations; ++rotation) {
        const int row = rotation / columns;
        const float boatX = left + static_cast<float>(rotation % columns) * (size + gap);
        const float boatY = 460 + static_cast<float>(row) * (size + gap);
        mGraphics.renderRotatedBitmapRectangle(x(boatX), y(boatY), size * mScale, size * mScale, mBoat.name(),
                                               rotation);
    }
}

void VectorScene::drawLights() {
    constexpr float radius = 58;
    constexpr float orbit = 36;
    constexpr Color colors[3] = {{0.95F, 0.12F, 0.20F, 0.9F}, {0.10F, 0.85F, 0.30F, 0.9F}, {0.15F, 0.30F, 1.00F, 0.9F}};
    setBlend(mGraphics, toBlend(mBlend));
    for (int i = 0; i < 3; ++i) {
        const float angle = twoPi * (mTime + static_cast<float>(i) / 3 - 0.25F);
        mGraphics.renderCircle(x(140 + orbit * std::cos(angle)), y(845 + orbit * std::sin(angle)), radius * mScale,
                               rotateHue(colors[i], mHue).data());
    }
    setBlend(mGraphics, Blend::Over);
}

void VectorScene::drawBubbles() {
    for (const Bubble& bubble : mBubbles) {
        const float progress = std::fmod(bubble.start + bubble.rise * mTime, 1.0F);
        const float sway = 12 * std::sin(twoPi * (3 * progress + bubble.start));
        drawBubble(x(bubble.x + sway), y(posterHeight + 60 - (posterHeight + 120) * progress),
                   bubble.diameter * mScale);
    }
}

// A rim, the background seen through it, and a highlight.
void VectorScene::drawBubble(float centerX, float centerY, float diameter) {
    Color rim = {1, 0.95F, 0.88F, 0.55F};
    Color tint = {0, 0, 0, 0.9F};
    Color highlight = {1, 1, 1, 0.6F};
    mGraphics.renderCircle(centerX, centerY, 0.5F * diameter + 2 * mScale, rim.data());
    mGraphics.renderBitmapCircle(centerX, centerY, diameter, tint.data(), mBackground.name());
    mGraphics.renderCircle(centerX - 0.2F * diameter, centerY - 0.22F * diameter, 0.07F * diameter, highlight.data());
}

void VectorScene::drawLenses() {
    for (const Finger& finger : mFingers) {
        if (finger.down) drawBubble(finger.x, finger.y, mLensDiameter * mScale);
    }
}

void VectorScene::drawVignette() {
    Color middle = {1, 1, 1, 1};
    Color corner = {0.55F, 0.52F, 0.66F, 1};
    setBlend(mGraphics, Blend::Multiply);
    mGraphics.renderRadialGradient(x(0.5F * posterWidth), y(0.5F * posterHeight), 330 * mScale, middle.data(),
                                   600 * mScale, corner.data());
}

} // namespace tidalume::gallery
