#include "tests/pictures/PictureCase.h"

#include <cstdio>
#include <emscripten/emscripten.h>

using namespace tidalume::pictures;

/// Draws every picture with the current context and prints how far from its formula it is and may be.
extern "C" EMSCRIPTEN_KEEPALIVE void runPictures() {
    for (const PictureCase& picture : allPictures)
        std::printf("%s %.9g %.9g\n", picture.name, picture.run().largest, toleranceHere(picture));
}
