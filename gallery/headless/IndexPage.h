#pragma once

#include "gallery/headless/Options.h"

#include <string>

namespace tidalume::gallery {

/// The presets of a look, as a scene shows them.
struct PresetRow {
    const SceneEntry* scene = nullptr;
    Span<Preset> presets;
};

/// The presets of all looks that the chosen scenes show, each look once; none where the options choose a preset or set
/// something.
std::vector<PresetRow> presetRows(const Options& options);

/// The name of a preset's picture file.
std::string pictureOf(const PresetRow& row, const Preset& preset);

/// A web page in one file that shows the animation of every chosen scene with its sentence, and a picture of each
/// preset, for phones and desktops, light and dark. It expects NAME.webp and NAME.png of every scene beside it, and the
/// pictures of the presets.
std::string indexPage(const Options& options, const std::vector<PresetRow>& presets, const std::string& driver);

} // namespace tidalume::gallery
