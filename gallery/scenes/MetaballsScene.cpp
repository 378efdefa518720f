#include "gallery/scenes/MetaballsScene.h"

#include "gallery/Color.h"
#include "gallery/Math.h"
#include "gallery/Random.h"

#include <algorithm>
#include <cmath>

namespace tidalume::gallery {

namespace {

constexpr int period = 120;         // frames until the motion repeats
constexpr float maxRadius = 0.202F; // of a drop, in units

// One drawing of the drops. The layers go from the glow around them to the highlights, with smaller radii and brighter
// colours, shifted towards the light at the upper left.
struct Layer {
    float scale = 1; // of the radius
    float inset = 0; // taken off the radius, in units, so that small drops have no highlights
    float shift = 0; // to the left and up, as a fraction of the radius
    Color color;
};

constexpr Layer layers[] = {
    {1.40F, 0.000F, 0.00F, {1.00F, 0.30F, 0.25F, 0.07F}}, {1.18F, 0.000F, 0.00F, {1.00F, 0.30F, 0.22F, 0.10F}},
    {1.00F, 0.000F, 0.00F, {0.62F, 0.07F, 0.20F, 1.00F}}, {0.93F, 0.004F, 0.03F, {0.78F, 0.13F, 0.18F, 0.80F}},
    {0.81F, 0.010F, 0.07F, {0.92F, 0.24F, 0.15F, 0.80F}}, {0.66F, 0.016F, 0.11F, {0.99F, 0.42F, 0.15F, 0.70F}},
    {0.48F, 0.022F, 0.17F, {1.00F, 0.62F, 0.26F, 0.60F}}, {0.28F, 0.024F, 0.24F, {1.00F, 0.86F, 0.58F, 0.55F}},
};

} // namespace

MetaballsScene::MetaballsScene()
    : mStreams{{{5, true, 0.30F, 0.150F, 0.14F, 0},
                {6, false, 0.68F, 0.125F, 0.16F, 0},
                {7, true, 0.80F, 0.075F, 0.10F, 0},
                {8, false, 0.22F, 0.060F, 0.12F, 0}}} {
    for (Stream& stream : mStreams) {
        stream.phase = randomBetween(0, 1);
        stream.position += randomBetween(-0.06F, 0.06F);
        stream.radius *= randomBetween(0.9F, 1.1F);
    }
    mParameters = {
        {"radius", "Size of the drops", 0.5F, 1.5F, mRadius},
        mQuality.parameter(),
        {"hue", "Colour", -180, 180, mHue},
    };
}

void MetaballsScene::setUp(int width, int height, const Picture&) {
    mWidth = width;
    mHeight = height;
    mUnit = static_cast<float>(std::min(width, height));
    mQuality.setUp();
    mGraphics.init();
    mGraphics.setScreenSize(width, height);
}

void MetaballsScene::contextLost() {
    mRenderer.GLContextDestroyed();
    mGraphics.GLContextDestroyed();
}

void MetaballsScene::touch(const Touch& touch) {
    Finger& finger = mFingers[static_cast<std::size_t>(touch.pointer)];
    finger.x = touch.x;
    finger.y = touch.y;
    finger.down = touch.action != TouchAction::Up;
}

void MetaballsScene::drawFrame() {
    fitField();
    moveFingers();
    placeBalls();
    drawBackdrop();
    drawLayers();
    ++mFrame;
}

std::vector<Touch> MetaballsScene::demonstration(int frame) const {
    constexpr int first = 15;
    constexpr int last = 95;
    const int step = frame % period;
    if (step < first || step > last) return {};
    const float t = static_cast<float>(step - first) / (last - first);
    const float x = static_cast<float>(mWidth) * (0.5F + 0.32F * std::sin(twoPi * t));
    const float y = static_cast<float>(mHeight) * (0.5F - 0.16F * std::cos(twoPi * t));
    const TouchAction action = step == first ? TouchAction::Down : step == last ? TouchAction::Up : TouchAction::Move;
    return {{x, y, action, 0}};
}

void MetaballsScene::fitField() {
    if (!mQuality.fit(maxRadius * mUnit * mRadius * layers[0].scale)) return;
    mRenderer.init(mQuality.value());
    mRenderer.setScreenSize(mWidth, mHeight);
}

void MetaballsScene::moveFingers() {
    for (Finger& finger : mFingers) {
        finger.size += finger.down ? (1 - finger.size) * 0.15F : -finger.size * 0.2F;
        if (!finger.down && finger.size < 0.02F) finger.size = 0;
    }
}

void MetaballsScene::placeBalls() {
    mBalls.clear();
    for (const Stream& stream : mStreams)
        placeStream(stream);
    placePools();
    placeFingers();
}

void MetaballsScene::placeStream(const Stream& stream) {
    const auto width = static_cast<float>(mWidth);
    const float length = static_cast<float>(mHeight) + 0.5F * mUnit;
    const float time = static_cast<float>(mFrame % period) / period + stream.phase;
    for (int i = 0; i < stream.count; ++i) {
        const float progress = std::fmod((static_cast<float>(i) + time) / static_cast<float>(stream.count), 1.0F);
        const float wave = std::sin(twoPi * (progress * 1.5F + stream.phase));
        const float down = (stream.rising ? 1 - progress : progress) * length - 0.25F * mUnit;
        const float swelling = 1 + 0.22F * std::sin(twoPi * (progress * 2 + stream.phase));
        mBalls.push_back({width * (stream.position + stream.sway * wave), down, stream.radius * mUnit * swelling, {}});
    }
}

// The drops rise from and sink into a pool at either end, with a rolling surface.
void MetaballsScene::placePools() {
    constexpr int perPool = 6;
    const float time = static_cast<float>(mFrame % period) / period;
    for (int i = 0; i < perPool; ++i) {
        const auto across = static_cast<float>(i) / (perPool - 1);
        const float roll = 0.035F * mUnit * std::sin(twoPi * (time + across * 1.3F));
        const float x = static_cast<float>(mWidth) * across;
        mBalls.push_back({x, static_cast<float>(mHeight) + 0.07F * mUnit + roll, 0.18F * mUnit, {}});
        mBalls.push_back({x, -0.09F * mUnit + roll, 0.15F * mUnit, {}});
    }
}

void MetaballsScene::placeFingers() {
    for (const Finger& finger : mFingers) {
        if (finger.size > 0) mBalls.push_back({finger.x, finger.y, 0.15F * mUnit * finger.size, {}});
    }
}

void MetaballsScene::drawBackdrop() {
    Color glow = rotateHue({0.300F, 0.065F, 0.170F, 1.0F}, mHue);
    Color night = rotateHue({0.055F, 0.035F, 0.125F, 1.0F}, mHue);
    const auto width = static_cast<float>(mWidth);
    const auto height = static_cast<float>(mHeight);
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
    mGraphics.renderRadialGradient(0.5F * width, 1.1F * height, 0.0F, glow.data(), 1.1F * height, night.data());
}

void MetaballsScene::drawLayers() {
    for (const Layer& layer : layers) {
        mLayer = mBalls;
        for (Ball& ball : mLayer) {
            ball.x -= ball.radius * layer.shift;
            ball.y -= ball.radius * layer.shift * 1.3F;
            ball.radius = (ball.radius * layer.scale - layer.inset * mUnit) * mRadius;
        }
        Color color = rotateHue(layer.color, mHue);
        mRenderer.addMetaballs(&mLayer[0].x, static_cast<unsigned>(mLayer.size()));
        mRenderer.render(color.data());
    }
}

} // namespace tidalume::gallery
