#pragma once

#include "effects/metaball/Metaball2DRenderer.h"
#include "effects/vector/VectorGraphicRenderer.h"
#include "gallery/Scene.h"
#include "gallery/scenes/FieldQuality.h"

#include <array>

namespace tidalume::gallery {

/// Lit drops that rise from a pool at the bottom and sink from one at the top, and merge where they meet.
class MetaballsScene : public Scene {
  public:
    MetaballsScene();

    void setUp(int width, int height, const Picture& background) override;
    void contextLost() override;
    void touch(const Touch& touch) override;
    void drawFrame() override;
    std::vector<Touch> demonstration(int frame) const override;

  private:
    // The record that the renderer reads.
    struct Ball {
        float x, y, radius;
        float unused[3];
    };

    // Drops that follow one another along one path, so closely that after two seconds each stands where the one
    // before it stood: the motion repeats without a seam while every drop travels far.
    struct Stream {
        int count;
        bool rising;
        float place;       // of the path, 0 left to 1 right
        float radius;      // in shares of the unit
        float sway, phase; // sideways, in shares of the width, and where along the path
    };

    struct Finger {
        float x, y;
        float size; // 0 to 1: the drop grows under a finger and shrinks when it leaves
        bool down;
    };

    void fitField();
    void placeBalls();
    void placeStream(const Stream& stream);
    void placePools();
    void placeFingers();
    void moveFingers();
    void drawBackdrop();
    void drawLayers();

    Metaball2DRenderer mRenderer;
    VectorGraphicRenderer mGraphics;
    std::array<Stream, 4> mStreams;
    std::array<Finger, pointerCount> mFingers = {};
    std::vector<Ball> mBalls;
    std::vector<Ball> mLayer;
    int mWidth = 1;
    int mHeight = 1;
    float mUnit = 1; // all radii are shares of it, in pixels
    int mFrame = 0;
    FieldQuality mQuality{1};
    float mRadius = 1;
    float mHue = 0;
};

} // namespace tidalume::gallery
