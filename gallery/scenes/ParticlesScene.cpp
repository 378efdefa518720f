#include "gallery/scenes/ParticlesScene.h"

#include <algorithm>
#include <cmath>

namespace tidalume::gallery {

namespace {

constexpr float opaqueAlphaFactor = 12.5F; // the effect paints with 0.08 of it as alpha
constexpr float largestParticle = 90;      // radius in pixels, on any screen

} // namespace

void ParticlesScene::setUp(int width, int height, const Picture&) {
    mWidth = width;
    mHeight = height;
    mUnit = static_cast<float>(std::min(width, height)) / 540;
    mGraphics.init();
    mGraphics.setScreenSize(width, height);
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
    if (touch.pointer < 0 || touch.pointer >= static_cast<int>(mEmitters.size())) return;
    const int action = touch.action == TouchAction::Down ? press : touch.action == TouchAction::Up ? release : stream;
    mEmitters[static_cast<std::size_t>(touch.pointer)].push(touch.x, touch.y, action);
}

void ParticlesScene::drawFrame() {
    if (!mFieldFits) fitField();
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
    drawBackdrop();
    for (MetaballRenderer& emitter : mEmitters)
        emitter.render(mRadius * mUnit, opaqueAlphaFactor * mOpacity);
    drawTint();
}

// Three fingers go down one after another, sweep to and fro, and leave one after another.
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
        const float sweep = std::sin(6.2831853F * static_cast<float>(step - 4) / (length - 4));
        const float angle = (i % 2 == 0 ? 0.8F : -0.8F) * sweep;
        const float reach = 0.16F * static_cast<float>(std::min(mWidth, mHeight));
        const TouchAction action = step == length ? TouchAction::Up : TouchAction::Move;
        touches.push_back({pressX + reach * std::sin(angle), pressY - reach * std::cos(angle), action, i});
    }
    return touches;
}

const std::vector<Parameter>& ParticlesScene::parameters() const {
    static const std::vector<Parameter> parameters = {
        {"radius", "Size of the blob under a finger", 10, 100, 50},
        {"opacity", "Opacity", 0.1F, 1, 1},
        {"quality", "Pixels per field texel", 1, 6, 2},
    };
    return parameters;
}

void ParticlesScene::set(std::string_view name, float value) {
    if (name == "radius") mRadius = std::clamp(value, 10.0F, 100.0F);
    if (name == "opacity") mOpacity = std::clamp(value, 0.1F, 1.0F);
    if (name == "quality") mQuality = std::clamp(value, 1.0F, 6.0F);
    mFieldFits = false;
}

// A field coarse enough that the largest sprite stays within what the driver draws.
void ParticlesScene::fitField() {
    GLfloat sizes[2] = {1, 1};
    glGetFloatv(GL_ALIASED_POINT_SIZE_RANGE, sizes);
    constexpr float spritePerRadius = 2 * 1.21F;
    const float largest = std::max(largestParticle, mRadius * mUnit) * spritePerRadius;
    for (MetaballRenderer& emitter : mEmitters) {
        emitter.init(std::max(mQuality, largest / sizes[1]));
        emitter.setScreenSize(mWidth, mHeight);
    }
    mFieldFits = true;
}

void ParticlesScene::drawBackdrop() {
    float depth[4] = {0.07F, 0.09F, 0.20F, 1};
    float glow[4] = {0.24F, 0.25F, 0.85F, 1};
    mGraphics.setBlendFunction(GL_ONE, GL_ZERO, GL_ONE, GL_ZERO);
    mGraphics.renderRadialGradient(0.5F * static_cast<float>(mWidth), 1.05F * static_cast<float>(mHeight), 0, glow,
                                   1.1F * static_cast<float>(mHeight), depth);
}

// The effect paints white: gradients that multiply give the drops their colours.
void ParticlesScene::drawTint() {
    float yellow[4] = {1.00F, 0.86F, 0.42F, 1};
    float coral[4] = {1.00F, 0.42F, 0.48F, 1};
    float clear[4] = {1.00F, 1.00F, 1.00F, 1};
    float violet[4] = {0.66F, 0.55F, 1.00F, 1};
    const auto width = static_cast<float>(mWidth);
    const auto height = static_cast<float>(mHeight);
    mGraphics.setBlendFunction(GL_DST_COLOR, GL_ZERO, GL_ZERO, GL_ONE);
    mGraphics.renderRadialGradient(0.5F * width, 0.95F * height, 0.1F * height, yellow, 0.6F * height, coral);
    mGraphics.renderRadialGradient(0.5F * width, 0.95F * height, 0.4F * height, clear, 1.0F * height, violet);
}

} // namespace tidalume::gallery
