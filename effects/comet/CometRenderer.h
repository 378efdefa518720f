#pragma once

#include "math/Vector2.h"
#include "math/Vector3.h"

#include <GLES3/gl3.h>

#include <cfloat>

namespace tidalume {
struct ProgramTable;
}

/// Two comets that fly across the screen through a touched point, each a glowing core with a widening tail, and rings
/// that open where they have just passed late in the flight.
///
/// Each comet follows a quadratic path from a random point near the edge of the screen through the touched point to a
/// point beyond it, slightly to one side. A flight's progress t goes from 0 at launch to 1 at its end and is the
/// caller's to advance; the head of a comet is at parameter t of its path. Its core is drawn behind that, at 0.9 t, and
/// the tip of its tail at 0.92 t, in layers of at most 20 % opacity that overlap.
///
///     CometRenderer comets;
///     comets.init();
///     comets.setScreenSize(1080, 1920);
///     comets.push(x, y, CometRenderer::ACTION_LAUNCH);
///     // per frame
///     comets.render(t);
///
/// Touches and heads are in pixels of the screen, origin top-left, y downwards; paths and meshes are in normalised
/// device coordinates. Random numbers come from `lrand48`, which the caller may seed.
///
/// Context and life cycle are those of all effects: docs/life-cycle.md. There are no textures: after a loss of the
/// context `init` is enough, and a flight under way goes on.
class CometRenderer {
  public:
    // Actions of `push`.
    static constexpr int ACTION_LAUNCH = 0;   ///< the next `render` launches a new flight through the point
    static constexpr int ACTION_CONTINUE = 1; ///< the flight goes on as it is; any positive number does the same
    static constexpr int ACTION_HIDE = -1;    ///< the comets are hidden; any negative number does the same

    CometRenderer();
    /// Deletes the class's programs with the last object of the class.
    virtual ~CometRenderer();
    CometRenderer(const CometRenderer&) = delete;
    CometRenderer& operator=(const CometRenderer&) = delete;

    /// Builds the class's programs and makes the object's meshes where they are missing. Without memory for the meshes
    /// the object draws nothing; the next call tries again.
    void init();

    /// Stores the size of the screen in pixels. Makes no GL call.
    void setScreenSize(int width, int height);

    /// Takes a touch. Call `setScreenSize` first. Makes no GL call.
    /// @param x, y    touched point in pixels; of one far outside the screen the paths start at an arbitrary distance
    /// @param action  one of those above
    void push(float x, float y, int action);

    /// Draws one frame over what is in the bound framebuffer, in white with alpha blending. Does nothing before `init`
    /// or while the comets are hidden, as they are before the first `push`. After a loss of the context call `init`
    /// first: the calls go out with program 0 otherwise, which draws nothing and leaves GL errors pending.
    ///
    /// The caller sets the viewport and the blend equation. Leaves blending and depth test disabled, the blend
    /// functions at source alpha over (alpha: 1 over), program 0, and the two arrays of the tails enabled (attributes 0
    /// and 1): they point into memory that is no longer valid.
    /// @param t  progress of the flight, 0 to 1, not clamped
    void render(double t);

    /// Forgets the programs of the class without a GL call, for a context that is gone. Meshes and paths remain.
    void GLContextDestroyed();

    /// The heads of the two comets at the progress that was last drawn, in pixels; the middle of the screen before.
    /// @{
    float getCore1X();
    float getCore1Y();
    float getCore2X();
    float getCore2Y();
    /// @}

    /// The middle of a core where `render` draws it at progress t, in pixels. Known without drawing, from
    /// `updateControlPoints` on.
    /// @param comet  0; any other number stands for the second one
    Vector2 getDrawnCore(int comet, float t);

    /// Draws new random paths through the last touch. `render` calls it for a launch.
    void updateControlPoints();
    /// Computes the tail meshes for progress t. `render` calls it for every frame. Does nothing before `init`.
    void updateMesh(float t);

    /// One of four tail meshes: 0 and 1 are the wide and the narrow tail of the first comet, 2 and 3 those of the
    /// second. 303 vertices (x, 0, y) in normalised device coordinates: 3 rows across the tail with 101 columns along
    /// it, the first column at the head. Null before `init`; owned by this object.
    float* getVertices(int mesh);
    /// Texture coordinates of every mesh: 303 pairs, 0 at the head to 1 at the end of the tail, then 1 to 0 across it.
    /// Null before `init`, or without memory; owned by this object.
    float* getTexCoords();

  private:
    friend struct TestPeer;

    bool hasMeshes() const;
    static float randomRange(float a, float b);
    static Vector3 randomStart(float height);
    bool isStartRejected(int comet, const Vector3& start, const Vector3& touch) const;
    void computeControlPoints(int comet);
    void computeTailMesh(int mesh, float t, float spread);
    void drawTails(float t);
    void drawCores(double t);
    void drawRings(double t);
    void drawPoints(float s, float s2);
    float toPixelX(const Vector3& point) const;
    float toPixelY(const Vector3& point) const;

    float mScreenWidth = 0.0F;
    float mScreenHeight = 0.0F;
    float mTargetX = FLT_MAX; ///< last touch in normalised device coordinates; FLT_MAX before the first
    float mTargetY = FLT_MAX;
    Vector3 mControlPoints[2][3];     ///< per comet: start, touched point, end
    Vector3 mCurveCoefficients[2][3]; ///< per comet: D, E, F of the path D + E s + F s^2
    Vector3 mCores[2];
    int mTouchState = -1; ///< action of the last push; a launch turns 0 into 1
    int mColumns = 0;
    int mRows = 0;
    int mTriangleCount = 0;
    int mVertexCount = 0;
    float* mVertices[4] = {};
    float* mTexCoords = nullptr;
    unsigned short* mIndices = nullptr;

    static inline GLuint mProgramCoreOfComet = 0;
    static inline GLint mCoreOfCometT0 = -1;
    static inline GLint mCoreOfCometFillmode = -1;
    static inline GLint mCoreOfCometRadius = -1;
    static inline GLint mCoreOfCometVertices = -1;

    static inline GLuint mProgramTailOfComet = 0;
    static inline GLint mTailOfCometT0 = -1;
    static inline GLint mTailOfCometVertices = -1;
    static inline GLint mTailOfCometTexcoords = -1;

    static inline int mInstanceCount = 0;

    static const tidalume::ProgramTable mPrograms;
};

/// A new object, never null; the caller deletes it.
CometRenderer* createCometRenderer();
