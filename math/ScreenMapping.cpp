#include "math/ScreenMapping.h"

namespace tidalume {

OrthoCamera screenCamera(float width, float height) {
    return {{0.0F, 0.0F, 1.0F}, {0.0F, 0.0F, 0.0F}, {0.0F, -1.0F, 0.0F}, width, 0.0F, -height, 0.0F};
}

void buildOrtho(OrthoCamera camera, Matrix* view, Matrix* mvp) {
    constexpr float near = 0.5F;
    constexpr float far = 1.5F;
    view->LookAtRH(&camera.eye.x, &camera.at.x, &camera.up.x);
    mvp->OrthoOffCenterRH(camera.left, camera.right, camera.bottom, camera.top, near, far);
    mvp->mul(view, mvp);
}

} // namespace tidalume
