#include "gallery/scenes/MetaballsScene.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace tidalume::gallery {

namespace {

constexpr float kTwoPi = 6.2831853F;
constexpr int kPeriod = 120;             // frames until the motion repeats
constexpr float kLargestRadius = 0.202F; // that a drop reaches, in shares of the unit

// One pass over the same drops, from the glow around them to the highlights: smaller radii, shifted towards the light
// at the upper left, in brighter colours. The inset takes the highlights from small drops first.
struct Layer {
    float scale; // of the radius
    float inset; // taken off the radius, in shares of the unit
    float shift; // to the left and up, in shares of the radius
    float color[4];
};

constexpr Layer kLayers[] = {
    {1.46F, 0.000F, 0.00F, {1.00F, 0.30F, 0.25F, 0.04F}},   {1.34F, 0.000F, 0.00F, {1.00F, 0.30F, 0.22F, 0.05F}},
    {1.22F, 0.000F, 0.00F, {1.00F, 0.30F, 0.22F, 0.06F}},   {1.11F, 0.000F, 0.00F, {1.00F, 0.32F, 0.20F, 0.07F}},
    {1.00F, -0.0015F, 0.00F, {0.58F, 0.06F, 0.20F, 0.50F}}, {1.00F, 0.000F, 0.00F, {0.58F, 0.06F, 0.20F, 1.00F}},
    {0.95F, 0.003F, 0.02F, {0.72F, 0.10F, 0.19F, 0.60F}},   {0.89F, 0.006F, 0.04F, {0.82F, 0.15F, 0.17F, 0.60F}},
    {0.83F, 0.010F, 0.06F, {0.91F, 0.22F, 0.15F, 0.60F}},   {0.76F, 0.014F, 0.08F, {0.96F, 0.30F, 0.14F, 0.60F}},
    {0.69F, 0.018F, 0.10F, {0.98F, 0.38F, 0.14F, 0.60F}},   {0.61F, 0.022F, 0.13F, {1.00F, 0.47F, 0.16F, 0.55F}},
    {0.53F, 0.025F, 0.16F, {1.00F, 0.56F, 0.20F, 0.50F}},   {0.44F, 0.027F, 0.19F, {1.00F, 0.66F, 0.28F, 0.50F}},
    {0.34F, 0.028F, 0.22F, {1.00F, 0.77F, 0.42F, 0.45F}},   {0.24F, 0.028F, 0.25F, {1.00F, 0.90F, 0.66F, 0.40F}},
};

constexpr float kTopColor[3] = {0.055F, 0.035F, 0.125F};
constexpr float kBottomColor[3] = {0.300F, 0.065F, 0.170F};

float randomBetween(float low, float high) {
    return low + (high - low) * static_cast<float>(lrand48() >> 7) * 0x1p-24F;
}

} // namespace

MetaballsScene::MetaballsScene()
    : mStreams{{{5, true, 0.30F, 0.150F, 0.14F, 0},
                {6, false, 0.68F, 0.125F, 0.16F, 0},
                {7, true, 0.80F, 0.075F, 0.10F, 0},
                {8, false, 0.22F, 0.060F, 0.12F, 0}}} {
    for (Stream& stream : mStreams) {
        stream.phase = randomBetween(0, 1);
        stream.place += randomBetween(-0.06F, 0.06F);
        stream.radius *= randomBetween(0.9F, 1.1F);
    }
}

void MetaballsScene::setUp(int width, int height, const Picture&) {
    mWidth = width;
    mHeight = height;
    mUnit = static_cast<float>(std::min(width, height));
    mFieldFits = false;
}

void MetaballsScene::contextLost() {
    mRenderer.GLContextDestroyed();
}

void MetaballsScene::touch(const Touch& touch) {
    if (touch.pointer < 0 || touch.pointer >= kPointerCount) return;
    Finger& finger = mFingers[static_cast<std::size_t>(touch.pointer)];
    finger.x = touch.x;
    finger.y = touch.y;
    finger.down = touch.action != TouchAction::Up;
}

void MetaballsScene::drawFrame() {
    if (!mFieldFits) fitField();
    moveFingers();
    placeBalls();
    drawBackdrop();
    drawLayers();
    ++mFrame;
}

std::vector<Touch> MetaballsScene::demonstration(int frame) const {
    constexpr int kFirst = 15;
    constexpr int kLast = 95;
    int const step = frame % kPeriod;
    if (step < kFirst || step > kLast) return {};
    float const share = static_cast<float>(step - kFirst) / (kLast - kFirst);
    float const x = static_cast<float>(mWidth) * (0.5F + 0.32F * std::sin(kTwoPi * share));
    float const y = static_cast<float>(mHeight) * (0.5F - 0.16F * std::cos(kTwoPi * share));
    TouchAction const action = step == kFirst ? TouchAction::Down : step == kLast ? TouchAction::Up : TouchAction::Move;
    return {{x, y, action, 0}};
}

