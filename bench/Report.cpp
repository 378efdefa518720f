#include "bench/Report.h"

#include "bench/Measure.h"

#include <algorithm>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <ctime>

namespace tidalume::bench {
namespace {

[[gnu::format(printf, 1, 2)]] std::string format(const char* text, ...) {
    char buffer[512];
    va_list arguments;
    va_start(arguments, text);
    std::vsnprintf(buffer, sizeof(buffer), text, arguments);
    va_end(arguments);
    return buffer;
}

std::string today() {
    const std::time_t now = std::time(nullptr);
    char text[32];
    std::strftime(text, sizeof(text), "%Y-%m-%d", std::gmtime(&now));
    return text;
}

/// In the unit that leaves one to three digits before the point.
std::string duration(double seconds) {
    if (seconds == 0.0) return "";
    return seconds < 1e-3 ? format("%.1f µs", 1e6 * seconds) : format("%.2f ms", 1e3 * seconds);
}

std::string goal(double goal) {
    return goal == 0.0 ? "" : format("≤ %.2f", goal);
}

std::string verdict(double ratio, double goal) {
    return ratio <= goal ? "met" : "**missed**";
}

/// The median decides; a goal between the quartiles is close enough for another run to decide otherwise.
std::string verdict(const Comparison& c) {
    if (c.goal == 0.0) return "";
    const bool close = c.lowerQuartile <= c.goal && c.goal < c.upperQuartile;
    return verdict(c.ratio, c.goal) + (close ? ", within the spread" : "");
}

std::string comparisonTable(const std::vector<Comparison>& comparisons) {
    if (comparisons.empty()) return "";
    std::string table = "\n### Against other forms\n\n| Operation | Screen | Against | Library | Other | Floor | Ratio "
                        "(quartiles) | Goal | |\n"
                        "|---|---|---|---:|---:|---:|---:|---:|---|\n";
    for (const Comparison& c : comparisons) {
        table += "| " + c.operation + " | " + c.size + " | " + c.against + " | " + duration(c.library) + " | " +
                 duration(c.other) + " | " + duration(c.floor) + " | " +
                 format("%.3f (%.3f to %.3f)", c.ratio, c.lowerQuartile, c.upperQuartile) + " | " + goal(c.goal) +
                 " | " + verdict(c) + " |\n";
    }
    return table;
}

std::string startUpTable(const std::vector<StartUp>& startUps) {
    if (startUps.empty()) return "";
    std::string table =
        "\n### Start-up\n\n| `init` of all effects | Time | Instructions, in millions |\n|---|---:|---:|\n";
    for (const StartUp& start : startUps) {
        table += "| " + start.name + " | " + duration(start.seconds) + " | " +
                 (start.instructions == 0.0 ? "not counted" : format("%.1f", 1e-6 * start.instructions)) + " |\n";
    }
    return table;
}

std::string scalingTable(const std::vector<Series>& series) {
    if (series.empty()) return "";
    std::string table = "\n### Scaling\n\n| Operation | Against | From | To | Cost from | Cost to | Exponent |\n"
                        "|---|---|---:|---:|---:|---:|---:|\n";
    for (const Series& s : series) {
        table += "| " + s.operation + " | " + s.variable +
                 format(" | %.0f | %.0f | ", s.values.front(), s.values.back()) + duration(s.seconds.front()) + " | " +
                 duration(s.seconds.back()) + " | " + format("%.2f", exponent(s.values, s.seconds)) + " |\n";
    }
    return table;
}

std::string frameCosts(const std::optional<FrameCosts>& frame) {
    if (!frame) return "";
    return format("\n### Per frame\n\nHeap allocations in %d frames of all effects: %d. Uploads and read-backs: %d.\n",
                  FrameCosts::frames, frame->allocations, frame->transfers);
}

/// Those of at least two points, through which there is a line.
std::vector<Series> measured(std::vector<Series> all) {
    all.erase(std::remove_if(all.begin(), all.end(), [](const Series& s) { return s.values.size() < 2; }), all.end());
    return all;
}

} // namespace

std::string markdownTables(const Results& results) {
    return today() + ", " + results.driver + "; " + results.clock + ".\n" + comparisonTable(results.comparisons) +
           scalingTable(measured(results.series)) + startUpTable(results.startUps) + frameCosts(results.frame);
}

std::string scalingPlot(const Results& results) {
    constexpr double left = 70.0;
    constexpr double top = 40.0;
    constexpr double width = 520.0;
    constexpr double height = 400.0;
    constexpr double decadesX = 2.0;
    constexpr double decadesY = 2.0;
    static const char* const colors[] = {"#1b6ca8", "#d1495b", "#2e933c", "#8f5db7", "#e08e00",
                                         "#00798c", "#7a4b2a", "#c2549d", "#5b5f97"};
    std::string svg =
        "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 1040 500\" font-family=\"sans-serif\" "
        "font-size=\"13\">\n<rect width=\"1040\" height=\"500\" fill=\"white\"/>\n"
        "<text x=\"70\" y=\"24\" font-size=\"16\">Cost against size, both relative to the smallest</text>\n";
    const auto x = [&](double factor) { return left + width * std::log10(factor) / decadesX; };
    const auto y = [&](double factor) { return top + height * (1.0 - std::log10(factor) / decadesY); };
    for (const double factor : {1.0, 2.0, 5.0, 10.0, 20.0, 50.0, 100.0}) {
        svg += format("<path d=\"M%.1f %.1fV%.1f M%.1f %.1fH%.1f\" stroke=\"#ddd\"/>\n", x(factor), top, top + height,
                      left, y(factor), left + width);
        svg += format("<text x=\"%.1f\" y=\"%.1f\" text-anchor=\"middle\">%.0f</text>\n", x(factor),
                      top + height + 20.0, factor);
        svg += format("<text x=\"%.1f\" y=\"%.1f\" text-anchor=\"end\">%.0f</text>\n", left - 8.0, y(factor) + 4.0,
                      factor);
    }
    svg += format("<path d=\"M%.1f %.1fL%.1f %.1f\" stroke=\"#999\" stroke-dasharray=\"5 5\"/>\n", x(1.0), y(1.0),
                  x(100.0), y(100.0));
    size_t line = 0;
    for (const Series& series : measured(results.series)) {
        const char* color = colors[line % std::size(colors)];
        std::string points;
        for (size_t i = 0; i < series.values.size(); ++i) {
            points += format("%.1f,%.1f ", x(series.values[i] / series.values[0]),
                             y(std::max(1.0, series.seconds[i] / series.seconds[0])));
        }
        svg += "<polyline fill=\"none\" stroke-width=\"2\" stroke=\"" + std::string(color) + "\" points=\"" + points +
               "\"/>\n";
        svg += format("<text x=\"%.1f\" y=\"%.1f\" fill=\"%s\">", left + width + 20.0,
                      top + 20.0 + 26.0 * static_cast<double>(line), color) +
               series.operation + " (" + series.variable +
               format("): %.2f</text>\n", exponent(series.values, series.seconds));
        ++line;
    }
    return svg + "<text x=\"610\" y=\"440\" fill=\"#666\">dashed: in proportion, exponent 1</text>\n</svg>\n";
}

} // namespace tidalume::bench
