#include "effects/water/WaterPass.h"

#include <algorithm>
#include <cmath>

namespace tidalume {

bool isDisturbance(float radius, std::initializer_list<float> others) {
    const auto isFinite = [](float value) { return std::isfinite(value); };
    return radius != 0.0F && std::isfinite(radius) && std::all_of(others.begin(), others.end(), isFinite);
}

void drawQuad(GLint attribute, const float* vertices) {
    const auto index = static_cast<GLuint>(attribute);
    glVertexAttribPointer(index, 3, GL_FLOAT, GL_FALSE, 0, vertices);
    glEnableVertexAttribArray(index);
    glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
    glDisableVertexAttribArray(index);
}

} // namespace tidalume
