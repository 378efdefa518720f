#pragma once

#include "math/Matrix.h"

#include <GLES3/gl3.h>

namespace tidalume {
struct ProgramTable;
}

/// Two-dimensional metaballs: soft blobs that merge into one smooth outline where they come close.
///
/// `addMetaballs` sums a radial fall-off for every ball into an offscreen half-float field that reaches 120 pixels
/// beyond the screen on every side; `render` paints one colour wherever the sum exceeds 0.1. A lone ball comes out as
/// a disc of its radius.
///
///     Metaball2DRenderer metaballs;
///     metaballs.init(1.0f);
///     metaballs.setScreenSize(1080, 1920);
///     // per frame
///     metaballs.addMetaballs(balls, count);
///     metaballs.render(color);
///
/// Positions are pixels of the screen, origin top-left, y downwards. Context and life cycle are those of all effects:
/// docs/life-cycle.md.
///
/// GL state: see each call. The viewport and the blend functions stay as the last call set them.
class Metaball2DRenderer {
  public:
    static constexpr int FLOATS_PER_BALL = 6; ///< in the array of `addMetaballs`

    Metaball2DRenderer();
    /// Deletes the object's GL resources and, with the last object of the class, its programs.
    virtual ~Metaball2DRenderer();
    Metaball2DRenderer(const Metaball2DRenderer&) = delete;
    Metaball2DRenderer& operator=(const Metaball2DRenderer&) = delete;

    /// Builds the class's programs where they are missing, and stores the quality.
    /// @param quality  resolution divisor of the field: 1 is one texel per pixel, 2 half the resolution in each
    ///                 direction and a quarter of the cost. Above 0. Another value takes effect with the next
    ///                 `setScreenSize`.
    void init(float quality);

    /// Makes the field texture for a screen of width x height pixels, replacing one of another size. Call after `init`.
    /// A size or quality that no texture can have makes no field, is logged unless the size is 0, and nothing is drawn.
    /// Leaves the field texture and framebuffer 0 bound, and the clear colour (0, 0, 0, 1).
    void setScreenSize(int width, int height);

    /// Clears the field and adds balls to it. Ignored before `init` and `setScreenSize`.
    /// Leaves framebuffer 0 bound, blending disabled, and the clear colour (0, 0, 0, 1).
    /// @param metaballs  not null unless there are none; six floats per ball: x, y, radius in pixels, then three that
    /// are not used. Balls of
    ///                   radius 0 or less are not drawn; sprites larger than the driver's point size limit are clamped
    ///                   to it.
    /// @param count      number of balls
    void addMetaballs(float* metaballs, unsigned int count);

    /// Paints the field into the bound framebuffer, over what is there, by the colour's alpha. May be called several
    /// times for one field. Ignored before `init` and `setScreenSize`. Leaves blending and depth test disabled, program
    /// 0, and texture 0 on unit 0, which is active.
    /// @param color  not null; red, green, blue, alpha, each 0 to 1, not premultiplied
    void render(float* color);

    /// Name of the field texture, whose red channel holds the sum; 0 before `setScreenSize`.
    unsigned int getTexture();

    /// Abandons every GL name of the class and of the object without a GL call, for a context that is gone.
    void GLContextDestroyed();

  private:
    friend struct TestPeer;

    float mQuality = 1.0F;
    float mMargin = 120.0F; ///< border of the field around the screen, in pixels
    GLuint mTexture = 0;
    GLuint mFBONormal = 0; ///< of the field; there are no normals here
    bool mInitialized = false;
    float mVertices[12] = {};
    float mTexcoords[8] = {};
    float mCut = 0.1F; ///< threshold of the field
    /// From a ball's radius to half the size of its sprite: 1 / sqrt(1 - sqrt(mCut)), at which the outline of a lone
    /// ball lies at its radius.
    float mRadiusMultiplyFactor = 1.2093284F;
    int mWidth = 0;
    int mHeight = 0;
    float mWidthF = 0.0F;
    float mHeightF = 0.0F;
    int mScaledWidth = 0;
    int mScaledHeight = 0;
    int mTextureWidth = 0;
    int mTextureHeight = 0;
    Matrix mMatrixView = {};
    Matrix mMatrixMVP = {}; ///< screen pixels to the screen
    Matrix mMatrixMetaballView = {};
    Matrix mMatrixMetaballMVP = {}; ///< screen pixels to the field texture

    static inline GLuint mProgramMetaball = 0;
    static inline GLint mUniformMetaballQualityMultiplyFactor = -1;
    static inline GLint mUniformMetaballRadiusMultiplyFactor = -1;
    static inline GLint mUniformMetaballMatrixMVP = -1;
    static inline GLint mAttribMetaballs = -1;

    static inline GLuint mProgramDraw = 0;
    static inline GLint mUniformDrawColor = -1;
    static inline GLint mUniformDrawCut = -1;
    static inline GLint mUniformDrawMatrixMVP = -1;
    static inline GLint mUniformDrawTexture = -1;
    static inline GLint mAttribDrawVertices = -1;
    static inline GLint mAttribDrawTexcoords = -1;

    static inline int mInstanceCount = 0;

    static const tidalume::ProgramTable mPrograms;
};

/// A new object, never null; the caller deletes it.
Metaball2DRenderer* createMetaball2DRenderer();
