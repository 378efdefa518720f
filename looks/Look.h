#pragma once

#include "looks/Parameter.h"

#include <GLES3/gl3.h>

#include <cstdint>
#include <memory>

namespace tidalume {

class LookImplementation;

/// What a finger or the mouse does.
enum class TouchPhase {
    Down,
    Move,
    Up,
    Cancel ///< the system takes the finger away: it is up, and what it began may end at once
};

/// An effect ready to use: it keeps its own time, follows touches, fits itself to the surface and survives the loss of
/// the context. The looks are WaterLook, WavesLook, BlobsLook, SprayLook and CometsLook; each header shows its own.
///
///     WaterLook water;
///     water.contextCreated();
///     water.setSize(1080, 1920);
///     water.usePreset("rain");
///     // at any time
///     water.touch(0, x, y, TouchPhase::Down);
///     // per frame
///     water.draw(seconds);
///
/// **Context.** Calls belong to the thread on which an OpenGL ES 3.0 context is current. When a context is lost, call
/// `contextLost` on every look first, then `contextCreated` on every look: looks of a class share their programs. What
/// has been set, and what moves by itself, goes on; water is still again. Destroy a look while its context is current,
/// or after `contextLost`.
///
/// **Surface.** Positions are pixels, origin top-left, y downwards. Lengths that can be set are shares of the surface's
/// shorter side. Water and waves are opaque and cover the surface. Other looks draw over what is there, with
/// premultiplied alpha: on a surface cleared to (0, 0, 0, 0) the result composes over any content.
///
/// **Time.** A look moves in steps of 1/60 s whatever the display's rate is. Time that passes in a pause is skipped,
/// not made up for.
///
/// **Chance** comes from a generator of the look's own, which `setSeed` starts; comets and sprayed drops are the
/// effects', which draw from `lrand48`.
///
/// **GL state.** `draw` needs nothing but the context. It leaves vertex array 0 bound and no buffer of vertices or
/// indices; scissor, stencil and depth test, blending and culling disabled, and all channels writable; the framebuffer
/// that it drew into bound, and the viewport on the surface; program 0, no texture on units 0 to 2, of which 0 is
/// active, no sampler there, attribute arrays 0 and 1 disabled, without divisors, the current value of attribute 1
/// changed; rows of pixels unpacked from memory as they are by default; the blend equation GL_FUNC_ADD, any blend
/// functions and blend colour, and the clear colour (0, 0, 0, 0). All else stays as it was.
///
/// Setters never throw. What is out of range, or not a number, is refused: they return false, log parameter, value and
/// range, and keep the value.
class Look {
  public:
    /// Deletes the look's GL resources.
    virtual ~Look();
    Look(const Look&) = delete;
    Look& operator=(const Look&) = delete;

    /// There is a context now: builds the programs. Ignored where the look has a context already.
    void contextCreated();

    /// The context is gone: abandons every GL name without a GL call. Fingers that are down are up.
    void contextLost();

    /// The surface has this size now, in pixels. Makes no GL call; textures follow with the next `draw`. Below 1 in
    /// either: nothing is drawn until there is a size again, and fingers that are down are up. So it is with a size
    /// beyond the driver's textures, which the next `draw` logs.
    void setSize(int width, int height);

    /// Takes a touch, which shows from the next step on. Makes no GL call. Ignored before `setSize`, with a finger out
    /// of range, with a position that is not finite, and for a finger that moves or lifts without having been put down.
    /// @param finger  0 to FINGERS - 1, each one of its own; numbers may be used again once the finger is up
    /// @param x, y    in pixels
    void touch(int finger, float x, float y, TouchPhase phase);
    /// How many fingers a look follows.
    static constexpr int FINGERS = 10;

    /// Runs the steps that are due and draws. Draws nothing before `contextCreated` and `setSize`.
    /// @param seconds      now, of a clock that does not jump, such as that of the display's frames; where it goes
    ///                     back, or on by more than four steps, a single step is run
    /// @param framebuffer  to draw into; its size is that of `setSize`
    void draw(double seconds, GLuint framebuffer = 0);

    /// Whether pictures still change, so that frames have to go on; false without a size. A touch, a setting, a size
    /// and a context make it true; `draw` makes it false once there is nothing left to see. Reads nothing back from the
    /// GPU.
    bool isMoving() const;

    /// Starts the look's chance anew. The paths of blobs are drawn from it once, before the first `draw`.
    void setSeed(std::uint32_t seed);

    /// What can be set, in the order of the class's enumeration.
    Span<Parameter> parameters() const;

    /// Sets a parameter by its index.
    bool set(int parameter, float value);

    /// Sets a parameter by its name, which is not null.
    bool set(const char* parameter, float value);

    /// The value of a parameter; 0 for an index out of range.
    float get(int parameter) const;

    /// Ready-made settings; the first one's are the initial values.
    Span<Preset> presets() const;

    /// Gives every parameter the value that the preset gives it, or its initial one. An unknown name is refused as
    /// setters refuse a value.
    /// @param name  not null
    bool usePreset(const char* name);

  protected:
    /// For the looks of the library.
    explicit Look(std::unique_ptr<LookImplementation> implementation);
    /// For setters of a class of its own, whose change shows with the next `draw`.
    LookImplementation& change();

  private:
    std::unique_ptr<LookImplementation> mImplementation;
};

} // namespace tidalume
