#include "gallery/viewer/Controls.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace tidalume::gallery {

namespace {

constexpr float stepsInRange = 20;

std::string valueText(const Parameter& parameter, float value) {
    if (parameter.choices.size > 0) return parameter.choices[static_cast<std::size_t>(value)];
    char text[64];
    std::snprintf(text, sizeof text, "%.3g %s", static_cast<double>(value), parameter.unit);
    return text;
}

std::string line(const Player& player, std::size_t index) {
    const Parameter& parameter = player.parameters()[index];
    return std::string(parameter.label) + ": " + valueText(parameter, player.get(static_cast<int>(index)));
}

} // namespace

Controls::Controls(const Player& player, const std::string& preset) {
    const Span<Preset> presets = player.presets();
    const auto* const found =
        std::find_if(presets.begin(), presets.end(), [&](const Preset& row) { return preset == row.name; });
    if (found != presets.end()) mPreset = static_cast<std::size_t>(found - presets.begin());
}

std::string Controls::choose(const Player& player, int rows) {
    const int count = static_cast<int>(player.parameters().size);
    mChosen = static_cast<std::size_t>((static_cast<int>(mChosen) + count + rows) % count);
    return line(player, mChosen);
}

std::string Controls::change(Player& player, int steps) const {
    const Parameter& parameter = player.parameters()[mChosen];
    const float step = parameter.choices.size > 0 ? 1 : (parameter.maximum - parameter.minimum) / stepsInRange;
    const float place = std::round((player.get(static_cast<int>(mChosen)) - parameter.minimum) / step);
    const float value = parameter.minimum + step * (place + static_cast<float>(steps));
    player.set(parameter.name, std::clamp(value, parameter.minimum, parameter.maximum));
    return line(player, mChosen);
}

std::string Controls::usePreset(Player& player) {
    mPreset = (mPreset + 1) % player.presets().size;
    const Preset& preset = player.presets()[mPreset];
    player.usePreset(preset.name);
    return preset.title;
}

std::string Controls::describe(const Player& player) const {
    std::string text;
    for (std::size_t i = 0; i < player.parameters().size; ++i)
        text += (i == mChosen ? "> " : "  ") + line(player, i) + '\n';
    return text + "\n" + player.parameters()[mChosen].sentence;
}

} // namespace tidalume::gallery
