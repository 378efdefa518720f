#pragma once

#include "effects/water/ShallowWaterIterative.h"
#include "gallery/Scene.h"
#include "gallery/scenes/WaterSurface.h"

#include <array>

namespace tidalume::gallery {

/// A clear brook: fingers draw furrows, and drops fall. Their rings meet and come back from the edges.
class WaterScene : public Scene {
  public:
    WaterScene();

    void setUp(int width, int height, const Picture& background) override;
    void contextLost() override;
    void touch(const Touch& touch) override;
    void drawFrame() override;
    std::vector<Touch> demonstration(int frame) const override;

  private:
    /// Where a finger was when the water was last disturbed, and where it is.
    struct Finger { // in pixels of the screen
        float from[2];
        float to[2];
        bool moved;
        bool isNew; // it has just come down
    };

    void disturb();

    ShallowWaterIterative mWater;
    WaterSurface mSurface;
    std::array<Finger, pointerCount> mFingers = {};
    int mWidth = 1;
    int mHeight = 1;
    float mRadius = 1;
    float mStrength = 1;
    float mIterations = 4; // per frame
    float mDepth = 1;
};

} // namespace tidalume::gallery
