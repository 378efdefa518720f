#include "looks/SprayLook.h"

#include "effects/metaball/MetaballRenderer.h"
#include "looks/FieldPainter.h"
#include "looks/FieldParameters.h"
#include "looks/FieldScreen.h"
#include "looks/LookImplementation.h"
#include "looks/TouchBall.h"

#include <algorithm>
#include <array>

namespace tidalume {

namespace {

constexpr const char* paletteNames[] = {"sunset", "lagoon", "orchid"};

constexpr Parameter parameters[] = {
    {"palette", "Colours", "", 0, 2, SprayLook::SUNSET, "Sunset and orchid are warm, lagoon is cool.", paletteNames},
    outlines,
    hue,
    opacity,
    {"touchRadius", "Radius of a finger's blob", "shorter sides", 0.02F, 0.2F, 0.09F, "A finger's blob is larger.", {}},
};

constexpr Setting lagoon[] = {{"palette", SprayLook::LAGOON}, {"touchRadius", 0.11F}};
constexpr Setting glass[] = {{"palette", SprayLook::ORCHID}, {"opacity", 0.6F}, {"touchRadius", 0.12F}};

constexpr Preset presets[] = {
    {"sunset", "Sunset", {}},
    {"lagoon", "Lagoon", lagoon},
    {"glass", "Glass", glass},
};

constexpr FieldPainter::Colors palettes[] = {
    {{1.00F, 0.85F, 0.40F}, {1.00F, 0.44F, 0.46F}, {0.58F, 0.26F, 0.62F}},
    {{0.62F, 0.98F, 0.80F}, {0.16F, 0.68F, 0.90F}, {0.30F, 0.28F, 0.78F}},
    {{1.00F, 0.72F, 0.78F}, {0.86F, 0.42F, 0.86F}, {0.40F, 0.36F, 0.92F}},
};

constexpr int fieldSide = 540;      // on which the effect's drops have the sizes and speeds that look well
constexpr float largestDrop = 90;   // of the effect, in pixels of it
constexpr int lifetimeOfDrop = 235; // in steps: it shrinks after 200, for at most 30 more

struct Emitter {
    MetaballRenderer particles;
    TouchBall ball;
    bool isSpraying = false;
    int stepsLeft = 0; // until all drops have gone
};

class Spray final : public LookImplementation {
  public:
    Spray() : LookImplementation(parameters, presets) {}

    void createPrograms() override;
    void abandon() override;
    void fitSurface() override;
    void touch(int finger, float x, float y, TouchPhase phase) override;
    void step() override;
    void draw(GLuint framebuffer) override;
    bool isMoving() const override;

  private:
    void fitField();
    FieldPainter::Colors colors() const;

    std::array<Emitter, SprayLook::SPRAYING_FINGERS> mEmitters;
    FieldScreen mScreen{fieldSide};
    FieldPainter mPainter;
};

void Spray::createPrograms() {
    for (Emitter& emitter : mEmitters)
        emitter.particles.init(1);
    mPainter.createPrograms();
}

void Spray::abandon() {
    for (Emitter& emitter : mEmitters) {
        emitter.particles.push(0, 0, MetaballRenderer::ACTION_RELEASE);
        emitter.particles.GLContextDestroyed();
        emitter.ball.isDown = emitter.isSpraying = false;
    }
    mPainter.abandon();
}

void Spray::fitSurface() {
    mScreen.fit(width(), height());
    fitField();
}

void Spray::fitField() {
    const float largest = std::max(largestDrop, value(SprayLook::TOUCH_RADIUS) * fieldSide);
    if (!mScreen.fitQuality(value(SprayLook::FIELD_SCALE), largest)) return;
    for (Emitter& emitter : mEmitters) {
        emitter.particles.init(mScreen.quality());
        emitter.particles.setScreenSize(mScreen.width(), mScreen.height());
    }
}

// The screen may not fit the surface yet.
void Spray::touch(int finger, float x, float y, TouchPhase phase) {
    if (finger >= SprayLook::SPRAYING_FINGERS) return;
    Emitter& emitter = mEmitters[static_cast<std::size_t>(finger)];
    const bool isNew = phase == TouchPhase::Down;
    emitter.ball.touch(x, y, phase);
    emitter.isSpraying = phase == TouchPhase::Move;
    if (isNew) emitter.stepsLeft = 0;
    const int action = isNew                ? MetaballRenderer::ACTION_PRESS
                       : emitter.isSpraying ? MetaballRenderer::ACTION_STREAM
                                            : MetaballRenderer::ACTION_RELEASE;
    const float scale = fieldSide / shorterSide();
    emitter.particles.push(x * scale, y * scale, action);
}

void Spray::step() {
    for (Emitter& emitter : mEmitters) {
        emitter.particles.update();
        emitter.ball.step();
        emitter.stepsLeft = emitter.isSpraying ? lifetimeOfDrop : std::max(0, emitter.stepsLeft - 1);
    }
}

void Spray::draw(GLuint framebuffer) {
    fitField();
    const FieldPainter::Colors tint = colors();
    for (Emitter& emitter : mEmitters) {
        if (emitter.stepsLeft == 0 && emitter.ball.size == 0) continue;
        emitter.particles.addToField(emitter.ball.size * value(SprayLook::TOUCH_RADIUS) * fieldSide);
        glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
        glViewport(0, 0, width(), height());
        mPainter.paint(emitter.particles.getTexture(), mScreen, tint);
    }
}

FieldPainter::Colors Spray::colors() const {
    FieldPainter::Colors shown = palettes[static_cast<std::size_t>(value(SprayLook::PALETTE))];
    for (Color* color : {&shown.bottom, &shown.middle, &shown.top}) {
        *color = rotateHue(*color, value(SprayLook::HUE));
        color->alpha = value(SprayLook::OPACITY);
    }
    return shown;
}

bool Spray::isMoving() const {
    return std::any_of(mEmitters.begin(), mEmitters.end(),
                       [](const Emitter& emitter) { return emitter.stepsLeft > 0 || emitter.ball.isMoving(); });
}

} // namespace

SprayLook::SprayLook() : Look(std::make_unique<Spray>()) {}

SprayLook::~SprayLook() = default;

} // namespace tidalume
