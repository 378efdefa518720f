#pragma once

#include "math/Matrix.h"
#include "math/Vector3.h"

#include <GLES3/gl3.h>

namespace tidalume {
struct ProgramTable;
}

/// Draws a picture as if it lay on the ground under water.
///
///     ShallowWaterRenderer renderer;
///     renderer.init();
///     renderer.setScreenSize(1080, 1920);
///     renderer.setTexture(picture);
///     // per frame
///     renderer.render(heights, normals);
///
/// At every pixel a ray that looks straight down is refracted at the surface (indices 1 for air, 1.33 for water), with
/// the x and y of the normal exchanged, and followed from the height of the surface down to the picture, which is
/// stretched over the screen. Flat water shows the picture as it is, and so does water of height 0. Beyond its border
/// the picture goes on as at the border. The result's alpha is the picture's.
///
/// The quad lies in a frame of pixels with its origin in the middle of the screen, y upwards, seen by a camera one
/// screen width in front of it.
///
/// Context and life cycle are those of all effects: docs/life-cycle.md. The object makes no textures and no
/// framebuffers: after a loss of the context call `init`, and set the texture and the framebuffer of the new context.
class ShallowWaterRenderer {
  public:
    ShallowWaterRenderer();
    /// Deletes the class's program with the last object of the class.
    virtual ~ShallowWaterRenderer();
    ShallowWaterRenderer(const ShallowWaterRenderer&) = delete;
    ShallowWaterRenderer& operator=(const ShallowWaterRenderer&) = delete;

    /// Builds the class's program where it is missing.
    void init();

    /// Stores the size of the screen in pixels. Makes no GL call.
    void setScreenSize(int width, int height);

    /// Factor from a stored height to pixels above the ground. 100 by default. The normal map has one of its own.
    void setHeightMax(float heightMax);

    /// Direction towards the light, of any length: x to the right of the screen, y to its top, z out of it.
    /// (-3, 8, 7) by default. Ignored with length 0 and with a number that is not finite.
    void setLight(float x, float y, float z);

    /// Highlights, added to all four channels of the picture: strength (N H)^shininess where the surface faces the
    /// light, with N the normal and H half way between the light and the viewer above. Ignored where a number is out of
    /// its range.
    /// @param strength   at least 0, finite; 0 by default: no highlights
    /// @param shininess  above 0, finite; 50 by default. Larger is smaller and sharper.
    void setSpecular(float strength, float shininess);

    /// The framebuffer that `render` draws into; 0 by default.
    void setDrawFrameBuffer(GLuint framebuffer);

    /// Whether the picture is mirrored top to bottom. Its first row is at the bottom of the screen by default, as of
    /// rendered textures; bitmaps are uploaded from the top and need the flip.
    void setBGFlip(bool flip);

    /// The picture's texture name, of any size.
    void setTexture(int texture);

    /// Draws the whole screen. Before `setScreenSize` the viewport is 0 x 0, where nothing appears.
    ///
    /// Sets linear filters and mirrored repetition on the picture's texture, which stay set; one without further mipmap
    /// levels is enough. Leaves blending and depth test disabled, the viewport at the screen, units 0 to 2 without
    /// a texture, unit 0 active, program 0, and framebuffer 0 whichever it drew into.
    /// @param textureHeight  height field, red channel, of any size: read with the filters set on it
    /// @param textureNormal  normal map of the same heights
    void render(GLuint textureHeight, GLuint textureNormal);

    /// Forgets the class's program without a GL call, for a context that is gone. The names of the picture and of the
    /// framebuffer stay as they were set.
    void GLContextDestroyed();

  private:
    friend struct TestPeer;

    GLuint mDrawFrameBuffer = 0;
    GLuint mTextureBG = 0;
    Vector3 mLight;                 ///< unit direction towards the light
    float mMaterialSpecular = 0.0F; ///< 0: without highlights
    float mMaterialShininess = 50.0F;
    float mBGFlip = 0.0F; ///< 1: mirrored, 0: not
    float mVertices[12] = {};
    float mTexcoords[8] = {};
    float mHeightMax = 100.0F;
    int mWidth = 0;
    int mHeight = 0;
    float mWidthF = 0.0F;
    float mHeightF = 0.0F;
    float mHalfWidthF = 0.0F;
    float mHalfHeightF = 0.0F;
    Matrix mMatrixView = {};
    Matrix mMatrixMVP = {}; ///< centred pixels to the screen

    static inline GLuint mProgram = 0;
    static inline GLint mUniformTextureNormal = -1;
    static inline GLint mUniformTextureHeight = -1;
    static inline GLint mUniformTextureBG = -1;
    static inline GLint mUniformMatrixMVP = -1;
    static inline GLint mUniformHeightMax = -1;
    static inline GLint mUniformLight = -1;
    static inline GLint mUniformMaterialSpecular = -1;
    static inline GLint mUniformMaterialShininess = -1;
    static inline GLint mUniformScreenWidth = -1;
    static inline GLint mUniformScreenHeight = -1;
    static inline GLint mUniformTextureFlip = -1;
    static inline GLint mAttribVertices = -1;
    static inline GLint mAttribTexcoords = -1;

    static inline int mInstanceCount = 0;

    static const tidalume::ProgramTable mPrograms;
};

/// A new object, never null; the caller deletes it.
ShallowWaterRenderer* createShallowWaterRenderer();
