#include "gallery/Ground.h"

#include "gallery/grounds/Grounds.h"

#include <algorithm>
#include <stdexcept>
#include <string>

namespace tidalume::gallery {

const std::vector<Ground>& groundTable() {
    static const std::vector<Ground> table = {
        {"sand", "Stones on sand", sand},   {"tiles", "Pool tiles", tiles},  {"sunset", "Sunset", sunset},
        {"teal", "Deep water", teal},       {"pebbles", "Pebbles", pebbles}, {"night", "Night sky", night},
        {"ember", "Glow of embers", ember}, {"dusk", "Dusk", dusk},
    };
    return table;
}

const Ground& groundNamed(std::string_view name) {
    const auto& table = groundTable();
    const auto found =
        std::find_if(table.begin(), table.end(), [&](const Ground& ground) { return name == ground.name; });
    if (found == table.end()) throw std::out_of_range("there is no ground \"" + std::string(name) + "\"");
    return *found;
}

} // namespace tidalume::gallery
