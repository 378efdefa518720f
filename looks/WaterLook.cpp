#include "looks/WaterLook.h"

#include "effects/water/ShallowWater.h"
#include "effects/water/ShallowWaterIterative.h"
#include "looks/LookImplementation.h"
#include "looks/WaterSurface.h"
#include "looks/WaterTables.h"

#include <algorithm>
#include <cmath>

namespace tidalume {

using namespace water;

namespace {

constexpr const char* simulations[] = {"brook", "pond"};

constexpr Parameter parameters[] = {
    {"simulation", "Kind of water", "", 0, 1, WaterLook::BROOK,
     "A brook's rings are sharp and soon gone; a pond's are round and run on for long.", simulations},
    {"fieldScale",
     "Fineness of the ripples",
     "texels a pixel",
     0.1F,
     1,
     0.5F,
     "Finer ripples, at a cost that grows with the third power.",
     {}},
    {"speed", "Speed of the rings", "shorter sides a second", 0.1F, 1.5F, 0.63F, "Rings run faster.", {}},
    {"fade",
     "Fading of a pond's rings",
     "seconds",
     0.5F,
     12,
     3.7F,
     "A pond's rings take longer until a tenth of them is left.",
     {}},
    {"touchRadius", "Width of a finger", "shorter sides", 0.01F, 0.12F, 0.03F, "A touch raises wider rings.", {}},
    {"touchStrength", "Strength of a touch", "", 0, 1, 0.5F, "A touch raises higher rings.", {}},
    {"depth", "Depth of the water", "shorter sides", 0, 0.5F, 0.07F, "The picture is bent further.", {}},
    {"steepness", "Steepness of the ripples", "", 0, 1, 0.4F, "Rings bend light and sky more.", {}},
    {"sky", "Reflection of the sky", "", 0, 1, 1, "Rings are brighter on one side and darker on the other.", {}},
    {"light", "Highlights", "", 0, 1, 0, "Crests glint where they face the light.", {}},
    {"rain", "Rain", "drops a second", 0, 60, 0, "More drops fall.", {}},
};

constexpr Setting pool[] = {
    {"touchRadius", 0.045F}, {"touchStrength", 0.45F}, {"depth", 0.16F}, {"steepness", 0.3F}, {"light", 0.35F}};
constexpr Setting rain[] = {
    {"rain", 14}, {"touchRadius", 0.02F}, {"touchStrength", 0.6F}, {"depth", 0.05F}, {"light", 0.25F}};
constexpr Setting calmLake[] = {
    {"simulation", WaterLook::POND}, {"speed", 0.35F}, {"fade", 5}, {"touchRadius", 0.04F}, {"light", 0.15F}};
constexpr Setting storm[] = {{"rain", 45},    {"touchRadius", 0.04F}, {"touchStrength", 1}, {"speed", 0.9F},
                             {"depth", 0.1F}, {"steepness", 0.55F},   {"light", 0.5F}};

constexpr Preset presets[] = {
    {"brook", "Brook", {}},    {"pool", "Pool", pool}, {"rain", "Rain", rain}, {"calmLake", "Calm lake", calmLake},
    {"storm", "Storm", storm},
};

struct Finger {
    float fromX, fromY; // where the water was last disturbed, in pixels
    float x, y;
    bool moved;
    bool isNew; // it has just come down
};

class Water final : public LookImplementation {
  public:
    Water() : LookImplementation(parameters, presets) {}

    void createPrograms() override;
    void abandon() override;
    void fitSurface() override;
    void touch(int finger, float x, float y, TouchPhase phase) override;
    void step() override;
    void draw(GLuint framebuffer) override;
    bool isMoving() const override { return value(WaterLook::RAIN) > 0 || !isStill(); }

    WaterSurface& surface() { return mSurface; }

  private:
    bool isPond() const { return value(WaterLook::SIMULATION) == static_cast<float>(WaterLook::POND); }
    float relief() const { return value(WaterLook::STEEPNESS) * (isPond() ? pondRelief : brookRelief); }
    bool isStill() const;
    void fitSimulation();
    void fall(float dropsPerSecond);
    void disturb(Finger& finger);
    void disturbBrook(const Finger& finger);
    void disturbPond(float x, float y);
    void advancePond(int steps, float stepsToTenth);
    void advanceBrook(int iterations);

