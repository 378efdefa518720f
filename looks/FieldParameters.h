#pragma once

#include "looks/Parameter.h"

/// Parameters that looks of metaballs share.
namespace tidalume {

inline constexpr Parameter outlines = {"fieldScale",
                                       "Fineness of the outlines",
                                       "texels a pixel",
                                       0.15F,
                                       1,
                                       0.5F,
                                       "Smoother outlines, at a higher cost.",
                                       {}};
inline constexpr Parameter hue = {
    "hue", "Shift of the colours", "degrees", -180, 180, 0, "Colours turn from red towards green.", {}};
inline constexpr Parameter opacity = {"opacity", "Opacity", "", 0, 1, 1, "Less of what lies behind shows through.", {}};

} // namespace tidalume
