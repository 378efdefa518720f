#pragma once

#include "looks/Look.h"

namespace tidalume {

/// Comets in colours over whatever is there, with glowing heads from which sparks fall: every finger that comes down
/// sends two through its point, and others may come by themselves.
///
///     CometsLook comets;
///     comets.contextCreated();
///     comets.setSize(1080, 1920);
///     comets.usePreset("wish");
///     // at any time
///     comets.touch(0, x, y, TouchPhase::Down);
///     // per frame, over a night sky of one's own
///     comets.draw(seconds);
///
/// What holds for all looks stands in Look. Several pairs of comets fly at once; one more than there is room for takes
/// the place of the oldest. A finger that moves launches none. While nothing flies, drawing costs nothing.
class CometsLook final : public Look {
  public:
    /// Indices of the parameters.
    enum {
        DURATION,
        BRIGHTNESS,
        GLOW,
        SPARKS,
        HEAD_HUE,
        TAIL_HUE,
        METEORS,
    };

    CometsLook();
    ~CometsLook() override;
    CometsLook(const CometsLook&) = delete;
    CometsLook& operator=(const CometsLook&) = delete;

    /// Sets the parameter of that name, in the unit that the argument names; `parameters` has ranges and effects.
    /// @return false where the value is refused
    /// @{
    bool setDuration(float seconds) { return set(DURATION, seconds); }
    bool setBrightness(float layers) { return set(BRIGHTNESS, layers); }
    bool setGlow(float shorterSides) { return set(GLOW, shorterSides); }
    bool setSparks(float sparksPerSecond) { return set(SPARKS, sparksPerSecond); }
    bool setHeadHue(float degrees) { return set(HEAD_HUE, degrees); }
    bool setTailHue(float degrees) { return set(TAIL_HUE, degrees); }
    bool setMeteors(float launchesPerMinute) { return set(METEORS, launchesPerMinute); }
    /// @}
};

} // namespace tidalume
