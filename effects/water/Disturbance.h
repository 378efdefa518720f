#pragma once

#include <GLES3/gl3.h>

#include <initializer_list>

namespace tidalume {

/// Whether a disturbance may go into a height field: the radius is not 0, and every number is finite. A single NaN
/// would spread over the whole field within a few updates.
bool isDisturbance(float radius, std::initializer_list<float> others);

/// Draws a quad as a triangle strip: points the attribute to the vertices, enables it, draws and disables it.
/// @param vertices  four corners (x, y, z) in the caller's memory; not null
void drawQuad(GLint attribute, const float* vertices);

} // namespace tidalume
