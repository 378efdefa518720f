#include "gallery/scenes/VectorScene.h"

#include "gallery/Color.h"
#include "gallery/Math.h"
#include "gallery/Random.h"
#include "gallery/scenes/VectorBitmaps.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <iterator>

namespace tidalume::gallery {

namespace {

constexpr int period = 240; // frames until the motion repeats

constexpr float windowX = 270;
constexpr float windowY = 232;
constexpr float windowRadius = 176;

enum { SPEED, LENS, BLEND };

constexpr Parameter rows[] = {
    {"speed", "Speed", "times", 0, 3, 1, "All of it moves faster.", {}},
    {"lens", "Size of the lens", "pixels of 540 across", 40, 200, 120, "A finger's lens is larger.", {}},
    {"blend", "Blend of the lights", "", 0, 5, static_cast<float>(Blend::Add), "How lights change what is below.",
     blendNames},
};

constexpr Preset shows[] = {{"poster", "Poster", {}}};

} // namespace

VectorScene::VectorScene() {
    for (std::size_t i = 0; i < mBubbles.size(); ++i) {
        mBubbles[i].x =
            Poster::width * (static_cast<float>(i) + randomBetween(0.2F, 0.8F)) / static_cast<float>(mBubbles.size());
        mBubbles[i].start = randomBetween(0, 1);
        mBubbles[i].diameter = randomBetween(16, 46);
        mBubbles[i].rise = i % 3 == 0 ? 2 : 1;
    }
}

void VectorScene::setUp(int width, int height, const Picture& background) {
    mPoster = Poster(static_cast<float>(width), static_cast<float>(height));
    mGraphics.init();
    mGraphics.setScreenSize(width, height);
    mBackground.load(background);
    mBoat.load(boatTile(std::max(8, static_cast<int>(150 * mPoster.scale))));
    mCoast.load(coast(std::max(8, static_cast<int>(2.3F * windowRadius * mPoster.scale))));
    mMask.load(windowMask(width, height, mPoster.x(windowX), mPoster.y(windowY), windowRadius * mPoster.scale));
}

void VectorScene::contextLost() {
    mGraphics.GLContextDestroyed();
    for (PictureTexture* texture : {&mBackground, &mBoat, &mCoast, &mMask})
        texture->contextLost();
}

void VectorScene::touch(const Touch& touch) {
    mFingers[static_cast<std::size_t>(touch.pointer)] = {
        touch.x, touch.y, touch.phase == TouchPhase::Down || touch.phase == TouchPhase::Move};
}

void VectorScene::drawFrame() {
    mTime = std::fmod(mTime + mValues[SPEED] / period, 1.0F);
    redraw();
}

void VectorScene::redraw() {
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
    setBlend(mGraphics, Blend::Over);
    drawBackdrop();
    drawWindow();
    drawBubbles();
    drawBoats();
    drawLights();
    drawLenses();
    drawVignette();
}

Span<Parameter> VectorScene::parameters() const {
    return rows;
}

bool VectorScene::set(const char* parameter, float value) {
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        const Parameter& row = rows[i];
        if (std::strcmp(parameter, row.name) != 0 || !(value >= row.minimum && value <= row.maximum)) continue;
        mValues[i] = value;
        return true;
    }
    return false;
}

Span<Preset> VectorScene::presets() const {
    return shows;
}

bool VectorScene::usePreset(const char* name) {
    for (std::size_t i = 0; i < std::size(rows); ++i)
        mValues[i] = rows[i].initial;
    return std::strcmp(name, shows[0].name) == 0;
}

void VectorScene::drawBackdrop() {
    Color dawn = {0.99F, 0.74F, 0.58F, 1};
    Color night = {0.09F, 0.08F, 0.20F, 1};
    mGraphics.renderRadialGradient(mPoster.x(windowX), mPoster.y(-60), 120 * mPoster.scale, dawn.data(),
                                   980 * mPoster.scale, night.data());
    Color glow = {0.85F, 0.30F, 0.45F, 0.40F};
    Color none = {0.60F, 0.20F, 0.50F, 0};
    mGraphics.renderRadialGradient(mPoster.x(windowX), mPoster.y(560), 0, glow.data(), 430 * mPoster.scale,
                                   none.data());
}

