#include "tests/pictures/PictureCase.h"

#include <cmath>
#include <cstdio>
#include <emscripten/emscripten.h>
#include <exception>
#include <string>

using namespace tidalume::pictures;

namespace {

const PictureTable& pictures() {
    static const PictureTable table = allPictures();
    return table;
}

// JSON has no infinity: a number that no tolerance allows takes its place.
double finite(double number) {
    return std::isfinite(number) ? number : 1e30;
}

std::string result(const PictureCase& picture) {
    char text[512];
    try {
        const Comparison found = picture.run();
        std::snprintf(text, sizeof text,
                      R"({"name":"%s","largest":%.17g,"tolerance":%.17g,"x":%d,"y":%d,"channel":%d})", picture.name,
                      finite(found.largest), toleranceHere(picture), found.x, found.y, found.channel);
    } catch (const std::exception& error) {
        std::snprintf(text, sizeof text, R"({"name":"%s","error":"%s"})", picture.name, error.what());
    }
    return text;
}

} // namespace

extern "C" {

EMSCRIPTEN_KEEPALIVE int pictureCount() {
    return static_cast<int>(pictures().size());
}

/// Draws one picture with the current context and compares it, as JSON.
EMSCRIPTEN_KEEPALIVE const char* runPicture(int index) {
    static std::string text;
    text = result(pictures().at(static_cast<std::size_t>(index)));
    return text.c_str();
}

} // extern "C"
