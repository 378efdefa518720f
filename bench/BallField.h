#pragma once

#include "effects/metaball/Metaball2DRenderer.h"

#include <vector>

namespace tidalume::bench {

/// The field of some balls, drawn in two ways. Needs a current context.
class BallField {
  public:
    /// @param width, height  of the screen in pixels
    BallField(int width, int height, int count, float radius);
    ~BallField();
    BallField(const BallField&) = delete;
    BallField& operator=(const BallField&) = delete;

    /// As the library does: a point per ball, added up by blending.
    void drawPoints();

    /// In one quad: every fragment adds all balls up in a loop. For 64 balls.
    void sumInLoop();

    GLuint texture() { return mMetaballs.getTexture(); }
    int width() const { return mWidth; } ///< of the texture, in texels
    int height() const { return mHeight; }

  private:
    Metaball2DRenderer mMetaballs;
    std::vector<float> mBalls;
    int mWidth;
    int mHeight;
    GLuint mLoop;
};

} // namespace tidalume::bench
