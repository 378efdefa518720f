#pragma once

#include <string>

namespace tidalume::gallery {

/// The two numbers of "540x960", each 1 or more; false where the text is something else, and then
/// they may have changed.
bool parseSize(const std::string& text, int& width, int& height);

} // namespace tidalume::gallery
