#pragma once

#include "effects/vector/VectorGraphicRenderer.h"

namespace tidalume::gallery {

/// How what is drawn is blended with what is there.
enum class Blend { Over, Add, Multiply, Screen, Lighten, Subtract };

/// Their names for people, in the same order.
inline constexpr const char* blendNames[] = {"Over", "Add", "Multiply", "Screen", "Lighten", "Subtract"};

/// Blends what is drawn from now on. An opaque surface stays opaque.
void setBlend(VectorGraphicRenderer& graphics, Blend blend);

} // namespace tidalume::gallery
