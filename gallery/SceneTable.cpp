#include "gallery/SceneTable.h"

#include "gallery/scenes/CometScene.h"
#include "gallery/scenes/MetaballsScene.h"
#include "gallery/scenes/ParticlesScene.h"
#include "gallery/scenes/PondScene.h"
#include "gallery/scenes/VectorScene.h"
#include "gallery/scenes/WaterScene.h"
#include "gallery/scenes/WavesScene.h"

namespace tidalume::gallery {

namespace {

template <typename AnyScene>
std::unique_ptr<Scene> make() {
    return std::make_unique<AnyScene>();
}

} // namespace

const std::vector<SceneEntry>& sceneTable() {
    static const std::vector<SceneEntry> table = {
        {"water", "Water", "A finger drawn across a brook: rings spread, meet and come back from the edges.", "sand",
         true, make<WaterScene>},
        {"waves", "Waves", "Swell rolls over the deep, one sine curve behind the other.", "teal", true,
         make<WavesScene>},
        {"pond", "Pond", "Drops fall into a quiet pond, and their rings run on for long.", "sunset", true,
         make<PondScene>},
        {"metaballs", "Metaballs",
         "Warm drops rise and sink, merge where they meet and part again; one follows the finger.", "ember", false,
         make<MetaballsScene>},
        {"particles", "Particles",
         "Blobs under the fingers spray drops where they are dragged; drops merge and shrink.", "dusk", false,
         make<ParticlesScene>},
        {"comet", "Comets", "Every touch sends two comets through the point; rings open where they have passed.",
         "night", false, make<CometScene>},
        {"vector", "Vector graphics",
         "Gradients, discs, lights that add up, a boat in every orientation, and a coast that passes behind a mask.",
         "teal", true, make<VectorScene>},
    };
    return table;
}

} // namespace tidalume::gallery
