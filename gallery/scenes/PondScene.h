#pragma once

#include "effects/water/ShallowWater.h"
#include "gallery/Scene.h"
#include "gallery/scenes/WaterSurface.h"

#include <array>

namespace tidalume::gallery {

/// A quiet pond: drops fall, and their rings run on for long.
class PondScene : public Scene {
  public:
    PondScene();

    void setUp(int width, int height, const Picture& background) override;
    void contextLost() override;
    void touch(const Touch& touch) override;
    void drawFrame() override;
    std::vector<Touch> demonstration(int frame) const override;

  private:
    struct Finger {
        float x, y; // in pixels of the screen
        bool drops; // a drop is to fall there in the next frame
    };

    ShallowWater mPond;
    WaterSurface mSurface;
    std::array<Finger, pointerCount> mFingers = {};
    int mWidth = 1;
    int mHeight = 1;
    float mRadius = 1;
    float mStrength = 0.6F;
    float mUpdates = 8; // per frame
    float mDepth = 1;
};

} // namespace tidalume::gallery
