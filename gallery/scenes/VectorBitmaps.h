#pragma once

#include "headless/Picture.h"

namespace tidalume::gallery {

/// A sailing boat on a rounded tile. No two of its rotations and reflections look alike.
/// @param size  width and height in pixels
Picture boatTile(int size);

/// A coast at dusk, twice as wide as high.
/// @param height  in pixels
Picture coast(int height);

/// A mask in the red channel: a window with a scalloped rim and a ring of pearls around it.
/// @param width, height  of the surface that it covers, in pixels
/// @param x, y, radius   of the window, in pixels
Picture windowMask(int width, int height, float x, float y, float radius);

} // namespace tidalume::gallery
