#include "gallery/scenes/CometScene.h"

#include "gallery/Math.h"
#include "gallery/Random.h"

#include <algorithm>
#include <cmath>

namespace tidalume::gallery {

namespace {

constexpr float frameTime = 1.0F / 60;
constexpr float sparkLife = 0.8F; // in seconds
// The effect reports the heads ahead of where it draws them. The sparks wait for the comet to arrive.
constexpr float sparkInitialAge = -0.12F;

// Hard-edged discs far larger than the screen, from back to front, in units of the width.
struct Hill {
    float x = 0;
    float top = 0; // of the disc, above the bottom edge
    float radius = 0;
    Color color;
};

constexpr Hill hills[] = {
    {0.80F, 0.250F, 0.95F, {0.070F, 0.085F, 0.190F, 1}},
    {0.10F, 0.200F, 0.80F, {0.050F, 0.062F, 0.150F, 1}},
    {0.62F, 0.130F, 1.60F, {0.030F, 0.038F, 0.100F, 1}},
    {0.05F, 0.080F, 1.20F, {0.016F, 0.020F, 0.060F, 1}},
};

} // namespace

CometScene::CometScene() {
    for (Star& star : mStars) {
        // Many faint stars, few bright ones.
        const float size = std::pow(randomBetween(0, 1), 4.0F);
        star.x = randomBetween(0, 1);
        star.y = randomBetween(0, 0.9F);
        star.radius = 0.7F + 1.3F * size;
        star.warmth = randomBetween(0, 1);
        star.brightness = 0.25F + 0.65F * size;
        star.phase = randomBetween(0, twoPi);
    }
    mParameters = {
        {"duration", "Seconds of a flight", 0.4F, 4, mDuration},
        {"sparks", "Sparks per head and frame", 0, 4, mSparkRate},
        {"blend", "Blend of the sparks", blendNames(), mBlend},
        {"hue", "Colour", -180, 180, mHue},
    };
}

void CometScene::setUp(int width, int height, const Picture&) {
    mWidth = width;
    mHeight = height;
    mUnit = static_cast<float>(width) / 540;
    mGraphics.init();
    mGraphics.setScreenSize(width, height);
    for (Flight& flight : mFlights) {
        flight.comets.init();
        flight.comets.setScreenSize(width, height);
    }
}

void CometScene::contextLost() {
    mGraphics.GLContextDestroyed();
    for (Flight& flight : mFlights)
        flight.comets.GLContextDestroyed();
}

void CometScene::touch(const Touch& touch) {
    if (touch.action == TouchAction::Down) launch(touch.x, touch.y);
}

void CometScene::launch(float x, float y) {
    constexpr int launchAction = 0;
    Flight& flight = mFlights[mNextFlight];
    mNextFlight = (mNextFlight + 1) % mFlights.size();
    flight.comets.push(x, y, launchAction);
    flight.progress = 0;
}

void CometScene::drawFrame() {
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
    setBlend(mGraphics, Blend::Over);
    drawSky();
    drawStars();
    drawHills();
    drawSparks();
    glBlendEquation(GL_FUNC_ADD); // the comets set no equation of their own
    for (Flight& flight : mFlights)
        drawFlight(flight);
    ++mFrame;
}

// Two whole flights in two seconds, and a third one halfway at the end.
std::vector<Touch> CometScene::demonstration(int frame) const {
    constexpr int period = 120;
    struct Launch {
        int frame;
        float x, y;
    };
    constexpr Launch launches[] = {{2, 0.50F, 0.42F}, {44, 0.36F, 0.56F}, {86, 0.60F, 0.45F}};
    for (const Launch& launch : launches) {
        const float x = launch.x * static_cast<float>(mWidth);
        const float y = launch.y * static_cast<float>(mHeight);
        if (frame % period == launch.frame) return {{x, y, TouchAction::Down}};
        if (frame % period == launch.frame + 4) return {{x, y, TouchAction::Up}};
    }
    return {};
}

void CometScene::drawGlow(float x, float y, float begin, const Color& inner, float end, const Color& outer) {
    mGraphics.renderRadialGradient(x, y, begin, rotateHue(inner, mHue).data(), end, rotateHue(outer, mHue).data());
}

void CometScene::drawDot(float x, float y, float radius, const Color& color) {
    mGraphics.renderCircle(x, y, radius, rotateHue(color, mHue).data());
}

// Night blue that brightens towards the horizon, with the last daylight at the left and a faint cloud of stars at the
// right.
void CometScene::drawSky() {
    const auto width = static_cast<float>(mWidth);
    const auto height = static_cast<float>(mHeight);
    const float size = std::max(width, height);
    drawGlow(0.5F * width, height + 0.35F * size, 0.3F * size, {0.150F, 0.160F, 0.360F, 1}, 1.35F * size,
             {0.008F, 0.012F, 0.045F, 1});
    drawGlow(0.12F * width, height, 0, {0.420F, 0.240F, 0.400F, 0.60F}, 0.62F * size, {0.180F, 0.160F, 0.400F, 0});
    drawGlow(0.80F * width, 0.22F * height, 0, {0.330F, 0.280F, 0.560F, 0.20F}, 0.50F * size,
             {0.120F, 0.140F, 0.400F, 0});
}

void CometScene::drawStars() {
    for (const Star& star : mStars) {
        const float twinkle = 0.8F + 0.2F * std::sin(star.phase + 0.09F * static_cast<float>(mFrame));
        drawDot(star.x * static_cast<float>(mWidth), star.y * static_cast<float>(mHeight), star.radius * mUnit,
                {0.80F + 0.20F * star.warmth, 0.92F, 1 - 0.25F * star.warmth, star.brightness * twinkle});
    }
}

void CometScene::drawHills() {
    for (const Hill& hill : hills) {
        const auto width = static_cast<float>(mWidth);
        const float radius = hill.radius * width;
        const float y = static_cast<float>(mHeight) - hill.top * width + radius;
        const Color beyond = {hill.color.red, hill.color.green, hill.color.blue, 0};
        drawGlow(hill.x * width, y, radius - 0.7F, hill.color, radius + 0.7F, beyond);
    }
}

void CometScene::drawFlight(Flight& flight) {
    if (flight.progress >= 1) return;
    flight.comets.render(static_cast<double>(flight.progress));
    const float brightness = std::sin(pi * flight.progress);
    const auto sparks = static_cast<int>(std::lround(mSparkRate));
    for (int i = 0; i < sparks; ++i) {
        addSpark(flight.comets.getCore1X(), flight.comets.getCore1Y(), brightness);
        addSpark(flight.comets.getCore2X(), flight.comets.getCore2Y(), brightness);
    }
    flight.progress += frameTime / mDuration;
}

void CometScene::addSpark(float x, float y, float brightness) {
    const float direction = randomBetween(0, twoPi);
    const float speed = randomBetween(0, 26) * mUnit;
    mSparks[mNextSpark] = {x + randomBetween(-4, 4) * mUnit,
                           y + randomBetween(-4, 4) * mUnit,
                           speed * std::cos(direction),
                           speed * std::sin(direction),
                           randomBetween(0.8F, 1.9F) * mUnit,
                           sparkInitialAge,
                           brightness};
    mNextSpark = (mNextSpark + 1) % mSparks.size();
}

void CometScene::drawSparks() {
    setBlend(mGraphics, toBlend(mBlend));
    for (Spark& spark : mSparks) {
        if (spark.age >= 1) continue;
        spark.age += frameTime / sparkLife;
        if (spark.age < 0) continue;
        const float remaining = 1 - spark.age;
        drawDot(spark.x, spark.y, spark.radius,
                {1, 0.86F + 0.14F * remaining, 0.62F + 0.38F * remaining, 0.85F * spark.brightness * remaining});
        spark.x += spark.velocityX * frameTime;
        spark.y += spark.velocityY * frameTime;
        spark.velocityY += 40 * mUnit * frameTime; // gravity
    }
}

} // namespace tidalume::gallery
