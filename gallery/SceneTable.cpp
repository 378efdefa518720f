#include "gallery/SceneTable.h"

#include "gallery/scenes/LookScene.h"
#include "gallery/scenes/VectorScene.h"
#include "looks/BlobsLook.h"
#include "looks/CometsLook.h"
#include "looks/SprayLook.h"

namespace tidalume::gallery {

namespace {

template <typename AnyScene>
std::unique_ptr<Scene> make() {
    return std::make_unique<AnyScene>();
}

} // namespace

const std::vector<SceneEntry>& sceneTable() {
    static const std::vector<SceneEntry> table = {
        {"water", "Water", "Drops fall, and a finger is drawn across: rings spread, meet and come back from the edges.",
         make<LookScene<WaterLook>>, "brook", "sand", demonstrateWater},
        {"waves", "Waves", "Swell rolls over the deep, one sine curve behind the other.", make<LookScene<WavesLook>>,
         "swell", "teal", demonstrateNothing},
        {"pond", "Pond", "Drops fall into a quiet pond, and their rings run on for long.", make<LookScene<WaterLook>>,
         "calmLake", "tiles", demonstratePond},
        {"metaballs", "Metaballs",
         "Warm drops rise and sink, merge where they meet and part again; one follows the finger.",
         make<LookScene<BlobsLook>>, "lava", "ember", demonstrateBlobs},
        {"particles", "Particles",
         "Blobs under the fingers spray drops where they are dragged; drops merge and shrink.",
         make<LookScene<SprayLook>>, "glass", "dusk", demonstrateSpray},
        {"comet", "Comets", "Every touch sends two comets through the point; sparks fall from their glowing heads.",
         make<LookScene<CometsLook>>, "wish", "night", demonstrateComets},
        {"vector", "Vector graphics",
         "Gradients, discs, lights that add up, a boat in every orientation, and a coast that passes behind a mask.",
         make<VectorScene>, "poster", "teal", demonstrateVectorGraphics},
    };
    return table;
}

const char* groundOf(const SceneEntry& entry, std::string_view preset) {
    static constexpr struct {
        std::string_view scene;
        std::string_view preset;
        const char* ground;
    } bright[] = {{"metaballs", "ink", "sand"}, {"metaballs", "dew", "teal"}};
    for (const auto& row : bright) {
        if (entry.name == row.scene && preset == row.preset) return row.ground;
    }
    return entry.ground;
}

} // namespace tidalume::gallery
