#pragma once

#include "looks/Look.h"
#include "looks/Random.h"

#include <vector>

namespace tidalume {

/// What is inside a look: how it is drawn and moved. Look asks for it at the right times only, so that none of these
/// functions has to check.
class LookImplementation {
  public:
    /// @param parameters, presets  tables that live as long as the program
    LookImplementation(Span<Parameter> parameters, Span<Preset> presets);
    virtual ~LookImplementation() = default;

    /// There is a context: builds the programs.
    virtual void createPrograms() = 0;

    /// The context is gone: abandons every GL name without a GL call, and lets go of all fingers.
    virtual void abandon() = 0;

    /// Makes what depends on the context and on width() and height(): after createPrograms() and after each change of
    /// size. The motion goes on where it was.
    virtual void fitSurface() = 0;

    /// A touch, to be shown from the next step on. Makes no GL call. The finger is in range; one that moves or lifts
    /// has been put down.
    virtual void touch(int finger, float x, float y, TouchPhase phase) = 0;

    /// Advances by 1/60 s.
    virtual void step() = 0;

    /// Draws into a framebuffer; framebuffer 0 is bound before.
    virtual void draw(GLuint framebuffer) = 0;

    /// Whether step() would still change what is seen.
    virtual bool isMoving() const = 0;

  protected:
    float value(int parameter) const { return mValues[static_cast<std::size_t>(parameter)]; }
    int width() const { return mWidth; }
    int height() const { return mHeight; }
    /// The surface's shorter side in pixels, the unit of lengths that can be set.
    float shorterSide() const { return static_cast<float>(mWidth < mHeight ? mWidth : mHeight); }
    Random& random() { return mRandom; }

  private:
    friend class Look;

    int takeSteps(double seconds);
    void liftFingers();

    const Span<Parameter> mParameters;
    const Span<Preset> mPresets;
    std::vector<float> mValues; // of the parameters
    Random mRandom;
    int mWidth = 0;
    int mHeight = 0;
    bool mHasContext = false;
    bool mFits = false;   // what depends on context and size is made
    bool mHasNews = true; // something that the last picture does not show
    bool mIsDown[Look::FINGERS] = {};
    bool mClockRuns = false;
    double mStart = 0; // of the clock, in seconds
    double mSteps = 0; // run since
};

} // namespace tidalume
