#pragma once

#include "headless/Picture.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace tidalume::gallery {

/// One line of the table of grounds: pictures, drawn by the processor, for scenes to show beneath their effects.
struct Ground {
    const char* name;  ///< for command lines
    const char* title; ///< for people
    /// An opaque picture of width x height pixels, each 1 to 4096. At another size of the same shape it is the same
    /// picture. Grounds that hold nothing of chance ignore the seed.
    Picture (*draw)(int width, int height, std::uint32_t seed);
};

/// Every ground. Rings of water can be read over those that come before night.
const std::vector<Ground>& groundTable();

/// The ground of that name; throws std::out_of_range where there is none.
const Ground& groundNamed(std::string_view name);

} // namespace tidalume::gallery
