#pragma once

#include "gallery/Scene.h"

#include <memory>
#include <vector>

namespace tidalume::gallery {

/// One line of the scene table.
struct SceneEntry {
    const char* name;     ///< for command lines, file names and links
    const char* title;    ///< for people
    const char* sentence; ///< what there is to see
    const char* ground;   ///< the name of the ground that it shows where nobody chose one
    bool showsBackground; ///< whether the background of Scene::setUp() is seen
    std::unique_ptr<Scene> (*make)();
};

/// Every scene, in the order in which galleries show them. Front ends reach scenes through this table alone.
const std::vector<SceneEntry>& sceneTable();

} // namespace tidalume::gallery
