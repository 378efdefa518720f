#pragma once

#include <GLES3/gl3.h>

namespace tidalume {

/// Writes the corners (x, y, 0) of a rectangle in pixels as a triangle strip: lower-left, lower-right, upper-left,
/// upper-right on the screen. y grows downwards, so bottom is the larger y.
/// @param vertices  12 floats, not null
void setQuad(float* vertices, float left, float top, float right, float bottom);

/// Draws a quad as a triangle strip: points the attribute to the vertices, enables it, draws and disables it.
/// @param vertices  four corners (x, y, z) in the caller's memory; not null
void drawQuad(GLint attribute, const float* vertices);

} // namespace tidalume
