#include "gallery/Size.h"

#include <charconv>

namespace tidalume::gallery {

bool parseSize(const std::string& text, int& width, int& height) {
    const char* const end = text.data() + text.size();
    const auto first = std::from_chars(text.data(), end, width);
    if (first.ec != std::errc() || first.ptr == end || *first.ptr != 'x') return false;
    const auto second = std::from_chars(first.ptr + 1, end, height);
    return second.ec == std::errc() && second.ptr == end && width >= 1 && height >= 1;
}

} // namespace tidalume::gallery
