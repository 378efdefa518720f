#pragma once

#include "effects/vector/VectorGraphicRenderer.h"
#include "effects/water/IntensityMapBuilder.h"
#include "effects/water/NormalMapBuilder.h"
#include "effects/water/ShallowWaterRenderer.h"
#include "gallery/PictureTexture.h"
#include "gallery/Scene.h"
#include "gallery/TargetTexture.h"

namespace tidalume::gallery {

/// A picture on the ground below water, with ripples that bend the light. The slopes come from one height field, the
/// depth from another, which is the same everywhere. The water also reflects the sky: a picture bent by the same
/// ripples as if it lay far deeper, whose light is added.
///
/// The height field of the ripples has the same number of texels along the shorter side of every screen, so that
/// ripples look and move alike on all of them.
class WaterSurface {
  public:
    /// To be followed by fitField().
    /// @param width, height  of framebuffer 0, in pixels
    void setUp(int width, int height, const Picture& ground);

    void contextLost();

    /// The number of texels along the shorter side, for the parameters of a scene.
    Parameter resolution() { return {"field", "Texels across the field", 90, 540, mTexels}; }

    /// Gives the height field of the ripples the size that resolution() asks for, where it has another one.
    /// @param ripples  an effect with a height field
    template <typename Effect>
    void fitField(Effect& ripples) {
        if (resizeField()) ripples.setScreenSize(mColumns, mRows);
    }

    /// Size of the height field.
    int columns() const { return mColumns; }
    int rows() const { return mRows; }

    /// From lengths in texels at the default resolution to texels of this field.
    float scale() const { return static_cast<float>(mFieldTexels) / defaultTexels; }

    /// From a pixel of the screen to a texel of the height field, both from the top-left corner.
    float toColumn(float x) const { return x * static_cast<float>(mColumns) / static_cast<float>(mWidth); }
    float toRow(float y) const { return y * static_cast<float>(mRows) / static_cast<float>(mHeight); }

    /// Draws into framebuffer 0.
    /// @param ripples    height texture of columns x rows texels
    /// @param steepness  factor from its heights to texels
    /// @param depth      of the water, in texels
    void draw(GLuint ripples, float steepness, float depth);

  private:
    static constexpr float defaultTexels = 270;

    /// Returns whether the size changed.
    bool resizeField();

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
    float mTexels = defaultTexels;
    int mFieldTexels = 0; // along the shorter side of the field as it is; 0 before it is made for a new screen
    int mColumns = 1;
    int mRows = 1;
};

} // namespace tidalume::gallery
