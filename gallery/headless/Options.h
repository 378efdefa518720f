#pragma once

#include "gallery/Settings.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tidalume::gallery {

/// What the command line of tidalume-gallery asks for.
struct Options {
    bool list = false;
    std::vector<const SceneEntry*> scenes; ///< in the table's order
    int width = 540;
    int height = 960;
    std::string size = "540x960"; ///< as it was given
    int ahead = 120;
    int frames = 120;
    std::string background; ///< a picture file; empty for none
    std::string ground;     ///< the name of one for every scene; empty for each scene's own
    Settings settings;
    std::uint32_t seed = 1;
    std::string out = "out/gallery";
};

/// Reads the command line. Where it asks for help, or is wrong, prints that and ends the process, with status 0 or 2.
Options parseOptions(int argc, char** argv);

} // namespace tidalume::gallery
