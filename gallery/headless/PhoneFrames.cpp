#include "gallery/Background.h"
#include "gallery/Player.h"
#include "headless/HeadlessContext.h"

#include <GLES3/gl3.h>

#include <cstdlib>
#include <cstring>
#include <iostream>

using namespace tidalume;
using namespace tidalume::gallery;

/// Plays frames of a scene as an application with a window does: each begins with a screen in which there is nothing,
/// and ends with one that is shown. For scripts/count-tile-loads, which reads what the driver does. Arguments: the
/// scene, how many frames.
int main(int argc, char** argv) {
    const int width = 180;
    const int height = 320;
    for (const SceneEntry& entry : sceneTable()) {
        if (argc != 3 || std::strcmp(entry.name, argv[1]) != 0) continue;
        headless::HeadlessContext context(width, height);
        Player player(entry, 1);
        player.setUp(width, height, makeBackground({}, entry.ground, width, height));
        for (int frame = 0; frame < std::atoi(argv[2]); ++frame) {
            context.resize(width, height); // a new framebuffer 0, as after a swap
            player.drawStep();
            glFinish();
        }
        return 0;
    }
    std::cerr << "tidalume-phone-frames: a scene and a number of frames are expected\n";
    return 2;
}
