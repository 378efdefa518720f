#include "gallery/SceneTable.h"

#include "gallery/scenes/CometScene.h"
#include "gallery/scenes/MetaballsScene.h"
#include "gallery/scenes/ParticlesScene.h"
#include "gallery/scenes/VectorScene.h"

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
        {"particles", "Particles",
         "Blobs under the fingers spray drops where they are dragged; drops merge and shrink.", make<ParticlesScene>},
        {"comet", "Comets", "Every touch sends two comets through the point; rings open where they have passed.",
         make<CometScene>},
        {"vector", "Vector graphics",
         "Gradients, discs, lights that add up, a boat in all its turns, and a coast that passes behind a mask.",
         make<VectorScene>},
    };
    return table;
}

} // namespace tidalume::gallery
