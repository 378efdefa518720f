#pragma once

#include "shaders/WaterSurface.h"

namespace tidalume::shaders::intensityMapBuilder {

inline constexpr auto vertex = quadVertex;
inline constexpr auto dropLineFragment = join(prologue, water::bump, water::segmentShape, water::storeBump);
inline constexpr auto horizontalWaveFragment =
    join(prologue, water::bump, water::horizontalWaveShape, water::storeBump);

} // namespace tidalume::shaders::intensityMapBuilder
