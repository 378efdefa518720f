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

    // Drops that follow one another along one path. After two seconds each is where the one before it was, so the
    // motion repeats without a seam.
    struct Stream {
        int count;
        bool rising;
        float position;    // of the path, 0 left to 1 right
        float radius;      // in units
        float sway, phase; // sideways: amplitude as a fraction of the width, and phase
    };

    struct Finger {
        float x, y;
        float size; // 0 to 1: the drop grows under a finger and shrinks when it lifts
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
    float mUnit = 1; // the shorter side of the screen, in pixels
    int mFrame = 0;
    FieldQuality mQuality{1};
    float mRadius = 1;
    float mHue = 0;
};

} // namespace tidalume::gallery
