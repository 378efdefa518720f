#include "gallery/viewer/Options.h"
#include "gallery/viewer/Viewer.h"

#include <cstdio>
#include <exception>

int main(int argc, char** argv) {
    const tidalume::gallery::ViewerOptions options = tidalume::gallery::parseViewerOptions(argc, argv);
    try {
        tidalume::gallery::Viewer(options).run();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "tidalume-viewer: %s\n", error.what());
        return 2;
    }
    return 0;
}
