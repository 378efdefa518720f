#include "gallery/Blend.h"

namespace tidalume::gallery {

namespace {

struct Row {
    GLenum equation;
    GLenum source, destination;
};

// In the order of the enumeration.
constexpr Row rows[] = {
    {GL_FUNC_ADD, GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA},
    {GL_FUNC_ADD, GL_SRC_ALPHA, GL_ONE},
    {GL_FUNC_ADD, GL_DST_COLOR, GL_ZERO},
    {GL_FUNC_ADD, GL_ONE, GL_ONE_MINUS_SRC_COLOR},
    {GL_MAX, GL_ONE, GL_ONE},
    {GL_FUNC_REVERSE_SUBTRACT, GL_SRC_ALPHA, GL_ONE},
};

} // namespace

void setBlend(VectorGraphicRenderer& graphics, Blend blend) {
    const Row& row = rows[static_cast<int>(blend)];
    graphics.setBlendEquation(static_cast<int>(row.equation));
    graphics.setBlendFunction(static_cast<int>(row.source), static_cast<int>(row.destination), GL_ZERO, GL_ONE);
}

} // namespace tidalume::gallery
