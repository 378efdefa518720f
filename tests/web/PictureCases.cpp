#include "tests/pictures/PictureCase.h"

#include <emscripten/emscripten.h>

using namespace tidalume::pictures;

namespace {

const PictureTable& pictures() {
    static const PictureTable table = allPictures();
    return table;
}

} // namespace

extern "C" {

EMSCRIPTEN_KEEPALIVE int pictureCount() {
    return static_cast<int>(pictures().size());
}

EMSCRIPTEN_KEEPALIVE const char* pictureName(int index) {
    return pictures().at(static_cast<std::size_t>(index)).name;
}

EMSCRIPTEN_KEEPALIVE double pictureTolerance(int index) {
    return toleranceHere(pictures().at(static_cast<std::size_t>(index)));
}

/// Draws one picture with the current context and says how far from its formula it is.
EMSCRIPTEN_KEEPALIVE double runPicture(int index) {
    return pictures().at(static_cast<std::size_t>(index)).run().largest;
}

} // extern "C"
