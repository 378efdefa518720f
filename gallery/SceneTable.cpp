#include "gallery/SceneTable.h"

#include "gallery/scenes/CometScene.h"
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
        {"comet", "Comets", "Every touch sends two comets through the point; rings open where they have passed.",
         make<CometScene>},
    };
    return table;
}

} // namespace tidalume::gallery
