#pragma once

#include "gallery/Scene.h"

namespace tidalume::gallery {

/// How coarse a field of metaballs is, in pixels per texel: as a person sets it, or coarser, so that the point sprite
/// of the largest ball stays within what the driver draws.
class FieldQuality {
  public:
    /// @param initial  what a person finds set
    explicit FieldQuality(float initial) : mChosen(initial) {}

    /// For a new context or another size of the screen.
    void setUp();

    /// The setting, for the parameters of a scene.
    Parameter parameter() { return {"quality", "Pixels per field texel", 1, 6, mChosen}; }

    /// Chooses the quality for balls of up to maxRadius pixels.
    /// @return whether the field is to be made anew with value()
    bool fit(float maxRadius);

    float value() const { return mValue; }

  private:
    float mChosen;
    float mMaxSpriteSize = 1;
    float mValue = 0; // 0 before the first field of a size
};

} // namespace tidalume::gallery
