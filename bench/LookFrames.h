#pragma once

#include "testing/Looks.h"

namespace tidalume::bench {

/// Frames of a look on framebuffer 0, at 60 a second, while a finger strokes it, lifts and comes down again. Needs a
/// current context, in which whatever grows has grown once it is made.
class LookFrames {
  public:
    /// @param look           without a context yet
    /// @param width, height  of framebuffer 0, in pixels
    LookFrames(std::unique_ptr<Look> look, int width, int height);

    /// Draws the next frame.
    void draw();

  private:
    void touch();

    std::unique_ptr<Look> mLook;
    int mWidth;
    int mHeight;
    int mFrame = 0;
};

} // namespace tidalume::bench
