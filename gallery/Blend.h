#pragma once

#include "effects/vector/VectorGraphicRenderer.h"

#include <vector>

namespace tidalume::gallery {

/// How what is drawn is blended with what is there.
enum class Blend { Over, Add, Multiply, Screen, Lighten, Subtract };

/// Their names for people, in the same order.
const std::vector<const char*>& blendNames();

/// Blends what is drawn from now on. An opaque surface stays opaque.
void setBlend(VectorGraphicRenderer& graphics, Blend blend);

/// The blend that a parameter with the choices blendNames() is set to.
inline Blend toBlend(float setting) {
    return static_cast<Blend>(static_cast<int>(setting));
}

} // namespace tidalume::gallery
