#pragma once

#include "effects/vector/VectorGraphicRenderer.h"
#include "gallery/Blend.h"
#include "gallery/PictureTexture.h"
#include "gallery/Scene.h"

#include <array>

namespace tidalume::gallery {

/// A poster of flat shapes: a coast that passes behind a window, a boat in all six orientations, coloured lights that
/// add up, and bubbles and a lens through which the background shows.
class VectorScene : public Scene {
  public:
    VectorScene();

    void setUp(int width, int height, const Picture& background) override;
    void contextLost() override;
    void touch(const Touch& touch) override;
    void drawFrame() override;
    std::vector<Touch> demonstration(int frame) const override;

  private:
    struct Bubble {
        float x;     // in units of the poster
        float start; // of the rise, 0 to 1
        float diameter;
        float rise; // whole heights in one period
    };

    struct Finger {
        float x, y;
        bool down;
    };

    float x(float posterX) const { return mLeft + mScale * posterX; }
    float y(float posterY) const { return mTop + mScale * posterY; }

    void drawBackdrop();
    void drawWindow();
    void drawBoats();
    void drawLights();
    void drawBubbles();
    void drawBubble(float centerX, float centerY, float diameter);
    void drawLenses();
    void drawVignette();

    VectorGraphicRenderer mGraphics;
    PictureTexture mBackground;
    PictureTexture mBoat;
    PictureTexture mCoast;
    PictureTexture mMask;
    std::array<Bubble, 14> mBubbles = {};
    std::array<Finger, pointerCount> mFingers = {};
    float mScale = 1; // pixels per unit of the poster, which is 540 x 960
    float mLeft = 0;
    float mTop = 0;
    float mTime = 0; // in periods
    float mSpeed = 1;
    float mLensDiameter = 120;
    float mBlend = static_cast<float>(Blend::Add);
    float mHue = 0;
};

} // namespace tidalume::gallery
