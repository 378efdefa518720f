#pragma once

#include "headless/Picture.h"
#include "looks/Look.h"

#include <vector>

namespace tidalume::gallery {

/// One change of one finger or of the mouse.
struct Touch {
    float x = 0; ///< in pixels from the left
    float y = 0; ///< in pixels from the top
    TouchPhase phase = TouchPhase::Down;
    int pointer = 0; ///< one for each finger; 0 to pointerCount - 1
};

constexpr int pointerCount = Look::FINGERS;

/// Something shown in motion, as a Player plays it. All calls are made on the thread of the GL context:
///
///     std::unique_ptr<Scene> scene = entry.make();    // draws from lrand48 happen here and in drawFrame()
///     scene->setUp(width, height, background);
///     scene->touch(...);                              // any number
///     scene->drawFrame();                             // 60 times per second of the scene's own time
///
/// setUp() is called again after each change of size, and after contextLost() once there is a new context.
class Scene {
  public:
    virtual ~Scene() = default;

    /// Makes what depends on the GL context and on the size; the motion goes on where it was.
    /// @param width, height  of framebuffer 0, in pixels
    /// @param background     an opaque picture, which is stretched over that size
    virtual void setUp(int width, int height, const Picture& background) = 0;

    /// The GL context is gone: abandons every GL name without a GL call.
    virtual void contextLost() = 0;

    /// Takes a touch whose pointer is in range.
    virtual void touch(const Touch& touch) = 0;

    /// Advances by 1/60 s and draws into framebuffer 0, all of it.
    virtual void drawFrame() = 0;

    /// Draws into framebuffer 0, all of it, where the motion is, which does not go on.
    virtual void redraw() = 0;

    /// What may be set, and shows from the next frame on; as those of Look.
    /// @{
    virtual Span<Parameter> parameters() const = 0;
    virtual bool set(const char* parameter, float value) = 0;
    virtual float get(int parameter) const = 0;
    virtual Span<Preset> presets() const = 0;
    virtual bool usePreset(const char* name) = 0;
    /// @}
};

} // namespace tidalume::gallery
