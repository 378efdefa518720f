#pragma once

#include <initializer_list>

namespace tidalume {

/// Whether a disturbance may go into a height field: the radius is not 0, and every number is finite. A single NaN
/// would spread over the whole field within a few updates.
bool isDisturbance(float radius, std::initializer_list<float> others);

} // namespace tidalume
