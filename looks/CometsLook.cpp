#include "looks/CometsLook.h"

#include "effects/vector/VectorGraphicRenderer.h"
#include "foundation/ColorTarget.h"
#include "looks/CometPainter.h"
#include "looks/Light.h"
#include "looks/LookImplementation.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

namespace tidalume {

namespace {

constexpr Parameter parameters[] = {
    {"duration", "Time of a flight", "seconds", 0.4F, 6, 1.5F, "Comets fly more slowly.", {}},
    {"brightness", "Brightness of the tails", "layers", 1, 6, 3, "Tails are less transparent, in whole layers.", {}},
    {"glow", "Width of the heads' glow", "shorter sides", 0, 0.6F, 0.24F, "Heads shine wider.", {}},
    {"sparks", "Sparks", "a second and head", 0, 120, 60, "More sparks fall from the heads.", {}},
    {"headHue", "Colour of the heads", "degrees", 0, 359, 41, "From red over green and blue back to red.", {}},
    {"tailHue", "Colour of the tails", "degrees", 0, 359, 213, "From red over green and blue back to red.", {}},
    {"meteors", "Meteors", "launches a minute", 0, 120, 24, "More comets come by themselves.", {}},
};

constexpr Setting wish[] = {{"meteors", 0}, {"duration", 2.6F}, {"glow", 0.34F}, {"sparks", 40}, {"tailHue", 268}};
constexpr Setting embers[] = {{"meteors", 0},  {"duration", 2},  {"brightness", 4}, {"sparks", 110},
                              {"headHue", 32}, {"tailHue", 348}, {"glow", 0.28F}};
constexpr Setting aurora[] = {{"meteors", 12}, {"duration", 3.5F}, {"brightness", 4}, {"sparks", 20},
                              {"headHue", 95}, {"tailHue", 168},   {"glow", 0.30F}};

constexpr Preset presets[] = {
    {"meteorShower", "Meteor shower", {}},
    {"wish", "Wish", wish},
    {"embers", "Embers", embers},
    {"aurora", "Aurora", aurora},
};

constexpr float stepTime = 1.0F / 60;
constexpr float pi = 3.1415927F;
constexpr float margin = 0.15F; // around the points of meteors, as a share of the surface

constexpr float headSaturation = 0.45F;
constexpr float tailSaturation = 0.7F;

// Of sparks, in shorter sides and seconds.
constexpr float sparkLife = 0.9F;
constexpr float sparkWidths[2] = {0.012F, 0.03F};
constexpr float sparkScatter = 0.006F;
constexpr float sparkSpeed = 0.1F;
constexpr float sparkDrag = 0.12F; // share of its comet's velocity
constexpr float gravity = 0.3F;

// Two comets.
struct Flight {
    CometRenderer comets;
    float progress = 1; // 0 to 1; from 1 on the flight is over
    float sparksDue = 0;
};

struct Spark {
    float x = 0, y = 0;                 // as shares of the surface
    float velocityX = 0, velocityY = 0; // in shorter sides a second
    float width = 0;                    // in shorter sides
    float age = 1;                      // in lifetimes; from 1 on it is gone
};

class Comets final : public LookImplementation {
  public:
    Comets() : LookImplementation(parameters, presets) {}

    void createPrograms() override;
    void abandon() override;
    void fitSurface() override;
    void touch(int finger, float x, float y, TouchPhase phase) override;
    void step() override;
    void draw(GLuint framebuffer) override;
    bool isMoving() const override;

  private:
    bool isFlying() const;
    float sharesX(float shorterSides) const { return shorterSides * shorterSide() / static_cast<float>(width()); }
    float sharesY(float shorterSides) const { return shorterSides * shorterSide() / static_cast<float>(height()); }
    void launch(float x, float y);
    void launchMeteors();
    void advance(Flight& flight);
    void addSpark(Flight& flight, int comet, float t);
    void moveSparks();
    void fitLights();
    void drawComets();
    void drawGlow();
    void drawSparks();
    void drawLight(float x, float y, float shorterSides, const ColorTarget& light);

