#pragma once

#include "looks/Look.h"
#include "looks/PictureTop.h"

namespace tidalume {

/// Swell that rolls down over a picture, one sine curve behind the other; a finger pushes it.
///
///     WavesLook waves;
///     waves.contextCreated();
///     waves.setSize(1080, 1920);
///     waves.setPicture(texture, 1080, 1920, PictureTop::FirstRow);
///     // per frame
///     waves.draw(seconds);
///
/// What holds for all looks stands in Look. The picture covers the surface: its middle part, scaled. Without a picture
/// the ground is a plain teal. What is drawn is opaque. The swell rolls for ever, unless both
/// its speed and its sway are 0; the finger 0 pushes it.
class WavesLook final : public Look {
  public:
    /// Indices of the parameters.
    enum { FIELD_SCALE, SPEED, LENGTH, BENDS, SWAY, HEIGHT, DEPTH, SKY, LIGHT };

    WavesLook();
    ~WavesLook() override;
    WavesLook(const WavesLook&) = delete;
    WavesLook& operator=(const WavesLook&) = delete;

    /// As WaterLook::setPicture.
    void setPicture(GLuint texture, int width, int height, PictureTop top);

    /// Sets the parameter of that name, in the unit that the argument names; `parameters` has ranges and effects.
    /// @return false where the value is refused
    /// @{
    bool setFieldScale(float texelsPerPixel) { return set(FIELD_SCALE, texelsPerPixel); }
    bool setSpeed(float shorterSidesPerSecond) { return set(SPEED, shorterSidesPerSecond); }
    bool setLength(float shorterSides) { return set(LENGTH, shorterSides); }
    bool setBends(float bends) { return set(BENDS, bends); }
    bool setSway(float sway) { return set(SWAY, sway); }
    bool setHeight(float height) { return set(HEIGHT, height); }
    bool setDepth(float shorterSides) { return set(DEPTH, shorterSides); }
    bool setSky(float reflection) { return set(SKY, reflection); }
    bool setLight(float light) { return set(LIGHT, light); }
    /// @}
};

} // namespace tidalume
