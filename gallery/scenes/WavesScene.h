#pragma once

#include "effects/water/IntensityMapBuilder.h"
#include "gallery/Scene.h"
#include "gallery/scenes/WaterSurface.h"

namespace tidalume::gallery {

/// Swell that rolls down the screen, one sine curve behind the other; a finger pushes it.
class WavesScene : public Scene {
  public:
    WavesScene();

    void setUp(int width, int height, const Picture& background) override;
    void contextLost() override;
    void touch(const Touch& touch) override;
    void drawFrame() override;

  private:
    void paintWaves();

    IntensityMapBuilder mWaves;
    WaterSurface mSurface;
    float mOffset = 0; // of the waves down the screen, in texels
    float mFingerY = 0;
    int mFrame = 0;
    float mLength = 1;
    float mCount = 2;
    float mStrength = 1;
};

} // namespace tidalume::gallery