// The coast moves to and fro behind the mask.
void VectorScene::drawWindow() {
    const float height = 2.3F * windowRadius;
    const float pan = 0.5F + 0.5F * std::sin(twoPi * mTime);
    const float left = windowX - 0.5F * height - height * pan;
    mGraphics.renderAlphaMaskedBitmapRectangle(mPoster.x(left), mPoster.y(windowY - 0.5F * height),
                                               2 * height * mPoster.scale, height * mPoster.scale,
                                               static_cast<int>(mCoast.name()), static_cast<int>(mMask.name()));
}

void VectorScene::drawBoats() {
    constexpr int columns = 3;
    constexpr int rotations = 6;
    constexpr float size = 128;
    constexpr float gap = 22;
    const float left = 0.5F * (Poster::width - columns * size - (columns - 1) * gap);
    for (int rotation = 0; rotation < rotations; ++rotation) {
        const int row = rotation / columns;
        const float boatX = left + static_cast<float>(rotation % columns) * (size + gap);
        const float boatY = 460 + static_cast<float>(row) * (size + gap);
        mGraphics.renderRotatedBitmapRectangle(mPoster.x(boatX), mPoster.y(boatY), size * mPoster.scale,
                                               size * mPoster.scale, mBoat.name(), rotation);
    }
}

void VectorScene::drawLights() {
    constexpr float radius = 58;
    constexpr float orbit = 36;
    Color colors[3] = {{0.95F, 0.12F, 0.20F, 0.9F}, {0.10F, 0.85F, 0.30F, 0.9F}, {0.15F, 0.30F, 1.00F, 0.9F}};
    setBlend(mGraphics, static_cast<Blend>(mValues[BLEND]));
    for (int i = 0; i < 3; ++i) {
        const float angle = twoPi * (mTime + static_cast<float>(i) / 3 - 0.25F);
        mGraphics.renderCircle(mPoster.x(140 + orbit * std::cos(angle)), mPoster.y(845 + orbit * std::sin(angle)),
                               radius * mPoster.scale, colors[i].data());
    }
    setBlend(mGraphics, Blend::Over);
}

void VectorScene::drawBubbles() {
    for (const Bubble& bubble : mBubbles) {
        const float progress = std::fmod(bubble.start + bubble.rise * mTime, 1.0F);
        const float sway = 12 * std::sin(twoPi * (3 * progress + bubble.start));
        drawBubble(mPoster.x(bubble.x + sway), mPoster.y(Poster::height + 60 - (Poster::height + 120) * progress),
                   bubble.diameter * mPoster.scale);
    }
}

// A rim, the background seen through it, and a highlight.
void VectorScene::drawBubble(float centerX, float centerY, float diameter) {
    Color rim = {1, 0.95F, 0.88F, 0.55F};
    Color tint = {0, 0, 0, 0.9F};
    Color highlight = {1, 1, 1, 0.6F};
    mGraphics.renderCircle(centerX, centerY, 0.5F * diameter + 2 * mPoster.scale, rim.data());
    mGraphics.renderBitmapCircle(centerX, centerY, diameter, tint.data(), mBackground.name());
    mGraphics.renderCircle(centerX - 0.2F * diameter, centerY - 0.22F * diameter, 0.07F * diameter, highlight.data());
}

void VectorScene::drawLenses() {
    for (const Finger& finger : mFingers) {
        if (finger.down) drawBubble(finger.x, finger.y, mValues[LENS] * mPoster.scale);
    }
}

void VectorScene::drawVignette() {
    Color middle = {1, 1, 1, 1};
    Color corner = {0.55F, 0.52F, 0.66F, 1};
    setBlend(mGraphics, Blend::Multiply);
    mGraphics.renderRadialGradient(mPoster.x(0.5F * Poster::width), mPoster.y(0.5F * Poster::height),
                                   330 * mPoster.scale, middle.data(), 600 * mPoster.scale, corner.data());
}

} // namespace tidalume::gallery
