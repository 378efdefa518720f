#include "looks/FieldPainter.h"

#include "foundation/ProgramTable.h"
#include "foundation/Quad.h"
#include "shaders/FieldPainter.h"

namespace tidalume {

const ProgramTable FieldPainter::mPrograms = {
    "FieldPainter",
    "FieldPainter Shader Init : %lf ms",
    {
        {&mProgram,
         "FieldPainterProgram",
         "createProgram FieldPainter",
         shaders::fieldPainter::vertex,
         shaders::fieldPainter::fragment,
         {{&mUniformArea, "area"},
          {&mUniformCut, "cut"},
          {&mUniformBottom, "bottom"},
          {&mUniformMiddle, "middle"},
          {&mUniformTop, "top"},
          {&mUniformTexture, "textureField"}},
         {{&mAttribVertices, "vertices"}}},
    },
};

namespace {

constexpr float cut = 0.1F; // of the effect

void setColor(GLint uniform, const Color& color) {
    glUniform4f(uniform, color.red * color.alpha, color.green * color.alpha, color.blue * color.alpha, color.alpha);
}

} // namespace

FieldPainter::FieldPainter() {
    ++mInstanceCount;
}

FieldPainter::~FieldPainter() {
    if (--mInstanceCount == 0) deletePrograms(mPrograms);
}

void FieldPainter::createPrograms() {
    buildPrograms(mPrograms);
}

void FieldPainter::abandon() {
    abandonPrograms(mPrograms);
}

void FieldPainter::paint(GLuint field, const FieldScreen& screen, const Colors& colors) {
    if (field == 0 || mProgram == 0) return;
    glEnable(GL_BLEND);
    glBlendEquation(GL_FUNC_ADD);
    glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);

    glUseProgram(mProgram);
    glUniform4fv(mUniformArea, 1, screen.area());
    glUniform1f(mUniformCut, cut);
    setColor(mUniformBottom, colors.bottom);
    setColor(mUniformMiddle, colors.middle);
    setColor(mUniformTop, colors.top);
    glUniform1i(mUniformTexture, 0);
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, field);

    float half[12];
    setQuad(half, -1, 0, 1, -1);
    drawQuad(mAttribVertices, half);
    setQuad(half, -1, 1, 1, 0);
    drawQuad(mAttribVertices, half);

    glBindTexture(GL_TEXTURE_2D, 0);
    glUseProgram(0);
    glDisable(GL_BLEND);
}

} // namespace tidalume
