#pragma once

#include "looks/Look.h"

namespace tidalume {

/// Lit blobs: drops that rise from a pool at the bottom and sink from one at the top, a blob under every finger, and
/// balls of the caller's. They merge where they meet.
///
///     BlobsLook blobs;
///     blobs.contextCreated();
///     blobs.setSize(1080, 1920);
///     blobs.usePreset("mercury");
///     // per frame
///     blobs.draw(seconds);
///
/// What holds for all looks stands in Look. The blobs are drawn over what is there. With a speed of 0 they come to rest
/// within a second after the last touch.
///
/// A palette is a pile of layers, from the rim to the highlights, each of which is a field of its own and a pass over
/// the surface: eight for lava, seven for mercury, four for ink.
class BlobsLook final : public Look {
  public:
    /// Indices of the parameters.
    enum {
        PALETTE,
        FIELD_SCALE,
        HUE,
        OPACITY,
        DROP_SIZE,
        DROPS,
        POOLS,
        SPEED,
        TOUCH_RADIUS,
    };
    /// What blobs look like.
    enum Palette { LAVA, MERCURY, INK };

    /// In pixels, the centre from the surface's top-left corner.
    struct Ball {
        float x;      ///< of the centre, to the right
        float y;      ///< of the centre, downwards
        float radius; ///< without other balls near
    };

    BlobsLook();
    ~BlobsLook() override;
    BlobsLook(const BlobsLook&) = delete;
    BlobsLook& operator=(const BlobsLook&) = delete;

    /// Balls that are added to those that move by themselves, until the next call. A ball alone is a disc of its
    /// radius. Not drawn: balls that are not finite, with a radius of 0 or less, or with a centre further outside than
    /// an eighth of the surface's shorter side.
    /// @param balls  copied; may be null where there are none
    void setBalls(const Ball* balls, int count);

    /// Sets the parameter of that name, in the unit that the argument names; `parameters` has ranges and effects.
    /// @return false where the value is refused
    /// @{
    bool setPalette(Palette palette) { return set(PALETTE, static_cast<float>(palette)); }
    bool setFieldScale(float texelsPerPixel) { return set(FIELD_SCALE, texelsPerPixel); }
    bool setHue(float degrees) { return set(HUE, degrees); }
    bool setOpacity(float opacity) { return set(OPACITY, opacity); }
    bool setDropSize(float size) { return set(DROP_SIZE, size); }
    bool setDrops(float share) { return set(DROPS, share); }
    bool setPools(float share) { return set(POOLS, share); }
    bool setSpeed(float shorterSidesPerSecond) { return set(SPEED, shorterSidesPerSecond); }
    bool setTouchRadius(float shorterSides) { return set(TOUCH_RADIUS, shorterSides); }
    /// @}
};

} // namespace tidalume