    VectorGraphicRenderer mGraphics;
    CometPainter mPainter;
    ColorTarget mGlow;
    ColorTarget mEmber;
    float mLightHue = -1; // that both show; -1 before they are made
    std::array<Flight, 8> mFlights;
    std::size_t mNextFlight = 0;
    std::array<Spark, 800> mSparks = {};
    std::size_t mNextSpark = 0;
};

void Comets::createPrograms() {
    mGraphics.init();
    mPainter.createPrograms();
    for (Flight& flight : mFlights)
        flight.comets.init();
}

void Comets::abandon() {
    mGraphics.GLContextDestroyed();
    mPainter.abandon();
    for (Flight& flight : mFlights)
        flight.comets.GLContextDestroyed();
    mGlow.abandon();
    mEmber.abandon();
    mLightHue = -1;
}

void Comets::fitSurface() {
    mGraphics.setScreenSize(width(), height());
    for (Flight& flight : mFlights)
        flight.comets.setScreenSize(width(), height());
}

void Comets::touch(int, float x, float y, TouchPhase phase) {
    if (phase == TouchPhase::Down) launch(x, y);
}

// Draws the paths here, not when the first picture does: steps have to know them.
void Comets::launch(float x, float y) {
    Flight& flight = mFlights[mNextFlight];
    mNextFlight = (mNextFlight + 1) % mFlights.size();
    flight.comets.setScreenSize(width(), height());
    flight.comets.push(x, y, CometRenderer::ACTION_CONTINUE);
    flight.comets.updateControlPoints();
    flight.progress = 0;
}

void Comets::step() {
    launchMeteors();
    moveSparks();
    for (Flight& flight : mFlights) {
        if (flight.progress < 1) advance(flight);
    }
}

void Comets::launchMeteors() {
    if (random().between(0, 1) >= value(CometsLook::METEORS) / 60 * stepTime) return;
    const float x = random().between(margin, 1 - margin);
    const float y = random().between(margin, 1 - margin);
    launch(x * static_cast<float>(width()), y * static_cast<float>(height()));
}

void Comets::advance(Flight& flight) {
    const float last = flight.progress;
    flight.progress += stepTime / value(CometsLook::DURATION);
    flight.sparksDue += value(CometsLook::SPARKS) * stepTime;
    for (; flight.sparksDue >= 1; flight.sparksDue -= 1) {
        for (const int comet : {0, 1})
            addSpark(flight, comet, random().between(last, std::min(flight.progress, 1.0F)));
    }
}

void Comets::addSpark(Flight& flight, int comet, float t) {
    const Vector2 core = flight.comets.getDrawnCore(comet, t);
    const Vector2 ahead = flight.comets.getDrawnCore(comet, t + stepTime / value(CometsLook::DURATION));
    const Vector2 velocity = (ahead - core) / (stepTime * shorterSide());
    const float direction = random().between(0, 2 * pi);
    const float speed = random().between(0, sparkSpeed);
    mSparks[mNextSpark] = {
        core.x / static_cast<float>(width()) + sharesX(random().between(-sparkScatter, sparkScatter)),
        core.y / static_cast<float>(height()) + sharesY(random().between(-sparkScatter, sparkScatter)),
        sparkDrag * velocity.x + speed * std::cos(direction),
        sparkDrag * velocity.y + speed * std::sin(direction),
        random().between(sparkWidths[0], sparkWidths[1]) * std::sin(pi * t),
        0};
    mNextSpark = (mNextSpark + 1) % mSparks.size();
}

void Comets::moveSparks() {
    for (Spark& spark : mSparks) {
        if (spark.age >= 1) continue;
        spark.age += stepTime / sparkLife;
        spark.x += sharesX(spark.velocityX * stepTime);
        spark.y += sharesY(spark.velocityY * stepTime);
        spark.velocityY += gravity * stepTime;
    }
}

void Comets::draw(GLuint framebuffer) {
    if (mLightHue != value(CometsLook::HEAD_HUE)) fitLights();
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    glViewport(0, 0, width(), height());
    drawComets();
    mGraphics.setBlendFunction(GL_ONE, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    drawSparks();
    drawGlow();
}

void Comets::fitLights() {
    constexpr int glowSize = 128;
    constexpr int emberSize = 32;
    mLightHue = value(CometsLook::HEAD_HUE);
    const Color color = fromHue(mLightHue, headSaturation);
    paintLight(mGlow, glowSize, glowAt, color);
    paintLight(mEmber, emberSize, emberAt, color);
}

// One layer is faint.
void Comets::drawComets() {
    const CometPainter::Style style = {fromHue(value(CometsLook::TAIL_HUE), tailSaturation),
                                       fromHue(value(CometsLook::HEAD_HUE), headSaturation),
                                       std::round(value(CometsLook::BRIGHTNESS))};
    for (Flight& flight : mFlights) {
        if (flight.progress >= 1) continue;
        mPainter.paint(flight.comets, flight.progress, style, static_cast<float>(width()),
                       static_cast<float>(height()));
    }
}

// Widest in the middle of a flight.
void Comets::drawGlow() {
    for (Flight& flight : mFlights) {
        if (flight.progress >= 1) continue;
        for (const int comet : {0, 1}) {
            const Vector2 core = flight.comets.getDrawnCore(comet, flight.progress);
            drawLight(core.x, core.y, value(CometsLook::GLOW) * std::sqrt(std::sin(pi * flight.progress)), mGlow);
        }
    }
}

// Sparks burn down.
void Comets::drawSparks() {
    for (const Spark& spark : mSparks) {
        if (spark.age >= 1) continue;
        drawLight(spark.x * static_cast<float>(width()), spark.y * static_cast<float>(height()),
                  spark.width * (1 - spark.age), mEmber);
    }
}

void Comets::drawLight(float x, float y, float shorterSides, const ColorTarget& light) {
    const float size = shorterSides * shorterSide();
    mGraphics.renderBitmapRectangle(x - 0.5F * size, y - 0.5F * size, size, size, light.texture());
}

bool Comets::isFlying() const {
    return std::any_of(mFlights.begin(), mFlights.end(), [](const Flight& flight) { return flight.progress < 1; });
}

bool Comets::isMoving() const {
    const auto burns = [](const Spark& spark) { return spark.age < 1; };
    return value(CometsLook::METEORS) > 0 || isFlying() || std::any_of(mSparks.begin(), mSparks.end(), burns);
}

} // namespace

CometsLook::CometsLook() : Look(std::make_unique<Comets>()) {}

CometsLook::~CometsLook() = default;

} // namespace tidalume
