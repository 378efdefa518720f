#include "looks/CometPainter.h"

#include "foundation/ProgramTable.h"
#include "shaders/CometPainter.h"

#include <algorithm>
#include <cmath>

namespace tidalume {

const ProgramTable CometPainter::mPrograms = {
    "CometPainter",
    "CometPainter Shader Init : %lf ms",
    {
        {&mProgram,
         "CometPainterProgram",
         "createProgram CometPainter",
         shaders::cometPainter::vertex,
         shaders::cometPainter::fragment,
         {{&mUniformHead, "head"},
          {&mUniformNearness, "nearness"},
          {&mUniformTailColor, "tailColor"},
          {&mUniformHeadColor, "headColor"},
          {&mUniformOpacity, "opacity"},
          {&mUniformLayers, "layers"}},
         {{&mAttribVertices, "vertices"}, {&mAttribTexcoords, "texcoords"}}},
    },
};

namespace {

constexpr float pi = 3.1415927F;
constexpr float twoPi = 2 * pi;

constexpr float lightRadius = 0.25F; // in shorter sides, in the middle of a flight

// Of the effect.
constexpr float coreShare = 0.9F;
constexpr float fullOpacity = 0.2F;
constexpr float coreRadius = 0.02F; // in widths, at launch
constexpr float fade = 2;           // of rings, from what is left of the flight to opacity
constexpr float ringWidth = 3;      // in pixels
struct RingStart {
    float t;         // progress at which rings open on both paths, where the head is then
    float expansion; // from progress to radius, in widths
};
constexpr RingStart ringStarts[] = {{0.75F, 0.167F}, {0.85F, 0.176F}};

float toDeviceX(float x, float width) {
    return 2 * x / width - 1;
}

float toDeviceY(float y, float height) {
    return 1 - 2 * y / height;
}

} // namespace

CometPainter::CometPainter() {
    ++mInstanceCount;
    fillCometIndices(mIndices);
}

CometPainter::~CometPainter() {
    if (--mInstanceCount == 0) deletePrograms(mPrograms);
}

void CometPainter::createPrograms() {
    buildPrograms(mPrograms);
}

void CometPainter::abandon() {
    abandonPrograms(mPrograms);
}

void CometPainter::paint(CometRenderer& comets, float t, const Style& style, float width, float height) {
    if (mProgram == 0) return;
    comets.updateMesh(t);
    glEnable(GL_BLEND);
    glBlendEquation(GL_FUNC_ADD);
    glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    glUseProgram(mProgram);
    const float reach = std::max(lightRadius * std::min(width, height) * std::sqrt(std::sin(pi * t)), 1.0F);
    glUniform2f(mUniformNearness, 0.5F * width / reach, 0.5F * height / reach);
    glUniform3f(mUniformTailColor, style.tail.red, style.tail.green, style.tail.blue);
    glUniform3f(mUniformHeadColor, style.head.red, style.head.green, style.head.blue);
    glUniform1f(mUniformLayers, style.layers);

    const float opacity = fullOpacity * std::sin(pi * t);
    const float radius = coreRadius * width * (1 - std::sqrt(t) * t * t);
    for (const int comet : {0, 1}) {
        const Vector2 core = comets.getDrawnCore(comet, t);
        glUniform2f(mUniformHead, toDeviceX(core.x, width), toDeviceY(core.y, height));
        glUniform1f(mUniformOpacity, opacity);
        drawTails(comets, comet);
        drawRing({core.x, core.y, radius, radius}, opacity, width, height);
        for (const RingStart& start : ringStarts) {
            if (t <= start.t) continue;
            const Vector2 middle = comets.getDrawnCore(comet, start.t / coreShare);
            const float ringRadius = start.expansion * (t - start.t) * width;
            drawRing({middle.x, middle.y, ringRadius, std::min(ringWidth, ringRadius)}, fade * (1 - t), width, height);
        }
    }
    glUseProgram(0);
    glDisable(GL_BLEND);
}

void CometPainter::drawTails(CometRenderer& comets, int comet) {
    const auto vertices = static_cast<GLuint>(mAttribVertices);
    const auto texcoords = static_cast<GLuint>(mAttribTexcoords);
    glEnableVertexAttribArray(vertices);
    glEnableVertexAttribArray(texcoords);
    glVertexAttribPointer(texcoords, 2, GL_FLOAT, GL_FALSE, 0, comets.getTexCoords());
    for (const int mesh : {2 * comet, 2 * comet + 1}) {
        glVertexAttribPointer(vertices, 3, GL_FLOAT, GL_FALSE, 0, comets.getVertices(mesh));
        glDrawElements(GL_TRIANGLES, 3 * CometMesh::triangles, GL_UNSIGNED_SHORT, mIndices);
    }
    glDisableVertexAttribArray(texcoords);
    glDisableVertexAttribArray(vertices);
}

// A strip between its two edges; as opaque as a tail at its head.
void CometPainter::drawRing(const Ring& ring, float opacity, float width, float height) {
    constexpr int sections = 40;
    float strip[2 * (sections + 1)][3];
    for (int i = 0; i <= sections; ++i) {
        const float angle = twoPi * static_cast<float>(i) / sections;
        for (const int edge : {0, 1}) {
            const float radius = ring.radius - static_cast<float>(edge) * ring.width;
            float* vertex = strip[2 * i + edge];
            vertex[0] = toDeviceX(ring.x + radius * std::cos(angle), width);
            vertex[1] = 0;
            vertex[2] = toDeviceY(ring.y + radius * std::sin(angle), height);
        }
    }
    glUniform1f(mUniformOpacity, opacity);
    const auto vertices = static_cast<GLuint>(mAttribVertices);
    glEnableVertexAttribArray(vertices);
    glVertexAttrib2f(static_cast<GLuint>(mAttribTexcoords), 0, 0);
    glVertexAttribPointer(vertices, 3, GL_FLOAT, GL_FALSE, 0, strip);
    glDrawArrays(GL_TRIANGLE_STRIP, 0, 2 * (sections + 1));
    glDisableVertexAttribArray(vertices);
}

} // namespace tidalume
