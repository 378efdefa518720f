#pragma once

#include "math/Matrix.h"

#include <GLES3/gl3.h>

namespace tidalume {
struct ProgramTable;
}

/// Water that ripples: a wave simulation on the GPU, one texel per pixel of the screen, disturbed by drops, lines of
/// drops and horizontal waves.
///
///     ShallowWaterIterative water;
///     water.init();
///     water.setScreenSize(1080, 1920);
///     // per frame
///     water.addDrop(touch, 40.0f, 0.1f, 1.0f);
///     water.update();
///     normals.build(water.getTexture());  // ask anew in every frame: the name changes
///
/// The state is one texture with the height in red and the vertical velocity in green; a second one of the same kind is
/// the target of the next pass, and the two change roles after each. A pass of `update` moves a wave by about
/// 0.7 pixels (the square root of a half) and takes 1 % of the velocity away. At the border waves are reflected.
///
/// A disturbance's profile is a raised cosine: `strength` at the shape, falling to 0 at distance `radius`. It is added
/// to the heights, which are first multiplied by `preserveWeight`: 1 keeps them, 0 wipes them; the velocities stay.
/// Heights are half floats: beyond 65,504 they overflow, and what has overflowed spreads.
///
/// Positions and radii are pixels of the screen, origin top-left, y downwards. The top row of the screen is the last
/// row of the texture.
///
/// Context and life cycle are those of all effects: docs/life-cycle.md. After a loss of the context the water is still.
///
/// Disturbances and `update` are ignored before `setScreenSize`; disturbances also with a radius of 0 and with a number
/// that is not finite. The caller disables blending and depth test. The calls leave the viewport at the screen,
/// framebuffer 0, program 0, and the state that was read last on unit 0, which is active.
class ShallowWaterIterative {
  public:
    ShallowWaterIterative();
    /// Deletes the object's GL resources and, with the last object of the class, its programs.
    virtual ~ShallowWaterIterative();
    ShallowWaterIterative(const ShallowWaterIterative&) = delete;
    ShallowWaterIterative& operator=(const ShallowWaterIterative&) = delete;

    /// Builds the class's programs where they are missing.
    void init();

    /// Makes still water for a screen of width x height pixels. The same size keeps the water as it is. Leaves the
    /// second texture and framebuffer 0 bound. Makes no water of a size that no texture can have, and logs it unless it
    /// is 0.
    void setScreenSize(int width, int height);

    /// Passes per `update`, 8 by default. Below 1: ignored.
    void setIterationCount(int count);

    /// @param center          (x, y); not null
    /// @param radius          of the drop
    /// @param strength        height added at the centre
    /// @param preserveWeight  factor on the heights before
    void addDrop(float* center, float radius, float strength, float preserveWeight);

    /// A drop along a whole segment, as a finger draws it.
    /// @param center, center2  the two ends, (x, y) each; may be the same, not null
    /// @param radius, strength, preserveWeight  as for addDrop
    void addDropLine(float* center, float* center2, float radius, float strength, float preserveWeight);

    /// A bump along a horizontal sine curve across the whole screen.
    /// @param center      y of the curve's middle
    /// @param radius      half the width of the bump, measured along y
    /// @param waveRadius  amplitude of the curve in pixels
    /// @param waveCount   periods across the screen
    /// @param strength, preserveWeight  as for addDrop
    void addHorizontalWave(float center, float radius, float strength, float waveRadius, float waveCount,
                           float preserveWeight);

    /// Advances the simulation by the number of passes set.
    void update();

    /// Name of the current state's texture; 0 before `setScreenSize`. Every disturbance and every pass changes it; the
    /// name from before then is the texture that the next pass overwrites.
    GLuint getTexture();

    /// Exchanges the current state and the target of the next pass.
    void swapWaterTexture();

    /// Abandons every GL name of the class and of the object without a GL call, for a context that is gone.
    void GLContextDestroyed();

  private:
    friend struct TestPeer;

    void beginDisturbance(GLuint program);
    void finishDisturbance(GLuint program, GLint attribute);

    GLuint mTexturesWater[2] = {}; ///< [1] is the current state, [0] the target of the next pass
    GLuint mFBOsWater[2] = {};     ///< [i] has mTexturesWater[i] as its colour attachment
    float mVertices[12] = {};
    int mIterationCount = 8;
    int mWidth = 0;
    int mHeight = 0;
    float mWidthF = 0.0F;
    float mHeightF = 0.0F;
    Matrix mMatrixView = {};
    Matrix mMatrixMVP = {}; ///< screen pixels to the texture

    static inline GLuint mProgramDrop = 0;
    static inline GLint mDropMatrixMVP = -1;
    static inline GLint mDropCenter = -1;
    static inline GLint mDropRadius = -1;
    static inline GLint mDropStrength = -1;
    static inline GLint mDropPreserveWeight = -1;
    static inline GLint mDropVertices = -1;

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

    static inline GLuint mProgramUpdate = 0;
    static inline GLint mUpdateMatrixMVP = -1;
    static inline GLint mUpdateTexture = -1;
    static inline GLint mUpdateVertices = -1;

    static inline int mInstanceCount = 0;

    static const tidalume::ProgramTable mPrograms;
};

/// A new object, never null; the caller deletes it.
ShallowWaterIterative* createShallowWaterIterative();
