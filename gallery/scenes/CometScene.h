#pragma once

#include "effects/comet/CometRenderer.h"
#include "effects/vector/VectorGraphicRenderer.h"
#include "gallery/Blend.h"
#include "gallery/Color.h"
#include "gallery/Scene.h"

#include <array>

namespace tidalume::gallery {

/// A clear night over hills: every touch sends two comets through the point, and sparks fall from their heads.
class CometScene : public Scene {
  public:
    CometScene();

    void setUp(int width, int height, const Picture& background) override;
    void contextLost() override;
    void touch(const Touch& touch) override;
    void drawFrame() override;
    std::vector<Touch> demonstration(int frame) const override;

  private:
    struct Star {
        float x, y; // as fractions of the width and the height
        float radius;
        float warmth; // 0 blue to 1 yellow
        float brightness, phase;
    };

    struct Flight {
        CometRenderer comets;
        float progress = 1; // 0 to 1; from 1 on the flight is over
    };

    struct Spark {
        float x = 0, y = 0;
        float velocityX = 0, velocityY = 0;
        float radius = 0;
        float age = 1; // in lifetimes: below 0 it has yet to appear, from 1 on it is gone
        float brightness = 0;
    };

    void launch(float x, float y);
    void drawGlow(float x, float y, float begin, const Color& inner, float end, const Color& outer);
    void drawDot(float x, float y, float radius, const Color& color);
    void drawSky();
    void drawStars();
    void drawHills();
    void drawFlight(Flight& flight);
    void addSpark(float x, float y, float brightness);
    void drawSparks();

    VectorGraphicRenderer mGraphics;
    std::array<Star, 180> mStars = {};
    std::array<Flight, 3> mFlights; // a new launch takes the oldest one's place
    std::size_t mNextFlight = 0;
    std::array<Spark, 400> mSparks = {};
    std::size_t mNextSpark = 0;
    int mWidth = 1;
    int mHeight = 1;
    float mUnit = 1; // 1 pixel of a screen 540 pixels wide
    int mFrame = 0;
    float mDuration = 1; // of a flight, in seconds
    float mSparkRate = 2;
    float mBlend = static_cast<float>(Blend::Over);
    float mHue = 0;
};

} // namespace tidalume::gallery
