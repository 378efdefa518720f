#pragma once

#include "math/Matrix.h"

#include <GLES3/gl3.h>

namespace tidalume {
struct ProgramTable;
}

/// Turns a height field into a map of surface normals, one per pixel of the screen.
///
///     NormalMapBuilder normals;
///     normals.init();
///     normals.setScreenSize(1080, 1920);
///     // whenever the heights have changed
///     normals.build(heights.getTexture());
///     renderer.render(heights.getTexture(), normals.getTexture());
///
/// With h a height times the height factor, in pixels, the normal at a texel points along
/// (h(left) - h(right), h(below) - h(above), 2): x towards the right of the screen, y towards its top, z out of it. The
/// map stores the unit normal as n * 0.5 + 0.5; flat water is (0.5, 0.5, 1).
///
/// Context and life cycle are those of all effects: docs/life-cycle.md.
class NormalMapBuilder {
  public:
    NormalMapBuilder();
    /// Deletes the object's GL resources and, with the last object of the class, its program.
    virtual ~NormalMapBuilder();
    NormalMapBuilder(const NormalMapBuilder&) = delete;
    NormalMapBuilder& operator=(const NormalMapBuilder&) = delete;

    /// Builds the class's program where it is missing.
    void init();

    /// Makes a normal map for a screen of width x height pixels, 0 in every channel until the first `build`. The same
    /// size keeps the map as it is. Leaves the texture and framebuffer 0 bound. Makes no map of a size that no texture
    /// can have, and logs it unless it is 0.
    void setScreenSize(int width, int height);

    /// Factor from a stored height to pixels, from the next `build` on. 100 by default. The renderer has one of its
    /// own.
    void setHeightMax(float heightMax);

    /// Renders the normal map of a height field. Ignored before `setScreenSize`. Leaves blending and depth test
    /// disabled, the viewport at the screen, the height texture on unit 0, which is active, framebuffer 0 and
    /// program 0.
    ///
    /// The height texture may have another size than the screen. It is then stretched over the screen and read with the
    /// filters set on it; slopes are still those between its texels, so a smaller one gives steeper water. Beyond its
    /// border the height field goes on as its wrapping says: the effects' own as at the border.
    /// @param texture  name of a texture with the height in its red channel
    void build(GLuint texture);

    /// Name of the normal map; 0 before `setScreenSize`.
    GLuint getTexture();

    /// Abandons every GL name of the class and of the object without a GL call, for a context that is gone.
    void GLContextDestroyed();

  private:
    friend struct TestPeer;

    GLuint mTextureNormal = 0;
    GLuint mFBONormal = 0;
    float mVertices[12] = {};
    float mHeightMax = 100.0F;
    int mWidth = 0;
    int mHeight = 0;
    float mWidthF = 0.0F;
    float mHeightF = 0.0F;
    Matrix mMatrixView = {};
    Matrix mMatrixMVP = {}; ///< screen pixels to the texture

    static inline GLuint mProgram = 0;
    static inline GLint mUniformMatrixMVP = -1;
    static inline GLint mUniformHeightMax = -1;
    static inline GLint mUniformHeightTexture = -1;
    static inline GLint mAttribVertices = -1;

    static inline int mInstanceCount = 0;

    static const tidalume::ProgramTable mPrograms;
};

/// A new object, never null; the caller deletes it.
NormalMapBuilder* createNormalMapBuilder();
