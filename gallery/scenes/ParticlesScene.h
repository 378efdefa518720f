#pragma once

#include "effects/metaball/MetaballRenderer.h"
#include "effects/vector/VectorGraphicRenderer.h"
#include "gallery/Scene.h"
#include "gallery/scenes/FieldQuality.h"

#include <array>

namespace tidalume::gallery {

/// A blob under each of up to three fingers sprays drops where the finger drags; they merge, slow down and shrink.
class ParticlesScene : public Scene {
  public:
    ParticlesScene();

    void setUp(int width, int height, const Picture& background) override;
    void contextLost() override;
    void touch(const Touch& touch) override;
    void drawFrame() override;
    std::vector<Touch> demonstration(int frame) const override;

  private:
    void fitField();
    void drawBackdrop();
    void drawTint();

    std::array<MetaballRenderer, 3> mEmitters; // one per finger
    VectorGraphicRenderer mGraphics;
    int mWidth = 1;
    int mHeight = 1;
    float mUnit = 1; // 1 pixel of a screen whose shorter side has 540
    float mRadius = 50;
    float mOpacity = 1;
    FieldQuality mQuality{2};
    float mHue = 0;
};

} // namespace tidalume::gallery
