#pragma once

#include "math/Matrix.h"

#include <GLES3/gl3.h>

namespace tidalume {
struct ProgramTable;
}

/// Two-dimensional primitives, drawn straight into the bound framebuffer: radial gradients, discs, discs that show a
/// bitmap, and bitmap rectangles with quarter turns and alpha masks. Each is blended by the object's blend state.
///
///     VectorGraphicRenderer graphics;
///     graphics.init();
///     graphics.setScreenSize(1080, 1920);
///     // per frame
///     graphics.renderRadialGradient(540, 960, 0, center, 1100, rim);
///     graphics.renderCircle(540, 400, 120, color);
///
/// Positions are pixels of the surface, origin top-left, y downwards. Colours are red, green, blue, alpha, each 0 to 1.
/// Bitmaps are GL textures that the application has made and configured; their coordinate (0, 0) is shown at the lower
/// left.
///
/// Context and life cycle are those of all effects: docs/life-cycle.md. There are no textures of its own: after a loss
/// of the context `init` is enough, and the size stays known.
///
/// GL state: drawing sets the viewport to the surface, leaves it and the blend equation, factors and colour as set, and
/// leaves program 0, blending and depth test disabled. Drawing before `setScreenSize` goes out on a viewport of 0 x 0,
/// where nothing appears; before `init` with program 0, which draws nothing and leaves GL errors pending.
class VectorGraphicRenderer {
  public:
    // Rotations of a bitmap.
    static constexpr int ROTATION_NONE = 0;             ///< as the bitmap is
    static constexpr int ROTATION_CLOCKWISE = 1;        ///< a quarter turn
    static constexpr int ROTATION_HALF_TURN = 2;        ///< upside down
    static constexpr int ROTATION_COUNTERCLOCKWISE = 3; ///< a quarter turn
    static constexpr int ROTATION_FLIP_VERTICAL = 4;    ///< mirrored top to bottom
    static constexpr int ROTATION_FLIP_HORIZONTAL = 5;  ///< mirrored left to right

    VectorGraphicRenderer();
    /// With the last object of the class, deletes its programs.
    virtual ~VectorGraphicRenderer();
    VectorGraphicRenderer(const VectorGraphicRenderer&) = delete;
    VectorGraphicRenderer& operator=(const VectorGraphicRenderer&) = delete;

    /// Builds the class's programs where they are missing.
    void init();

    /// Stores the size of the surface in pixels. Makes no GL call.
    void setScreenSize(int width, int height);

    /// Abandons every GL name of the class without a GL call, for a context that is gone.
    void GLContextDestroyed();

    /// The setters store; the state reaches GL with the next drawing call.
    /// @param mode  argument of glBlendEquation; GL_FUNC_ADD by default
    void setBlendEquation(int mode);
    /// Arguments of glBlendFuncSeparate; by default GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA for colour and alpha alike.
    void setBlendFunction(int srcRGB, int dstRGB, int srcAlpha, int dstAlpha);
    /// The constant colour that some blend factors refer to; (0, 0, 0, 1) by default.
    void setBlendColor(float r, float g, float b, float a);
    /// Hands the stored blend state to GL and disables the depth test. Every drawing call does so itself.
    void setBlend();

    /// Fills the surface with a gradient around pixel (x, y).
    /// @param begin       distance in pixels up to which beginColor is shown
    /// @param beginColor  4 floats, not null
    /// @param end         distance from which endColor is shown; equal to begin, the edge is hard
    /// @param endColor    4 floats, not null
    void renderRadialGradient(float x, float y, float begin, float* beginColor, float end, float* endColor);

    /// Draws a disc with a hard edge around pixel (x, y). Leaves attribute array 0 enabled, pointing into this object,
    /// and no array buffer bound.
    /// @param radius  in pixels, above 0. The driver's point size limit bounds the diameter.
    /// @param color   4 floats, not null
    void renderCircle(float x, float y, float radius, float* color);

    /// Draws a disc that shows the part of a bitmap that lies under it when the bitmap is stretched over the surface.
    /// Leaves what `renderCircle` leaves, and texture 0 on unit 0, which is active.
    /// @param diameter  in pixels: the diameter here, the radius in `renderCircle`
    /// @param color     4 floats, not null, of which the alpha alone is used, in place of the bitmap's
    void renderBitmapCircle(float x, float y, float diameter, float* color, unsigned int texture);

