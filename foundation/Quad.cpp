#include "foundation/Quad.h"

#include <algorithm>
#include <iterator>

namespace tidalume {

void setQuad(float* vertices, float left, float top, float right, float bottom) {
    const float corners[12] = {left, bottom, 0.0F, right, bottom, 0.0F, left, top, 0.0F, right, top, 0.0F};
    std::copy(std::begin(corners), std::end(corners), vertices);
}

void drawQuad(GLint attribute, const float* vertices) {
    const auto index = static_cast<GLuint>(attribute);
    glVertexAttribPointer(index, 3, GL_FLOAT, GL_FALSE, 0, vertices);
    glEnableVertexAttribArray(index);
    glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
    glDisableVertexAttribArray(index);
}

} // namespace tidalume
