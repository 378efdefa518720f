#pragma once

#include "looks/Look.h"
#include "looks/PictureTop.h"

namespace tidalume {

/// Water over a picture: rings run from every touch, bend the light and come back from the edges.
///
///     WaterLook water;
///     water.contextCreated();
///     water.setSize(1080, 1920);
///     water.setPicture(texture, 1080, 1920, PictureTop::FirstRow);
///     // per frame
///     water.draw(seconds);
///
/// What holds for all looks stands in Look. The picture covers the surface: its middle part, scaled. Without a picture
/// the ground is a plain teal. What is drawn is opaque.
///
/// The ripples are a height field of `fieldScale` texels a pixel, on which the cost of a frame depends most: it grows
/// with up to the third power of the scale, since a ring that is to be as fast needs as many more passes. A brook's
/// ring loses half a percent of its height a pass, so on a finer field it fades sooner. Rings look alike on fields with
/// the same number of texels across: on a surface twice as wide, at half the scale.
class WaterLook final : public Look {
  public:
    /// Indices of the parameters.
    enum {
        SIMULATION,
        FIELD_SCALE,
        SPEED,
        FADE,
        TOUCH_RADIUS,
        TOUCH_STRENGTH,
        DEPTH,
        STEEPNESS,
        SKY,
        LIGHT,
        RAIN,
    };
    /// Whether rings are sharp and soon gone, or round and run on for long.
    enum Simulation { BROOK, POND };

    WaterLook();
    ~WaterLook() override;
    WaterLook(const WaterLook&) = delete;
    WaterLook& operator=(const WaterLook&) = delete;

    /// The picture on the ground, a texture of the caller's that has to live until the next picture is set or the
    /// context is lost, which forgets it. It is copied, as it is at the next `draw` and after a change of size; call
    /// again when its content has changed. Linear filters are set on it. Colours are taken as premultiplied: parts that
    /// are transparent lie on black.
    /// @param texture        its GL name; 0 for none
    /// @param width, height  in texels; below 1: ignored, unless there is no texture
    void setPicture(GLuint texture, int width, int height, PictureTop top);

    /// Sets the parameter of that name, in the unit that the argument names; `parameters` has ranges and effects.
    /// @return false where the value is refused
    /// @{
    bool setSimulation(Simulation simulation) { return set(SIMULATION, static_cast<float>(simulation)); }
    bool setFieldScale(float texelsPerPixel) { return set(FIELD_SCALE, texelsPerPixel); }
    bool setSpeed(float shorterSidesPerSecond) { return set(SPEED, shorterSidesPerSecond); }
    bool setFade(float seconds) { return set(FADE, seconds); }
    bool setTouchRadius(float shorterSides) { return set(TOUCH_RADIUS, shorterSides); }
    bool setTouchStrength(float strength) { return set(TOUCH_STRENGTH, strength); }
    bool setDepth(float shorterSides) { return set(DEPTH, shorterSides); }
    bool setSteepness(float steepness) { return set(STEEPNESS, steepness); }
    bool setSky(float reflection) { return set(SKY, reflection); }
    bool setLight(float light) { return set(LIGHT, light); }
    bool setRain(float dropsPerSecond) { return set(RAIN, dropsPerSecond); }
    /// @}
};

} // namespace tidalume
