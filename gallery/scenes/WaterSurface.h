#pragma once

#include "effects/vector/VectorGraphicRenderer.h"
#include "effects/water/IntensityMapBuilder.h"
#include "effects/water/NormalMapBuilder.h"
#include "effects/water/ShallowWaterRenderer.h"
#include "gallery/PictureTexture.h"
#include "gallery/TargetTexture.h"

namespace tidalume::gallery {

/// A picture on the ground below water of an even depth, whose ripples only bend the light: the slopes come from one
/// height field, the depth from another, which is the same everywhere. The sky is reflected in the water: its picture
/// is bent by the same ripples as if it lay far deeper, and its light is added.
///
/// The height field of the ripples has the same number of texels along the shorter side of the screen whatever the
/// screen's size: ripples look and move alike on all screens.
class WaterSurface {
  public:
    /// @param width, height  of framebuffer 0, in pixels
    void setUp(int width, int height, const Picture& ground);

    /// Chooses the number of texels along the shorter side; initially usualTexels. After setUp().
    /// @return whether that is new, so that the field of this size is to be made
    bool setTexels(int texels);

    void contextLost();

    /// Size of the height field.
    int columns() const { return mColumns; }
    int rows() const { return mRows; }

    /// From lengths in texels of a field of the usual fineness to texels of this one.
    float scale() const { return static_cast<float>(mTexels) / usualTexels; }

    static constexpr int usualTexels = 270;

    /// From a pixel of the screen to a texel of the height field, both from the top-left corner.
    float toColumn(float x) const { return x * static_cast<float>(mColumns) / static_cast<float>(mWidth); }
    float toRow(float y) const { return y * static_cast<float>(mRows) / static_cast<float>(mHeight); }

    /// Draws into framebuffer 0.
    /// @param ripples    height texture of columns x rows texels
    /// @param steepness  factor from its heights to texels
    /// @param depth      of the water, in texels
    void draw(GLuint ripples, float steepness, float depth);

  private:
    void fitField();

    IntensityMapBuilder mDepth;
    NormalMapBuilder mNormals;
    ShallowWaterRenderer mRefraction;
    ShallowWaterRenderer mReflection;
    VectorGraphicRenderer mGraphics;
    PictureTexture mGround;
    PictureTexture mSky;
    TargetTexture mReflected;
    int mWidth = 1;
    int mHeight = 1;
    int mTexels = usualTexels;
    int mColumns = 1;
    int mRows = 1;
};

} // namespace tidalume::gallery
