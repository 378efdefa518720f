#pragma once

#include "effects/vector/VectorGraphicRenderer.h"
#include "gallery/Blend.h"
#include "gallery/PictureTexture.h"
#include "gallery/Scene.h"
#include "gallery/scenes/Poster.h"

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
    void redraw() override;
    Span<Parameter> parameters() const override;
    bool set(const char* parameter, float value) override;
    float get(int parameter) const override { return mValues[parameter]; }
    Span<Preset> presets() const override;
    bool usePreset(const char* name) override;

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
    Poster mPoster;
    float mTime = 0; // in periods
    float mValues[3] = {};
};

} // namespace tidalume::gallery
