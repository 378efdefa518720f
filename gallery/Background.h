#pragma once

#include "headless/Picture.h"

namespace tidalume::gallery {

/// The middle part of a picture, scaled to cover width x height pixels. Transparent pixels are laid over black; the
/// result is opaque.
Picture coverFit(const Picture& picture, int width, int height);

/// A background of width x height pixels: the chosen picture as by coverFit(), or pebbles where it is empty.
Picture makeBackground(const Picture& chosen, int width, int height);

} // namespace tidalume::gallery
