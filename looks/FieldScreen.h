#pragma once

namespace tidalume {

/// The screen on which a Metaball2DRenderer adds its balls up, in pixels of its own: the shorter side has the same
/// number of them on every surface. So lengths that the effects fix are the same shares of it, as is the margin of 120
/// pixels around it, beyond which a ball is not drawn.
class FieldScreen {
  public:
    /// @param shorterSide  in pixels of this screen
    explicit FieldScreen(int shorterSide) : mShorterSide(shorterSide) {}

    /// For a surface of this size in pixels, and for a new context, which is asked for the largest sprite.
    void fit(int width, int height);

    /// Chooses the field's quality for balls of up to largestRadius pixels of this screen: as asked for, or coarser
    /// where a sprite would be larger than the driver draws it.
    /// @param scale  texels of the field per pixel of the surface
    /// @return whether the renderer is to be given quality() and size anew
    bool fitQuality(float scale, float largestRadius);

    float quality() const { return mQuality; } ///< pixels of this screen per texel
    int width() const { return mWidth; }
    int height() const { return mHeight; }
    float perPixel() const { return mPerPixel; } ///< pixels of this screen per pixel of the surface

    /// The part of the field that covers the surface: left, bottom, right, top in texture coordinates.
    const float* area() const { return mArea; }

  private:
    const int mShorterSide;
    int mWidth = 0;
    int mHeight = 0;
    float mPerPixel = 1;
    float mArea[4] = {};
    float mLargestSprite = 1; // in texels
    float mQuality = 0;       // 0 before it is chosen
};

} // namespace tidalume
