#pragma once

#include "gallery/Demonstrations.h"

#include <memory>
#include <string_view>
#include <vector>

namespace tidalume::gallery {

/// One line of the scene table.
struct SceneEntry {
    const char* name;     ///< for command lines, file names and links
    const char* title;    ///< for people
    const char* sentence; ///< what there is to see
    std::unique_ptr<Scene> (*make)();
    const char* preset; ///< that it begins with
    const char* ground; ///< in the table of grounds: what it shows where nobody has chosen a background
    Demonstration* demonstration;
};

/// Every scene, in the order in which galleries show them. Front ends reach scenes through this table alone.
const std::vector<SceneEntry>& sceneTable();

/// The ground that a preset shows on best: its scene's, but for presets that a dark one would hide.
/// @param preset  of any scene
const char* groundOf(const SceneEntry& entry, std::string_view preset);

} // namespace tidalume::gallery
