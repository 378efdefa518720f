#pragma once

#include "effects/vector/VectorGraphicRenderer.h"

#include <vector>

namespace tidalume::gallery {

/// How what is drawn is put together with what is there.
enum class Blend { Over, Add, Multiply, Screen, Lighten, Subtract };

/// Their names for people, in the same order.
const std::vector<const char*>& blendNames();

/// Draws with a blend from now on; an opaque surface stays opaque.
void setBlend(VectorGraphicRenderer& graphics, Blend blend);

/// The blend of a setting: blendNames() are its choices.
inline Blend toBlend(float setting) {
    return static_cast<Blend>(static_cast<int>(setting));
}

} // namespace tidalume::gallery
