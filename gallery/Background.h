#pragma once

#include "headless/Picture.h"

#include <cstdint>
#include <string_view>

namespace tidalume::gallery {

/// The middle part of a picture, scaled to cover width x height pixels. Transparent pixels are laid over black; the
/// result is opaque.
Picture coverFit(const Picture& picture, int width, int height);

/// A background of width x height pixels: the chosen picture as by coverFit(), or where it is empty the ground of that
/// name, which the table of grounds must hold.
Picture makeBackground(const Picture& chosen, std::string_view ground, int width, int height, std::uint32_t seed = 1);

} // namespace tidalume::gallery
