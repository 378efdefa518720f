#pragma once

#include "looks/BlobsLook.h"
#include "looks/CometsLook.h"
#include "looks/SprayLook.h"
#include "looks/WaterLook.h"
#include "looks/WavesLook.h"

#include <memory>
#include <ostream>

namespace tidalume {

/// A look as tests and benchmark know it.
struct LookCase {
    const char* name;
    bool isOpaque;
    bool rests; ///< some preset comes to rest after a touch
    std::unique_ptr<Look> (*make)();
};

inline void PrintTo(const LookCase& look, std::ostream* stream) {
    *stream << look.name;
}

template <typename AnyLook>
std::unique_ptr<Look> makeLook() {
    return std::make_unique<AnyLook>();
}

inline constexpr LookCase lookCases[] = {
    {"WaterLook", true, true, makeLook<WaterLook>},    {"WavesLook", true, false, makeLook<WavesLook>},
    {"BlobsLook", false, true, makeLook<BlobsLook>},   {"SprayLook", false, true, makeLook<SprayLook>},
    {"CometsLook", false, true, makeLook<CometsLook>},
};

} // namespace tidalume
