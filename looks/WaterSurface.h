#pragma once

#include "effects/vector/VectorGraphicRenderer.h"
#include "effects/water/IntensityMapBuilder.h"
#include "effects/water/NormalMapBuilder.h"
#include "effects/water/ShallowWaterRenderer.h"
#include "foundation/ColorTarget.h"
#include "looks/PictureTop.h"

namespace tidalume {

/// A picture on the ground below water, with ripples that bend the light. The slopes come from one height field, the
/// depth from another, which is the same everywhere. The water also reflects the sky: a picture bent by the same
/// ripples as if it lay far deeper, whose light is added.
class WaterSurface {
  public:
    void createPrograms();
    void abandon();

    /// @param width, height  of the screen, in pixels
    void fitScreen(int width, int height);

    /// Gives the ripples' height field a size in texels per pixel: more on a small screen, fewer on a very large one.
    /// @return whether it has changed
    bool fitField(float scale);

    /// As WaterLook::setPicture.
    void setPicture(GLuint texture, int width, int height, PictureTop top);

    /// Size of the height field, and its shorter side, in texels.
    int columns() const { return mColumns; }
    int rows() const { return mRows; }
    float shorterSide() const;

    /// From a pixel of the screen to a texel of the height field, both from the top-left corner.
    float toColumn(float x) const { return x * static_cast<float>(mColumns) / static_cast<float>(mWidth); }
    float toRow(float y) const { return y * static_cast<float>(mRows) / static_cast<float>(mHeight); }

    struct Optics {
        float steepness; ///< from the ripples' heights to shorter sides
        float depth;     ///< of the water, in shorter sides
        float sky;       ///< how much of the sky is reflected, 0 to 1
        float light;     ///< strength of the highlights, 0 to 1
    };

    /// @param ripples  height texture of columns x rows texels
    void draw(GLuint ripples, const Optics& optics, GLuint framebuffer);

  private:
    void drawGround();
    void uploadSky(float reflection);

    IntensityMapBuilder mDepth;
    NormalMapBuilder mNormals;
    ShallowWaterRenderer mRefraction;
    ShallowWaterRenderer mReflection;
    VectorGraphicRenderer mGraphics;
    ColorTarget mGround;
    ColorTarget mSky;
    ColorTarget mReflected;
    int mWidth = 1;
    int mHeight = 1;
    int mColumns = 0; // before the field is made
    int mRows = 0;
    float mSkyReflection = -1; // that mSky shows; -1 before it is made

    GLuint mPicture = 0;
    int mPictureWidth = 0;
    int mPictureHeight = 0;
    PictureTop mPictureTop = PictureTop::LastRow;
    bool mGroundFits = false;
};

} // namespace tidalume
