#pragma once

#include "looks/Color.h"
#include "looks/FieldScreen.h"

#include <GLES3/gl3.h>

namespace tidalume {

struct ProgramTable;

/// Paints where a field of metaballs exceeds the threshold of 0.1, with an outline that goes from nothing to all within
/// about a pixel. The colours run from the bottom over the middle to the top of the target.
class FieldPainter {
  public:
    FieldPainter();
    ~FieldPainter();
    FieldPainter(const FieldPainter&) = delete;
    FieldPainter& operator=(const FieldPainter&) = delete;

    void createPrograms();
    void abandon();

    struct Colors {
        Color bottom;
        Color middle;
        Color top;
    };

    /// Paints over the viewport in the bound framebuffer, with premultiplied alpha. Leaves blending disabled, program
    /// 0, and texture 0 on unit 0, which is active.
    /// @param field   texture of a Metaball2DRenderer; 0: nothing is painted
    /// @param screen  of the renderer
    void paint(GLuint field, const FieldScreen& screen, const Colors& colors);

  private:
    static inline GLuint mProgram = 0;
    static inline GLint mUniformArea = -1;
    static inline GLint mUniformCut = -1;
    static inline GLint mUniformBottom = -1;
    static inline GLint mUniformMiddle = -1;
    static inline GLint mUniformTop = -1;
    static inline GLint mUniformTexture = -1;
    static inline GLint mAttribVertices = -1;

    static inline int mInstanceCount = 0;

    static const ProgramTable mPrograms;
};

} // namespace tidalume
