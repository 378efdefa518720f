#pragma once

#include "math/Matrix.h"

#include <GLES3/gl3.h>

namespace tidalume {
struct ProgramTable;
}

/// A height field that is painted, not simulated: lines of drops and horizontal sine waves stay as they were drawn
/// until something is painted over them.
///
///     IntensityMapBuilder heights;
///     heights.init();
///     heights.setScreenSize(1080, 1920);
///     heights.addHorizontalWave(960.0f, 200.0f, 0.3f, 40.0f, 2.0f, 1.0f);
///     normals.build(heights.getTexture());
///
/// A shape's profile is a raised cosine: `strength` on the shape, falling to 0 at distance `radius` and beyond. Where a
/// shape's rectangle reaches, it replaces what was there, by 0 beyond the radius too; shapes do not add up. Parts
/// beyond the screen are cut off.
///
/// Positions and radii are pixels of the screen, origin top-left, y downwards. The top row of the screen is the last
/// row of the texture.
///
/// Context and life cycle are those of all effects: docs/life-cycle.md. After a loss of the context the field is flat.
///
/// The calls that paint are ignored before `setScreenSize`, with a radius of 0, and with a number that is not finite
/// (`preserveWeight`, which is not used, may be any).
/// They leave the viewport at the screen, framebuffer 0 and program 0.
class IntensityMapBuilder {
  public:
    IntensityMapBuilder();
    /// Deletes the object's GL resources and, with the last object of the class, its programs.
    virtual ~IntensityMapBuilder();
    IntensityMapBuilder(const IntensityMapBuilder&) = delete;
    IntensityMapBuilder& operator=(const IntensityMapBuilder&) = delete;

    /// Builds the class's programs where they are missing.
    void init();

    /// Makes a flat field for a screen of width x height pixels. The same size keeps the field as it is. Leaves the
    /// texture and framebuffer 0 bound. Makes no field of a size that no texture can have, and logs it unless it is 0.
    void setScreenSize(int width, int height);

    /// Paints a line of drops within its bounding box; a round drop where both ends are the same. The caller disables
    /// blending and depth test.
    /// @param center, center2  the two ends, (x, y) each; not null
    /// @param radius           half the width of the line
    /// @param strength         height on the line
    /// @param preserveWeight   not used
    void addDropLine(float* center, float* center2, float radius, float strength, float preserveWeight);

    /// Paints a horizontal sine wave within a band across the whole screen, `waveRadius` + `radius` above and below its
    /// middle. Disables blending and depth test.
    /// @param center          y of the band's middle
    /// @param radius          half the width of the line that follows the curve
    /// @param strength        height on the curve
    /// @param waveRadius      amplitude of the curve in pixels
    /// @param waveCount       periods across the screen
    /// @param preserveWeight  not used
    void addHorizontalWave(float center, float radius, float strength, float waveRadius, float waveCount,
                           float preserveWeight);

    /// Name of the height texture, one half float per pixel of the screen; 0 before `setScreenSize`.
    GLuint getTexture();

    /// Abandons every GL name of the class and of the object without a GL call, for a context that is gone.
    void GLContextDestroyed();

  private:
    friend struct TestPeer;

    void beginShape(GLuint program);
    void finishShape(GLint attribute);

    GLuint mTexture = 0;
    GLuint mFBONormal = 0;    ///< of the heights; there are no normals here
    float mVertices[12] = {}; ///< the rectangle of the shape that was painted last
    int mWidth = 0;
    int mHeight = 0;
    float mWidthF = 0.0F;
    float mHeightF = 0.0F;
    Matrix mMatrixView = {};
    Matrix mMatrixMVP = {}; ///< screen pixels to the texture

    static inline GLuint mProgramDropLine = 0;
    static inline GLint mDropLineMatrixMVP = -1;
    static inline GLint mDropLineCenter = -1;
    static inline GLint mDropLineCenter2 = -1;
    static inline GLint mDropLineRadius = -1;
    static inline GLint mDropLineStrength = -1;
    static inline GLint mDropLinePreserveWeight = -1;
    static inline GLint mDropLineVertices = -1;

    static inline GLuint mProgramHorizontalWave = 0;
    static inline GLint mHorizontalWaveMatrixMVP = -1;
    static inline GLint mHorizontalWaveCenter = -1;
    static inline GLint mHorizontalWaveRadius = -1;
    static inline GLint mHorizontalWaveStrength = -1;
    static inline GLint mHorizontalWaveWaveRadius = -1;
    static inline GLint mHorizontalWaveWaveCount = -1;
    static inline GLint mHorizontalWavePreserveWeight = -1;
    static inline GLint mHorizontalWaveVertices = -1;

    static inline int mInstanceCount = 0;

    static const tidalume::ProgramTable mPrograms;
};

/// A new object, never null; the caller deletes it.
IntensityMapBuilder* createIntensityMapBuilder();
