#pragma once

#include "gallery/Settings.h"

#include <string>

namespace tidalume::gallery {

/// What the command line of tidalume-viewer asks for.
struct ViewerOptions {
    std::size_t scene = 0; ///< place in the scene table
    // Both 0 for a window that fits the screen.
    int width = 0;
    int height = 0;
    std::string background; ///< a picture file; empty for none
    std::string ground;     ///< the name of one for every scene; empty for each scene's own
    Settings settings;
    std::string script; ///< a file for Script; empty for none
};

/// Reads the command line. Where it asks for help, or is wrong, prints that and ends the process, with status 0 or 2.
ViewerOptions parseViewerOptions(int argc, char** argv);

} // namespace tidalume::gallery
