#pragma once

#include "effects/metaball/MetaballRenderer.h"
#include "effects/vector/VectorGraphicRenderer.h"
#include "gallery/Scene.h"

#include <array>

namespace tidalume::gallery {

/// A blob under each of up to three fingers sprays drops where the finger drags; they merge, slow down and shrink.
class ParticlesScene : public Scene {
  public:
    void setUp(int width, int height, const Picture& background) override;
    void contextLost() override;
    void touch(const Touch& touch) override;
    void drawFrame() override;
    std::vector<Touch> demonstration(int frame) const override;
    const std::vector<Parameter>& parameters() const override;
    void set(std::string_view name, float value) override;

  private:
    void fitField();
    void drawBackdrop();
    void drawTint();

    std::array<MetaballRenderer, 3> mEmitters; // one per finger
    VectorGraphicRenderer mGraphics;
    int mWidth = 1;
    int mHeight = 1;
    float mUnit = 1;         // 1 pixel of a screen whose shorter side has 540
    bool mFieldFits = false; // the size and the settings below
    float mRadius = 50;
    float mOpacity = 1;
    float mQuality = 2;
};

} // namespace tidalume::gallery
