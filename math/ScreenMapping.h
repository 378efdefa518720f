#pragma once

#include "math/Matrix.h"
#include "math/Vector3.h"

namespace tidalume {

/// An orthographic camera: where it stands, and the bounds of what it sees.
struct OrthoCamera {
    Vector3 eye;
    Vector3 at;
    Vector3 up;
    float left = 0.0F;
    float right = 0.0F;
    float bottom = 0.0F;
    float top = 0.0F;
};

/// The camera under which pixel (x, y, 0), origin top-left and y downwards, lands at normalised device coordinates
/// (2x / width - 1, 1 - 2y / height, 0.5).
OrthoCamera screenCamera(float width, float height);

/// view = the camera's view matrix; mvp = its right-handed orthographic projection, near 0.5 and far 1.5, times view.
/// Neither may be null.
void buildOrtho(OrthoCamera camera, Matrix* view, Matrix* mvp);

} // namespace tidalume
