#include "gallery/Blend.h"

namespace tidalume::gallery {

namespace {

struct Row {
    const char* name;
    GLenum equation;
    GLenum source, destination;
};

// In the order of the enumeration.
constexpr Row rows[] = {
    {"Over", GL_FUNC_ADD, GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA},
    {"Add", GL_FUNC_ADD, GL_SRC_ALPHA, GL_ONE},
    {"Multiply", GL_FUNC_ADD, GL_DST_COLOR, GL_ZERO},
    {"Screen", GL_FUNC_ADD, GL_ONE, GL_ONE_MINUS_SRC_COLOR},
    {"Lighten", GL_MAX, GL_ONE, GL_ONE},
    {"Subtract", GL_FUNC_REVERSE_SUBTRACT, GL_SRC_ALPHA, GL_ONE},
};

} // namespace

const std::vector<const char*>& blendNames() {
    static const std::vector<const char*> names = [] {
        std::vector<const char*> all;
        for (const Row& row : rows)
            all.push_back(row.name);
        return all;
    }();
    return names;
}

void setBlend(VectorGraphicRenderer& graphics, Blend blend) {
    const Row& row = rows[static_cast<int>(blend)];
    graphics.setBlendEquation(static_cast<int>(row.equation));
    graphics.setBlendFunction(static_cast<int>(row.source), static_cast<int>(row.destination), GL_ZERO, GL_ONE);
}

} // namespace tidalume::gallery
