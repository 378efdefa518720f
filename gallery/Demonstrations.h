#pragma once

#include "gallery/Scene.h"

namespace tidalume::gallery {

/// The touches that show a scene at its best, to be made before frame 0, 1, 2, ... of 1/60 s is drawn.
/// @param width, height  of the surface, in pixels
using Demonstration = std::vector<Touch>(int frame, float width, float height);

Demonstration demonstrateWater;
Demonstration demonstratePond;
Demonstration demonstrateBlobs;
Demonstration demonstrateSpray;
Demonstration demonstrateComets;
Demonstration demonstrateVectorGraphics;

/// Of a scene that shows itself untouched.
Demonstration demonstrateNothing;

} // namespace tidalume::gallery
