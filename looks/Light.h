#pragma once

#include "foundation/ColorTarget.h"
#include "looks/Color.h"

namespace tidalume {

/// Light around a head: how opaque it is and how white, by the distance from the middle as a share of the radius.
struct Light {
    float alpha;
    float whiteness;
};

/// A head's wide glow around a white core.
Light glowAt(float distance);

/// A small ball of light.
Light emberAt(float distance);

/// Makes a square bitmap of light that fades towards its edges, premultiplied.
/// @param size  in texels
void paintLight(ColorTarget& target, int size, Light (*lightAt)(float), const Color& color);

} // namespace tidalume
