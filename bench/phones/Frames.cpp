#include "gallery/Background.h"
#include "gallery/Player.h"
#include "headless/HeadlessContext.h"

#include <GLES3/gl3.h>

#include <cstdlib>
#include <cstring>
#include <iostream>

using namespace tidalume;
using namespace tidalume::gallery;

/// Plays frames of a scene as an application with a window does: each begins with a screen of which nothing has to be
/// kept, and ends with one that is shown. For scripts/count-tile-loads, which reads what the driver does.
/// Arguments: the scene, how many frames.
int main(int argc, char** argv) {
    const int width = 180;
    const int height = 320;
    for (const SceneEntry& entry : sceneTable()) {
        if (argc != 3 || std::strcmp(entry.name, argv[1]) != 0) continue;
        const headless::HeadlessContext context(width, height);
        Player player(entry, 1);
        player.setUp(width, height, pebbles(width, height, 1));
        for (int frame = 0; frame < std::atoi(argv[2]); ++frame) {
            glBindFramebuffer(GL_FRAMEBUFFER, 0);
            glClear(GL_COLOR_BUFFER_BIT);
            player.drawStep();
            glFinish();
        }
        return 0;
    }
    std::cerr << "tidalume-phone-frames: a scene and a number of frames are expected\n";
    return 2;
}
