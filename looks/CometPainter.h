#pragma once

#include "effects/comet/CometMesh.h"
#include "effects/comet/CometRenderer.h"
#include "looks/Color.h"

namespace tidalume {

/// Paints the comets of a CometRenderer in colours, as if they were drawn several times over one another.
class CometPainter {
  public:
    CometPainter();
    ~CometPainter();
    CometPainter(const CometPainter&) = delete;
    CometPainter& operator=(const CometPainter&) = delete;

    void createPrograms();
    void abandon();

    struct Style {
        Color tail;
        Color head;       // of the light that falls on the tail
        float layers = 1; // as many as the comets are drawn
    };

    /// Paints both comets' tails, cores and rings over the viewport in the bound framebuffer, with premultiplied alpha.
    /// Leaves blending disabled and program 0.
    /// @param comets         that have paths
    /// @param t              progress of the flight, 0 to 1
    /// @param width, height  of the screen, in pixels
    void paint(CometRenderer& comets, float t, const Style& style, float width, float height);

  private:
    struct Ring {
        float x, y; // middle, in pixels
        float radius, width;
    };

    void drawTails(CometRenderer& comets, int comet);
    void drawRing(const Ring& ring, float opacity, float width, float height);

    unsigned short mIndices[3 * CometMesh::triangles] = {};

    static inline GLuint mProgram = 0;
    static inline GLint mUniformHead = -1;
    static inline GLint mUniformNearness = -1;
    static inline GLint mUniformTailColor = -1;
    static inline GLint mUniformHeadColor = -1;
    static inline GLint mUniformOpacity = -1;
    static inline GLint mUniformLayers = -1;
    static inline GLint mAttribVertices = -1;
    static inline GLint mAttribTexcoords = -1;

    static inline int mInstanceCount = 0;

    static const ProgramTable mPrograms;
};

} // namespace tidalume