    ShallowWaterIterative mBrook;
    ShallowWater mPond;
    WaterSurface mSurface;
    Finger mFingers[Look::FINGERS] = {};
    bool mWasPond = false;
    float mPassesDue = 0;
    float mDropsDue = 0;
    float mSlope = 0;   // height over radius: no ring is steeper
    float mMean = 0;    // height of the whole brook, about
    int mPondPause = 0; // steps until the pond takes a drop
};

void Water::createPrograms() {
    mBrook.init();
    mPond.init();
    mSurface.createPrograms();
}

void Water::abandon() {
    mBrook.GLContextDestroyed();
    mPond.GLContextDestroyed();
    mSurface.abandon();
    std::fill(std::begin(mFingers), std::end(mFingers), Finger{});
    mSlope = mMean = 0;
}

void Water::fitSurface() {
    mSurface.fitScreen(width(), height());
    fitSimulation();
}

// Only the simulation that is shown has textures: a size of 0 deletes the other's.
void Water::fitSimulation() {
    const bool hadField = mSurface.columns() > 0;
    const bool isNewField = mSurface.fitField(value(WaterLook::FIELD_SCALE));
    const bool isNewKind = mWasPond != isPond();
    if (!isNewField && !isNewKind) return;
    mWasPond = isPond();
    const int columns = mSurface.columns();
    const int rows = mSurface.rows();
    mBrook.setScreenSize(mWasPond ? 0 : columns, mWasPond ? 0 : rows);
    mPond.setScreenSize(mWasPond ? columns : 0, mWasPond ? rows : 0);
    mPond.setStepRate(pondStepRate);
    mSlope = mMean = 0;
    if (!hadField || !isNewKind) return;
    for (Finger& finger : mFingers)
        finger.moved = finger.isNew = false;
}

void Water::touch(int index, float x, float y, TouchPhase phase) {
    Finger& finger = mFingers[index];
    if (phase == TouchPhase::Up || phase == TouchPhase::Cancel) {
        // What a pond's finger has moved by is not enough for a drop. One that came down and lifted at once is.
        finger.moved = finger.moved && (finger.isNew || !isPond());
        return;
    }
    if (phase == TouchPhase::Move && x == finger.x && y == finger.y)
        return; // a finger that rests beside one that moves
    finger.x = x;
    finger.y = y;
    finger.moved = true;
    if (phase == TouchPhase::Down) {
        finger.fromX = x;
        finger.fromY = y;
        finger.isNew = true;
    }
}

void Water::step() {
    fitSimulation();
    glDisable(GL_BLEND);
    glDisable(GL_DEPTH_TEST);
    mPondPause = std::max(0, mPondPause - 1);
    fall(value(WaterLook::RAIN));
    for (Finger& finger : mFingers) {
        if (finger.moved) disturb(finger);
    }
    if (isStill()) return; // half floats would go on flickering in their last bit
    const float courant = isPond() ? pondCourant : brookCourant;
    const float passes = std::min(value(WaterLook::SPEED) * mSurface.shorterSide() / courant * stepTime, maxPasses);
    mPassesDue += passes;
    const int due = static_cast<int>(mPassesDue);
    mPassesDue -= static_cast<float>(due);
    if (due == 0) return;
    if (isPond()) {
        advancePond(due, value(WaterLook::FADE) * passes / stepTime);
    } else {
        advanceBrook(due);
    }
}

// A drop for every whole one that has become due; how many those are is chance.
void Water::fall(float dropsPerSecond) {
    mDropsDue += 2 * random().between(0, dropsPerSecond) * stepTime;
    for (; mDropsDue >= 1; mDropsDue -= 1) {
        const float x = random().between(0, static_cast<float>(width()));
        const float y = random().between(0, static_cast<float>(height()));
        Finger drop = {x, y, x, y, true, true};
        disturb(drop);
    }
}

void Water::disturb(Finger& finger) {
    if (isPond()) {
        // Every drop halts the rings for a moment, which then run both outwards and inwards. A moving finger therefore
        // leaves space between its drops.
        const float distance = std::hypot(finger.x - finger.fromX, finger.y - finger.fromY);
        const bool isFar = distance >= pondDistance * value(WaterLook::TOUCH_RADIUS) * shorterSide();
        if (mPondPause > 0 || (!finger.isNew && !isFar)) return;
        disturbPond(finger.x, finger.y);
    } else {
        disturbBrook(finger);
    }
    finger.fromX = finger.x;
    finger.fromY = finger.y;
    finger.moved = finger.isNew = false;
}

// A line from the last position to the present one leaves no gap, however fast the finger is.
void Water::disturbBrook(const Finger& finger) {
    float from[2] = {mSurface.toColumn(finger.fromX), mSurface.toRow(finger.fromY)};
    float to[2] = {mSurface.toColumn(finger.x), mSurface.toRow(finger.y)};
    const float strength = (finger.isNew ? brookDrop : brookStroke) * value(WaterLook::TOUCH_STRENGTH);
    const float radius = value(WaterLook::TOUCH_RADIUS) * mSurface.shorterSide();
    mBrook.addDropLine(from, to, radius, strength, 1);
    mSlope = std::min(mSlope + strength / value(WaterLook::TOUCH_RADIUS), brookLimit / value(WaterLook::TOUCH_RADIUS));

    // A raised cosine holds 0.93 of its squared radius at the ends, and its radius along the line.
    const float length = std::hypot(to[0] - from[0], to[1] - from[1]);
    const auto texels = static_cast<float>(mSurface.columns()) * static_cast<float>(mSurface.rows());
    mMean += strength * (0.93F * radius + length) * radius / texels;
}

void Water::disturbPond(float x, float y) {
    const auto columns = static_cast<float>(mSurface.columns());
    const auto rows = static_cast<float>(mSurface.rows());
    const float strength = std::min(pondDrop * value(WaterLook::TOUCH_STRENGTH), pondDropLimit);
    // A drop is an ellipse on a screen that is not square. The mean of its two radii is the one that is set.
    const float radius = 4 * value(WaterLook::TOUCH_RADIUS) * mSurface.shorterSide() / (columns + rows);
    float center[2] = {2 * mSurface.toColumn(x) / columns - 1, 1 - 2 * mSurface.toRow(y) / rows};
    mPond.addDropLine(center, center, radius, strength);
    const float time = pondPause * value(WaterLook::TOUCH_RADIUS) / value(WaterLook::SPEED);
    mPondPause = static_cast<int>(std::ceil(time / stepTime));
    const float steepness = 1 / value(WaterLook::TOUCH_RADIUS);
    mSlope = std::min(mSlope + pondHeight * strength * steepness, pondLimit * steepness);
}

// A step multiplies heights by sqrt((2 - d) / (2 + d)), about exp(-d / 2), with d the viscosity times the time.
void Water::advancePond(int steps, float stepsToTenth) {
    const float damping = 2 * std::log(10.0F) / stepsToTenth;
    mPond.setPhysics(pondWaveSpeed, damping / pondTimeStep, pondGridSpacing, pondTimeStep);
    for (int i = 0; i < steps; ++i)
        mPond.update();
    mSlope *= std::exp(-damping / 2 * static_cast<float>(steps));
}

// Drops raise the whole brook in the end. It drains, since half floats are coarse at its height.
void Water::advanceBrook(int iterations) {
    if (mMean > drainFrom) {
        float anywhere[2] = {};
        mBrook.addDrop(anywhere, 1, 0, drain);
        mMean *= drain;
    }
    mBrook.setIterationCount(iterations);
    mBrook.update();
    mSlope *= std::pow(brookDecay, static_cast<float>(iterations));
}

void Water::draw(GLuint framebuffer) {
    fitSimulation();
    const WaterSurface::Optics optics = {relief(), value(WaterLook::DEPTH), value(WaterLook::SKY),
                                         value(WaterLook::LIGHT)};
    mSurface.draw(isPond() ? mPond.getTexture() : mBrook.getTexture(), optics, framebuffer);
}

// The ground under a pixel is shifted by less than the slope times the depth, and next to a hard edge a shift of a
// pixel is all of the difference. Sky and highlights change with the slope alone. Water that shows less than usual
// rests no sooner: more of it may be shown again.
bool Water::isStill() const {
    const float slope = mSlope * std::max(relief(), usualSteepness * (isPond() ? pondRelief : brookRelief));
    const float gain =
        std::max(value(WaterLook::DEPTH), usualDepth) * shorterSide() + skyGain + lightGain * value(WaterLook::LIGHT);
    return slope * gain <= visible;
}

} // namespace

WaterLook::WaterLook() : Look(std::make_unique<Water>()) {}

WaterLook::~WaterLook() = default;

void WaterLook::setPicture(GLuint texture, int width, int height, PictureTop top) {
    static_cast<Water&>(change()).surface().setPicture(texture, width, height, top);
}

} // namespace tidalume
