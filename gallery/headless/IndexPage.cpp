#include "gallery/headless/IndexPage.h"

#include <algorithm>
#include <sstream>

namespace tidalume::gallery {

namespace {

constexpr const char* head = R"(<!doctype html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta name="color-scheme" content="light dark">
<title>Tidalume gallery</title>
<style>
:root { --page: #f6f4f0; --card: #fff; --text: #1d1b22; --quiet: #6a6672; --line: #e3dfd8; --accent: #b3365a; }
@media (prefers-color-scheme: dark) {
  :root { --page: #121016; --card: #1c1922; --text: #f1eef5; --quiet: #a29cab; --line: #2d2934; --accent: #ff8a6b; }
}
* { box-sizing: border-box; }
body { margin: 0; background: var(--page); color: var(--text); font: 16px/1.5 system-ui, sans-serif; }
header, main, section, footer { max-width: 1280px; margin: 0 auto; padding: 0 24px; }
header { padding-top: 48px; padding-bottom: 24px; }
h1 { margin: 0; font-size: clamp(2rem, 6vw, 3.25rem); line-height: 1.1; letter-spacing: -0.02em; }
h1::after { content: ""; display: block; width: 64px; height: 4px; margin-top: 16px; background: var(--accent); }
header p { margin: 16px 0 0; max-width: 60ch; color: var(--quiet); }
main { display: grid; gap: 24px; grid-template-columns: repeat(auto-fill, minmax(min(100%, 264px), 1fr)); }
figure { margin: 0; overflow: hidden; border: 1px solid var(--line); border-radius: 16px; background: var(--card); }
figure a { display: block; }
figure a:focus-visible { outline: 3px solid var(--accent); outline-offset: -3px; }
figure img { display: block; width: 100%; height: auto; }
figcaption { padding: 16px 20px 20px; }
h2 { margin: 0 0 4px; font-size: 1.125rem; }
figcaption p { margin: 0; color: var(--quiet); }
section { padding-top: 40px; }
section div { display: grid; gap: 16px; margin-top: 16px;
  grid-template-columns: repeat(auto-fill, minmax(min(40%, 180px), 1fr)); }
section figcaption { padding: 10px 14px 12px; font-size: 0.9375rem; }
footer { padding-top: 32px; padding-bottom: 48px; color: var(--quiet); font-size: 0.875rem; overflow-wrap: anywhere; }
</style>
</head>
<body>
<header>
<h1>Tidalume</h1>
<p>Visual effects on OpenGL ES 3.0. Every picture is drawn by the library itself; click one for its last frame.</p>
</header>
<main>
)";

std::string escaped(const std::string& text) {
    std::string result;
    for (const char character : text) {
        switch (character) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        case '"':
            result += "&quot;";
            break;
        default:
            result += character;
        }
    }
    return result;
}

} // namespace

std::vector<PresetRow> presetRows(const Options& options) {
    if (!options.settings.preset.empty() || !options.settings.values.empty()) return {};
    std::vector<PresetRow> rows;
    for (const SceneEntry* scene : options.scenes) {
        const Span<Preset> presets = Player(*scene, options.seed).presets();
        const bool isKnown = std::any_of(rows.begin(), rows.end(),
                                         [&](const PresetRow& row) { return row.presets.data == presets.data; });
        if (!isKnown && presets.size > 1) rows.push_back({scene, presets});
    }
    return rows;
}

std::string pictureOf(const PresetRow& row, const Preset& preset) {
    return std::string(row.scene->name) + '-' + preset.name + ".png";
}

std::string indexPage(const Options& options, const std::vector<PresetRow>& presets, const std::string& driver) {
    std::ostringstream page;
    page << head;
    for (const SceneEntry* scene : options.scenes) {
        page << "<figure>\n<a href=\"" << scene->name << ".png\"><picture>\n"
             << "<source srcset=\"" << scene->name << ".png\" media=\"(prefers-reduced-motion: reduce)\">\n"
             << "<img src=\"" << scene->name << ".webp\" width=\"" << options.width << "\" height=\"" << options.height
             << "\" alt=\"" << escaped(scene->title) << "\"></picture></a>\n"
             << "<figcaption><h2>" << escaped(scene->title) << "</h2><p>" << escaped(scene->sentence)
             << "</p></figcaption>\n</figure>\n";
    }
    page << "</main>\n";
    for (const PresetRow& row : presets) {
        page << "<section>\n<h2>" << escaped(row.scene->title) << ": presets</h2>\n<div>\n";
        for (const Preset& preset : row.presets) {
            page << "<figure><img src=\"" << pictureOf(row, preset) << "\" loading=\"lazy\" alt=\""
                 << escaped(preset.title) << "\"><figcaption>" << escaped(preset.title) << "</figcaption></figure>\n";
        }
        page << "</div>\n</section>\n";
    }
    page << "<footer>" << options.frames << " frames of " << options.width << "&times;" << options.height << ", seed "
         << options.seed << ", drawn by " << escaped(driver) << "</footer>\n</body>\n</html>\n";
    return page.str();
}

} // namespace tidalume::gallery
