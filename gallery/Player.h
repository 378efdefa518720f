#pragma once

#include "gallery/SceneTable.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>

namespace tidalume::gallery {

/// Plays one scene in time, for every front end.
///
/// The scene advances in steps of 1/60 s whatever the display's refresh rate is. It plays its demonstration until the
/// first touch.
///
///     Player player(entry, seed);
///     player.setUp(width, height, background);
///     player.touch(...);                                // any number
///     if (player.advance(seconds) > 0) ...;             // framebuffer 0 holds a new picture
///
/// All calls but contextLost() need the GL context current. Call setUp() after contextLost().
class Player {
  public:
    /// Makes the scene and seeds lrand48.
    Player(const SceneEntry& entry, std::uint32_t seed);

    /// As Scene::setUp().
    void setUp(int width, int height, const Picture& background);

    /// As Scene::contextLost().
    void contextLost() { mScene->contextLost(); }

    /// What may be set, as those of Scene.
    /// @{
    Span<Parameter> parameters() const { return mScene->parameters(); }
    bool set(const char* parameter, float value) { return mScene->set(parameter, value); }
    float get(int parameter) const { return mScene->get(parameter); }
    Span<Preset> presets() const { return mScene->presets(); }
    bool usePreset(const char* name) { return mScene->usePreset(name); }
    /// @}

    /// Passes a touch on; the first one ends the demonstration. Pointers that are out of range are ignored.
    void touch(const Touch& touch);

    /// Lets time pass and draws each step that has become due, at most maxSteps. Where more are due, the machine is too
    /// slow or was asleep: one step is drawn and the others are dropped.
    /// @return the number of steps, each of which drew all of framebuffer 0; 0 when it holds what it held before
    int advance(double seconds);

    /// Whether advance() by that time would draw.
    bool isDue(double seconds) const { return mDue + seconds >= timeStep; }

    /// Draws the next step whatever the time is.
    void drawStep();

    /// As Scene::redraw().
    void redraw() { mScene->redraw(); }

    static constexpr double timeStep = 1.0 / 60.0;
    static constexpr int maxSteps = 2;

  private:
    void demonstrate();
    void endDemonstration();

    std::unique_ptr<Scene> mScene;
    Demonstration* mDemonstration;
    float mWidth = 1;
    float mHeight = 1;
    bool mDemonstrating = true;
    std::array<std::optional<Touch>, pointerCount> mDemonstrated; // the fingers that the demonstration holds down
    int mFrame = 0;
    double mDue; // seconds that have passed and are not drawn yet
};

} // namespace tidalume::gallery
