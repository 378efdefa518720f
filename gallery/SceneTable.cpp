#include "gallery/SceneTable.h"

#include "gallery/scenes/MetaballsScene.h"

namespace tidalume::gallery {

namespace {

template <typename AnyScene>
std::unique_ptr<Scene> make() {
    return std::make_unique<AnyScene>();
}

} // namespace

const std::vector<SceneEntry>& sceneTable() {
    static const std::vector<SceneEntry> table = {
        {"metaballs", "Metaballs",
         "Warm drops rise and sink, merge where they meet and part again; one follows the finger.",
         make<MetaballsScene>},
    };
    return table;
}

} // namespace tidalume::gallery
