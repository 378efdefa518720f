#include "gallery/Settings.h"

#include <charconv>
#include <cstdio>
#include <cstring>
#include <optional>

namespace tidalume::gallery {

namespace {

struct Assignment {
    std::string name;
    std::string value;
};

Assignment split(const std::string& text) {
    const std::size_t sign = text.find('=');
    if (sign == std::string::npos) return {text, ""};
    return {text.substr(0, sign), text.substr(sign + 1)};
}

template <typename Row>
const Row* find(const Span<Row>& rows, const std::string& name) {
    for (const Row& row : rows) {
        if (name == row.name) return &row;
    }
    return nullptr;
}

// The value that a text stands for; none where it is not in the parameter's range.
std::optional<float> valueOf(const Parameter& parameter, const std::string& text) {
    for (std::size_t i = 0; i < parameter.choices.size; ++i) {
        if (text == parameter.choices[i] || text == std::to_string(i)) return static_cast<float>(i);
    }
    float value = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    const bool isNumber = error == std::errc() && stop == end && parameter.choices.size == 0;
    if (!isNumber || !(value >= parameter.minimum && value <= parameter.maximum)) return std::nullopt;
    return value;
}

template <typename Row>
std::string names(const Span<Row>& rows) {
    std::string list;
    for (const Row& row : rows)
        list += (list.empty() ? "" : ", ") + std::string(row.name);
    return list;
}

std::string range(const Parameter& parameter) {
    if (parameter.choices.size > 0) {
        std::string list;
        for (const char* choice : parameter.choices)
            list += (list.empty() ? "one of " : ", ") + std::string(choice);
        return list;
    }
    char text[128];
    std::snprintf(text, sizeof text, "a number from %g to %g %s", static_cast<double>(parameter.minimum),
                  static_cast<double>(parameter.maximum), parameter.unit);
    return text;
}

std::string complaintAbout(const std::string& setting, const std::vector<const SceneEntry*>& scenes) {
    const Assignment assignment = split(setting);
    std::string why;
    for (const SceneEntry* scene : scenes) {
        const Player player(*scene, 1);
        const Parameter* parameter = find(player.parameters(), assignment.name);
        if (parameter && valueOf(*parameter, assignment.value)) return "";
        if (parameter || why.empty())
            why = parameter ? "\"" + assignment.value + "\" is not " + range(*parameter)
                            : "scene " + std::string(scene->name) + " has " + names(player.parameters());
    }
    return "--set " + setting + ": " + why;
}

} // namespace

void apply(const Settings& settings, Player& player) {
    if (find(player.presets(), settings.preset)) player.usePreset(settings.preset.c_str());
    for (const std::string& setting : settings.values) {
        const Assignment assignment = split(setting);
        const Parameter* parameter = find(player.parameters(), assignment.name);
        const auto value = parameter ? valueOf(*parameter, assignment.value) : std::nullopt;
        if (value) player.set(parameter->name, *value);
    }
}

std::string complaint(const Settings& settings, const std::vector<const SceneEntry*>& scenes) {
    bool hasPreset = settings.preset.empty();
    std::string presets;
    for (const SceneEntry* scene : scenes) {
        const Player player(*scene, 1);
        hasPreset = hasPreset || find(player.presets(), settings.preset);
        presets += (presets.empty() ? "" : "; ") + std::string(scene->name) + ": " + names(player.presets());
    }
    if (!hasPreset) return "--preset: there is no preset \"" + settings.preset + "\"; the presets are " + presets;
    for (const std::string& setting : settings.values) {
        std::string why = complaintAbout(setting, scenes);
        if (!why.empty()) return why;
    }
    return "";
}

} // namespace tidalume::gallery