    /// Fills a rectangle with a bitmap. Leaves the texture bound to unit 0, which is active.
    /// @param x, y  top-left corner
    void renderBitmapRectangle(float x, float y, float width, float height, unsigned int texture);
    /// The same with the bitmap turned, and stretched to the unchanged rectangle.
    /// @param rotation  see rotateTexture; for this draw alone
    void renderRotatedBitmapRectangle(float x, float y, float width, float height, unsigned int texture, int rotation);

    /// Fills a rectangle with a bitmap's colour and a mask's red channel as alpha. The mask is stretched over the
    /// surface and does not move or turn with the rectangle. Leaves texture 0 on units 0 and 1, and unit 0 active.
    void renderAlphaMaskedBitmapRectangle(float x, float y, float width, float height, int texture, int mask);
    /// The same with the bitmap turned, and the mask as it is. The rotation stands between the two textures.
    void renderRotatedAlphaMaskedBitmapRectangle(float x, float y, float width, float height, int texture, int rotation,
                                                 int mask);

    /// Turns the bitmap of the rectangle draws that follow, until `init` or a rotated draw ends. Makes no GL call.
    /// @param rotation  one of those above; another value changes nothing
    void rotateTexture(int rotation);

  private:
    friend struct TestPeer;

    void beginDrawing(GLuint program);
    static void endDrawing();
    void drawDisc(GLint vertices, float x, float y, float diameter);
    void drawRectangle(GLint vertices, GLint texcoords, float x, float y, float width, float height);

    float mVertices[12] = {};     ///< the surface as a quad
    float mRectVertices[12] = {}; ///< corners: lower-left, lower-right, upper-left, upper-right
    float mRectTexcoords[8] = {};
    int mWidth = 0;
    int mHeight = 0;
    float mWidthF = 0.0F;
    float mHeightF = 0.0F;
    Matrix mMatrixView = {};
    Matrix mMatrixMVP = {};     ///< pixels to the surface
    float mPointVertex[3] = {}; ///< a disc's centre in normalised device coordinates, and its diameter in pixels
    GLenum mBlendEquation = GL_FUNC_ADD;
    GLenum mBlendSrcRGB = GL_SRC_ALPHA;
    GLenum mBlendDstRGB = GL_ONE_MINUS_SRC_ALPHA;
    GLenum mBlendSrcAlpha = GL_SRC_ALPHA;
    GLenum mBlendDstAlpha = GL_ONE_MINUS_SRC_ALPHA;
    float mBlendColor[4] = {0.0F, 0.0F, 0.0F, 1.0F};

    static inline GLuint mProgramGradientFill = 0;
    static inline GLint mGradientFillMatrixMVP = -1;
    static inline GLint mGradientFillReferencePosition = -1;
    static inline GLint mGradientFillGradientBegin = -1;
    static inline GLint mGradientFillGradientBeginColor = -1;
    static inline GLint mGradientFillGradientEnd = -1;
    static inline GLint mGradientFillGradientEndColor = -1;
    static inline GLint mGradientFillVertices = -1;

    static inline GLuint mProgramBitmap = 0;
    static inline GLint mBitmapMatrixMVP = -1;
    static inline GLint mBitmapTexture = -1;
    static inline GLint mBitmapVertices = -1;
    static inline GLint mBitmapTexcoords = -1;

    static inline GLuint mProgramAlphaMaskedBitmap = 0;
    static inline GLint mAlphaMaskedBitmapMatrixMVP = -1;
    static inline GLint mAlphaMaskedBitmapTexture = -1;
    static inline GLint mAlphaMaskedBitmapMaskTexture = -1;
    static inline GLint mAlphaMaskedBitmapVertices = -1;
    static inline GLint mAlphaMaskedBitmapTexcoords = -1;

    static inline GLuint mProgramCircle = 0;
    static inline GLint mCircleColor = -1;
    static inline GLint mCircleVertices = -1;

    static inline GLuint mProgramBitmapCircle = 0;
    static inline GLint mBitmapCircleBitmap = -1;
    static inline GLint mBitmapCircleColor = -1;
    static inline GLint mBitmapCircleSize = -1;
    static inline GLint mBitmapCircleVertices = -1;

    static inline int mInstanceCount = 0;

    static const tidalume::ProgramTable mPrograms;
};

/// A new object, never null; the caller deletes it.
VectorGraphicRenderer* createVectorGraphicRenderer();