const std::vector<Parameter>& MetaballsScene::parameters() const {
    static const std::vector<Parameter> parameters = {
        {"radius", "Size of the drops", 0.5F, 1.5F, 1},
        {"quality", "Pixels per field texel", 1, 6, 1},
    };
    return parameters;
}

void MetaballsScene::set(std::string_view name, float value) {
    if (name == "radius") mRadius = std::clamp(value, 0.5F, 1.5F);
    if (name == "quality") mQuality = std::clamp(value, 1.0F, 6.0F);
    mFieldFits = false;
}

// A field coarse enough that the largest drop's sprite stays within what the driver draws.
void MetaballsScene::fitField() {
    GLfloat sizes[2] = {1, 1};
    glGetFloatv(GL_ALIASED_POINT_SIZE_RANGE, sizes);
    constexpr float kSpritePerRadius = 2 * 1.21F;
    float const largest = kLargestRadius * mUnit * mRadius * kLayers[0].scale * kSpritePerRadius;
    mRenderer.init(std::max(mQuality, largest / sizes[1]));
    mRenderer.setScreenSize(mWidth, mHeight);
    mFieldFits = true;
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
    auto const width = static_cast<float>(mWidth);
    float const length = static_cast<float>(mHeight) + 0.5F * mUnit;
    float const time = static_cast<float>(mFrame % kPeriod) / kPeriod + stream.phase;
    for (int i = 0; i < stream.count; ++i) {
        float const way = std::fmod((static_cast<float>(i) + time) / static_cast<float>(stream.count), 1.0F);
        float const wave = std::sin(kTwoPi * (way * 1.5F + stream.phase));
        float const down = (stream.rising ? 1 - way : way) * length - 0.25F * mUnit;
        float const swelling = 1 + 0.22F * std::sin(kTwoPi * (way * 2 + stream.phase));
        mBalls.push_back({width * (stream.place + stream.sway * wave), down, stream.radius * mUnit * swelling, {}});
    }
}

// The drops come from and go to a pool at either end, whose surface rolls.
void MetaballsScene::placePools() {
    constexpr int kPerPool = 6;
    float const time = static_cast<float>(mFrame % kPeriod) / kPeriod;
    for (int i = 0; i < kPerPool; ++i) {
        auto const share = static_cast<float>(i) / (kPerPool - 1);
        float const roll = 0.035F * mUnit * std::sin(kTwoPi * (time + share * 1.3F));
        float const x = static_cast<float>(mWidth) * share;
        mBalls.push_back({x, static_cast<float>(mHeight) + 0.07F * mUnit + roll, 0.18F * mUnit, {}});
        mBalls.push_back({x, -0.09F * mUnit + roll, 0.15F * mUnit, {}});
    }
}

void MetaballsScene::placeFingers() {
    for (const Finger& finger : mFingers) {
        if (finger.size > 0) mBalls.push_back({finger.x, finger.y, 0.15F * mUnit * finger.size, {}});
    }
}

void MetaballsScene::drawBackdrop() const {
    constexpr int kStripes = 192;
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
    glEnable(GL_SCISSOR_TEST);
    for (int i = 0; i < kStripes; ++i) {
        int const bottom = mHeight * i / kStripes;
        float const share = (static_cast<float>(i) + 0.5F) / kStripes;
        glScissor(0, bottom, mWidth, mHeight * (i + 1) / kStripes - bottom);
        glClearColor(kBottomColor[0] + (kTopColor[0] - kBottomColor[0]) * share,
                     kBottomColor[1] + (kTopColor[1] - kBottomColor[1]) * share,
                     kBottomColor[2] + (kTopColor[2] - kBottomColor[2]) * share, 1);
        glClear(GL_COLOR_BUFFER_BIT);
    }
    glDisable(GL_SCISSOR_TEST);
}

void MetaballsScene::drawLayers() {
    for (const Layer& layer : kLayers) {
        mLayer = mBalls;
        for (Ball& ball : mLayer) {
            ball.x -= ball.radius * layer.shift;
            ball.y -= ball.radius * layer.shift * 1.3F;
            ball.radius = (ball.radius * layer.scale - layer.inset * mUnit) * mRadius;
        }
        float color[4];
        std::copy(std::begin(layer.color), std::end(layer.color), color);
        mRenderer.addMetaballs(&mLayer[0].x, static_cast<unsigned>(mLayer.size()));
        mRenderer.render(color);
    }
}

} // namespace tidalume::gallery
