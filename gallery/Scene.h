#pragma once

#include "headless/Picture.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace tidalume::gallery {

enum class TouchAction { Down, Move, Up };

/// One change of one finger or of the mouse.
struct Touch {
    float x = 0; ///< in pixels from the left
    float y = 0; ///< in pixels from the top
    TouchAction action = TouchAction::Down;
    int pointer = 0; ///< one for each finger; 0 to pointerCount - 1
};

constexpr int pointerCount = 10;

/// Something that a person may set while a scene runs.
struct Parameter {
    /// @param value  where the scene keeps it, with the initial value in it
    Parameter(const char* name, const char* label, float minimum, float maximum, float& value)
        : name(name), label(label), minimum(minimum), maximum(maximum), initial(value), value(&value) {}

    /// One of several choices. The value is its index in the list.
    Parameter(const char* name, const char* label, const std::vector<const char*>& choices, float& value)
        : name(name), label(label), minimum(0), maximum(static_cast<float>(choices.size() - 1)), initial(value),
          value(&value), choices(choices) {}

    const char* name;  ///< for Scene::set() and for links
    const char* label; ///< for people
    float minimum;
    float maximum;
    float initial;
    float* value;
    std::vector<const char*> choices; ///< for people; empty for a number
};

/// An effect shown in motion, as a Player plays it. All calls are made on the thread of the GL context:
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
    /// @param background     an opaque picture of that size; scenes that show none ignore it
    virtual void setUp(int width, int height, const Picture& background) = 0;

    /// The GL context is gone: abandons every GL name without a GL call.
    virtual void contextLost() = 0;

    /// Takes a touch whose pointer is in range.
    virtual void touch(const Touch& touch) = 0;

    /// Advances by 1/60 s and draws into framebuffer 0, all of it.
    virtual void drawFrame() = 0;

    /// The touches that show the scene at its best, to be made before frame 0, 1, 2, ... is drawn; after setUp(). A
    /// scene that shows itself untouched has none.
    virtual std::vector<Touch> demonstration(int) const { return {}; }

    /// What may be set, with its range. What is set shows from the next frame on.
    const std::vector<Parameter>& parameters() const { return mParameters; }

    /// Sets one of parameters(); the value is clamped to its range, an unknown name is ignored.
    void set(std::string_view name, float value) {
        for (const Parameter& parameter : mParameters) {
            if (name == parameter.name) *parameter.value = std::clamp(value, parameter.minimum, parameter.maximum);
        }
    }

  protected:
    std::vector<Parameter> mParameters; ///< for the constructor of each scene to list
};

} // namespace tidalume::gallery
