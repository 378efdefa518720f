#pragma once

#include "gallery/headless/Options.h"

#include <string>

namespace tidalume::gallery {

/// A web page in one file that shows the animation of every chosen scene with its sentence, for phones and desktops,
/// light and dark. It expects NAME.webp and NAME.png beside it.
std::string indexPage(const Options& options, const std::string& driver);

} // namespace tidalume::gallery
