#include "looks/WavesLook.h"

#include "looks/LookImplementation.h"
#include "looks/WaterSurface.h"

#include <algorithm>
#include <cmath>

namespace tidalume {

namespace {

constexpr Parameter parameters[] = {
    {"fieldScale", "Fineness of the waves", "texels a pixel", 0.1F, 1, 0.5F, "Finer waves, at a higher cost.", {}},
    {"speed", "Speed of the swell", "shorter sides a second", 0, 1, 0.144F, "Waves roll faster.", {}},
    {"length", "Length of the waves", "shorter sides", 0.08F, 1, 0.29F, "Crests lie further apart.", {}},
    {"bends", "Bends across the surface", "periods", 0, 8, 2, "Crests have more bends.", {}},
    {"sway", "Sway of the bends", "", 0, 1, 1, "Bends swing further to and fro.", {}},
    {"height", "Height of the waves", "", 0, 1, 0.5F, "Waves bend light and sky more.", {}},
    {"depth", "Depth of the water", "shorter sides", 0, 0.3F, 0.104F, "The picture is bent further.", {}},
    {"sky", "Reflection of the sky", "", 0, 1, 1, "Crests are brighter on one side and darker on the other.", {}},
    {"light", "Highlights", "", 0, 1, 0, "Crests glint where they face the light.", {}},
};

constexpr Setting ripple[] = {{"length", 0.12F}, {"bends", 4}, {"speed", 0.1F}, {"height", 0.35F}, {"light", 0.3F}};
constexpr Setting ocean[] = {{"length", 0.7F}, {"bends", 1}, {"speed", 0.25F}, {"height", 0.9F}, {"depth", 0.18F}};

constexpr Preset presets[] = {
    {"swell", "Swell", {}},
    {"ripple", "Ripple", ripple},
    {"ocean", "Ocean", ocean},
};

constexpr float stepTime = 1.0F / 60;
constexpr float swayPeriod = 2;       // in seconds
constexpr float bendAmplitude = 0.2F; // at full sway, in half distances of crests
constexpr float relief = 0.111F;      // from height 1 to shorter sides
constexpr float twoPi = 6.2831853F;

class Waves final : public LookImplementation {
  public:
    Waves() : LookImplementation(parameters, presets) {}

    void createPrograms() override;
    void abandon() override;
    void fitSurface() override;
    void touch(int finger, float x, float y, TouchPhase phase) override;
    void step() override;
    void draw(GLuint framebuffer) override;
    bool isMoving() const override { return value(WavesLook::SPEED) > 0 || value(WavesLook::SWAY) > 0; }

    WaterSurface& surface() { return mSurface; }

  private:
    void paintWaves();

    IntensityMapBuilder mWaves;
    WaterSurface mSurface;
    float mOffset = 0; // of the waves down the surface, in shorter sides
    float mSwayTime = 0;
    float mFingerY = 0;
};

void Waves::createPrograms() {
    mWaves.init();
    mSurface.createPrograms();
}

void Waves::abandon() {
    mWaves.GLContextDestroyed();
    mSurface.abandon();
}

void Waves::fitSurface() {
    mSurface.fitScreen(width(), height());
}

void Waves::touch(int finger, float, float y, TouchPhase phase) {
    if (finger != 0) return;
    if (phase == TouchPhase::Move) mOffset += (y - mFingerY) / shorterSide();
    mFingerY = y;
}

void Waves::step() {
    mOffset += value(WavesLook::SPEED) * stepTime;
    mSwayTime = std::fmod(mSwayTime + stepTime, swayPeriod);
}

void Waves::draw(GLuint framebuffer) {
    if (mSurface.fitField(value(WavesLook::FIELD_SCALE))) mWaves.setScreenSize(mSurface.columns(), mSurface.rows());
    paintWaves();
    mSurface.draw(mWaves.getTexture(),
                  {relief, value(WavesLook::DEPTH), value(WavesLook::SKY), value(WavesLook::LIGHT)}, framebuffer);
}

// The bands of the waves lie side by side and cover the field. Their curves sway together.
void Waves::paintWaves() {
    const float unit = mSurface.shorterSide();
    const float length = value(WavesLook::LENGTH);
    const float sway = value(WavesLook::SWAY) * std::cos(twoPi * mSwayTime / swayPeriod);
    // The amplitude also sets the width of a band, so it must not be negative: the curve runs backwards instead.
    const float amplitude = std::fabs(sway) * bendAmplitude * length / 2 * unit;
    const float bends = std::copysign(value(WavesLook::BENDS), sway);
    mOffset = std::fmod(mOffset, length);
    const float bottom = static_cast<float>(mSurface.rows()) / unit + length;
    for (float y = mOffset - 2 * length; y < bottom; y += length) {
        mWaves.addHorizontalWave(y * unit, length / 2 * unit - amplitude, value(WavesLook::HEIGHT), amplitude, bends,
                                 0);
    }
}

} // namespace

WavesLook::WavesLook() : Look(std::make_unique<Waves>()) {}

WavesLook::~WavesLook() = default;

void WavesLook::setPicture(GLuint texture, int width, int height, PictureTop top) {
    static_cast<Waves&>(change()).surface().setPicture(texture, width, height, top);
}

} // namespace tidalume
