#pragma once

#include "math/Matrix.h"

#include <GLES3/gl3.h>

namespace tidalume {
struct ProgramTable;
}

/// A pond: the damped wave equation in central differences, one texel per pixel of the screen, in three height textures
/// that change roles after every step (the newest state, the one before, and the target of the next step).
///
///     ShallowWater pond;
///     pond.init();
///     pond.setScreenSize(1080, 1920);
///     // per frame
///     pond.addDrop(touch, 80.0f, 0.3f);
///     pond.update();
///     normals.build(pond.getTexture());  // ask anew in every frame: the name changes
///
/// Time is a counter that `update` advances by 0.01, with a step due every 0.025 by default: two steps in five updates.
/// The counter is a float; from 262,144 on, after some 23 million updates, it stands still, and so does the pond.
///
/// Positions are pixels of the screen with the origin at the BOTTOM left and y upwards, unlike those of the other
/// effects: y = 0 is row 0 of the textures.
///
/// Context and life cycle are those of all effects: docs/life-cycle.md. Unlike theirs, programs belong to the object.
/// After a loss of the context the pond is still, while the time counter goes on.
///
/// Before `setScreenSize` disturbances and `drawFullScreenQuad` are ignored, and `update` only counts the time.
/// Disturbances are also ignored with a radius of 0 and with a number that is not finite. They leave the viewport at
/// the screen, framebuffer 0 and program 0. The caller disables depth test, and blending for `addDropLine` and
/// `update`.
class ShallowWater {
  public:
    ShallowWater();
    /// Deletes the object's GL resources.
    virtual ~ShallowWater();
    ShallowWater(const ShallowWater&) = delete;
    ShallowWater& operator=(const ShallowWater&) = delete;

    /// Builds the object's programs; those of an earlier `init` are deleted first.
    void init();

    /// Makes still water for a screen of width x height pixels. The same size keeps the water as it is. Leaves the last
    /// texture and framebuffer 0 bound. Makes no water of a size that no texture can have, and logs it unless it is 0.
    void setScreenSize(int width, int height);

    /// The damped wave equation's parameters, from the next step on. They are set together, since a step is stable only
    /// where (waveSpeed timeStep / gridSpacing)^2 is at most 0.5. Lengths and times are in units of your own.
    /// @param waveSpeed    length per time; 2 by default
    /// @param viscosity    damping per time, at least 0; 0.05 by default
    /// @param gridSpacing  length from a texel to the next, above 0; 0.4 by default
    /// @param timeStep     simulated time of a step, above 0; 0.13 by default
    /// @return false where they are out of range, not finite or not stable: everything stays as it was, and the log
    /// says
    ///         why
    bool setPhysics(float waveSpeed, float viscosity, float gridSpacing, float timeStep);

    /// How often a step is due, from now on.
    /// @param stepsPerUnit  of the time counter, of which an update is a hundredth: above 0, at most 1,000, which are
    ///                      10 steps an update; 40 by default
    /// @return false where it is out of range: everything stays as it was, and the log says why
    bool setStepRate(float stepsPerUnit);

    /// Works the weights of a step out from the physical parameters; `setPhysics` calls it. Makes no GL call.
    void updateParameters();

    /// Draws the whole screen with a program that has the attribute `quadCoord`. Sets the viewport, nothing else.
    void drawFullScreenQuad(GLuint program);

    /// Squares all heights and adds a drop, squared too: a raised cosine that is `strength` at the centre and 0 at half
    /// the radius gives a bump of strength^2. Keep |strength| below 1: a height of 1 or more grows with every drop.
    /// Logs its arguments at verbose priority, also when it is ignored. Sets the blend equation and the blend
    /// functions, and leaves blending disabled.
    /// @param center    (x, y) in pixels; not null
    /// @param radius    twice the radius of the bump, in pixels
    /// @param strength  square root of the height
    void addDrop(float* center, float radius, float strength);

    /// Goes back to the state before the newest and adds a drop of 0.4 `strength` at each end, nothing in between. No
    /// height stays above `strength`. Leaves the texture of the state before the newest on unit 0, which is active.
    /// @param center, center2  the two ends, (x, y) each, in normalised device coordinates: (-1, -1) is the lower-left
    ///                         corner, (1, 1) the upper-right; not null
    /// @param radius           of a drop, in normalised device coordinates: an ellipse where the screen is not square
    void addDropLine(float* center, float* center2, float radius, float strength);

    /// Advances the time and runs the steps that are due. Leaves units 0 and 1 without a texture where it ran one.
    void update();

    /// Name of the newest state's texture, the height in red; 0 before `setScreenSize`. Every step changes it.
    GLuint getTexture();

    /// Abandons every GL name of the object without a GL call, for a context that is gone.
    void GLContextDestroyed();

  private:
    friend struct TestPeer;

    tidalume::ProgramTable programs();
    void drawDrop(float* center, float radius, float strength);
    void step();

    GLuint mProgramDrop = 0;
    GLuint mProgramDropLine = 0;
    GLuint mProgramUpdate = 0;
    GLuint mTexturesWater[3] = {};
    GLuint mFBOsWater[3] = {}; ///< [i] has mTexturesWater[i] as its colour attachment
    float mVertices[12] = {};
    float mStepRate = 40.0F;     ///< steps per unit of the time counter
    float mTerm[3] = {};         ///< weights of the newest state, of the one before, and of each neighbour
    int mCurrentBufferIndex = 0; ///< the newest state; the one before is two further on, the oldest one further on
    float mTime = 0.0F;
    float mNextStepTime = 0.0F;
    float mWaveSpeed = 2.0F;
    float mGridSpacing = 0.4F; ///< between neighbouring texels
    float mViscosity = 0.05F;
    float mTimeStep = 0.13F; ///< simulated time of a step
    int mWidth = 0;
    int mHeight = 0;
    float mWidthF = 0.0F;
    float mHeightF = 0.0F;
    Matrix mMatrixView = {};
    Matrix mMatrixMVP = {}; ///< screen pixels to the texture
};

/// A new object, never null; the caller deletes it.
ShallowWater* createShallowWater();
