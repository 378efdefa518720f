#pragma once

#include "looks/Look.h"

namespace tidalume {

/// Fingers that spray: a blob swells under a finger that comes down; while the finger is dragged, drops fly off towards
/// it from half way, merge with their neighbours, slow down and, after three seconds and a third, shrink away.
///
///     SprayLook spray;
///     spray.contextCreated();
///     spray.setSize(1080, 1920);
///     spray.usePreset("lagoon");
///     // per frame
///     spray.draw(seconds);
///
/// What holds for all looks stands in Look. The drops are drawn over what is there. Without a touch nothing is drawn,
/// and four seconds after the last finger has lifted nothing is left.
///
/// The fingers 0 to SPRAYING_FINGERS - 1 spray, each in a field of its own, so that drops of one finger do not merge
/// with those of another. A finger that comes down again takes its former drops away. Colours depend on where a drop
/// is: they run from the bottom of the surface to its top.
class SprayLook final : public Look {
  public:
    /// Indices of the parameters.
    enum {
        PALETTE,
        FIELD_SCALE,
        HUE,
        OPACITY,
        TOUCH_RADIUS,
    };
    /// Colours from the bottom of the surface to its top.
    enum Palette { SUNSET, LAGOON, ORCHID };

    /// How many fingers spray.
    static constexpr int SPRAYING_FINGERS = 5;

    SprayLook();
    ~SprayLook() override;
    SprayLook(const SprayLook&) = delete;
    SprayLook& operator=(const SprayLook&) = delete;

    /// Sets the parameter of that name, in the unit that the argument names; `parameters` has ranges and effects.
    /// @return false where the value is refused
    /// @{
    bool setPalette(Palette palette) { return set(PALETTE, static_cast<float>(palette)); }
    bool setFieldScale(float texelsPerPixel) { return set(FIELD_SCALE, texelsPerPixel); }
    bool setHue(float degrees) { return set(HUE, degrees); }
    bool setOpacity(float opacity) { return set(OPACITY, opacity); }
    bool setTouchRadius(float shorterSides) { return set(TOUCH_RADIUS, shorterSides); }
    /// @}
};

} // namespace tidalume
