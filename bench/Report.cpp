#include "bench/Report.h"

#include <algorithm>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <ctime>
#include <numeric>

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

/// The median decides; a goal between the quartiles is close enough for another run to decide otherwise.
std::string verdict(const Comparison& c) {
    if (c.goal == 0.0) return "";
    const bool close = c.lowerQuartile <= c.goal && c.goal < c.upperQuartile;
    return std::string(c.ratio <= c.goal ? "met" : "**missed**") + (close ? ", within the spread" : "");
}

/// From their mean.
std::vector<double> logarithms(std::vector<double> values) {
    for (double& value : values)
        value = std::log(value);
    const double mean = std::accumulate(values.begin(), values.end(), 0.0) / static_cast<double>(values.size());
    for (double& value : values)
        value -= mean;
    return values;
}

/// The exponent of the power law that fits a series best: the slope of a line through the logarithms.
double exponent(const Series& series) {
    const std::vector<double> x = logarithms(series.values);
    const std::vector<double> y = logarithms(series.seconds);
    return std::inner_product(x.begin(), x.end(), y.begin(), 0.0) /
           std::inner_product(x.begin(), x.end(), x.begin(), 0.0);
}

/// Those of at least two points, through which there is a line.
std::vector<Series> measured(std::vector<Series> all) {
    all.erase(std::remove_if(all.begin(), all.end(), [](const Series& s) { return s.values.size() < 2; }), all.end());
    return all;
}

template <typename... Cells>
std::string row(const Cells&... cells) {
    return (("| " + std::string(cells) + " ") + ...) + "|\n";
}

std::string comparisonRow(const Comparison& c) {
    return row(c.operation, c.size, c.against, duration(c.library), duration(c.other), duration(c.floor),
               format("%.3f (%.3f to %.3f)", c.ratio, c.lowerQuartile, c.upperQuartile),
               c.goal == 0.0 ? "" : format("≤ %.2f", c.goal), verdict(c));
}

std::string seriesRow(const Series& s) {
    return row(s.operation, s.variable, format("%.0f", s.values.front()), format("%.0f", s.values.back()),
               duration(s.seconds.front()), duration(s.seconds.back()), format("%.2f", exponent(s)));
}

std::string fieldScaleRow(const FieldScale& s) {
    return row(s.look, s.texelsAPixel, duration(s.seconds), format("%.1f", s.difference));
}

std::string startUpRow(const StartUp& s) {
    const bool counted = s.instructions != 0.0;
    return row(s.name, duration(s.seconds), counted ? format("%.1f", 1e-6 * s.instructions) : "not counted");
}

/// Empty where there are no rows.
template <typename Entry>
std::string table(const std::string& head, const std::vector<Entry>& entries, std::string (*rowOf)(const Entry&)) {
    std::string text = entries.empty() ? "" : head;
    for (const Entry& entry : entries)
        text += rowOf(entry);
    return text;
}

std::string frameCosts(const std::optional<FrameCosts>& frame) {
    if (!frame) return "";
    return format(
        "\n### Per frame\n\nHeap allocations in %d frames of all effects and looks: %d. Uploads and read-backs: %d.\n",
        FrameCosts::frames, frame->allocations, frame->transfers);
}

// Pixels of the plot, in which each axis has two decades, for factors of 1 to 100.

constexpr double left = 70.0;
constexpr double right = 590.0;
constexpr double top = 40.0;
constexpr double bottom = 440.0;

double plotX(double factor) {
    return left + (right - left) * std::log10(factor) / 2.0;
}

double plotY(double factor) {
    return bottom - (bottom - top) * std::log10(std::max(1.0, factor)) / 2.0;
}

std::string gridLines(double factor) {
    const double x = plotX(factor);
    const double y = plotY(factor);
    return format("<path d=\"M%.1f %.1fV%.1f M%.1f %.1fH%.1f\" stroke=\"#ddd\"/>\n", x, top, bottom, left, y, right) +
           format("<text x=\"%.1f\" y=\"%.1f\" text-anchor=\"middle\">%.0f</text>\n", x, bottom + 20.0, factor) +
           format("<text x=\"%.1f\" y=\"%.1f\" text-anchor=\"end\">%.0f</text>\n", left - 8.0, y + 4.0, factor);
}

/// A line, and its name beside the plot.
std::string plotLine(const Series& series, size_t number) {
    static const char* const colors[] = {"#1b6ca8", "#d1495b", "#2e933c", "#8f5db7", "#e08e00",
                                         "#00798c", "#7a4b2a", "#c2549d", "#5b5f97"};
    const char* color = colors[number % std::size(colors)];
    std::string points;
    for (size_t i = 0; i < series.values.size(); ++i)
        points += format("%.1f,%.1f ", plotX(series.values[i] / series.values[0]),
                         plotY(series.seconds[i] / series.seconds[0]));
    return format("<polyline fill=\"none\" stroke-width=\"2\" stroke=\"%s\" points=\"%s\"/>\n", color, points.c_str()) +
           format("<text x=\"%.1f\" y=\"%.1f\" fill=\"%s\">%s (%s): %.2f</text>\n", right + 20.0,
                  top + 20.0 + 26.0 * static_cast<double>(number), color, series.operation.c_str(),
                  series.variable.c_str(), exponent(series));
}

} // namespace

std::string markdownTables(const Results& results) {
    return today() + ", " + results.driver + "; " + results.clock + ".\n" +
           table("\n### Against other forms\n\n| Operation | Screen | Against | Library | Other | Floor | Ratio "
                 "(quartiles) | Goal | |\n|---|---|---|---:|---:|---:|---:|---:|---|\n",
                 results.comparisons, comparisonRow) +
           table("\n### Scaling\n\n| Operation | Against | From | To | Cost from | Cost to | Exponent |\n"
                 "|---|---|---:|---:|---:|---:|---:|\n",
                 measured(results.series), seriesRow) +
           table("\n### Field scales\n\n| 540x960 | Texels a pixel | A frame | Steps of 8 bits from 1, on average "
                 "|\n|---|---:|---:|---:|\n",
                 results.fieldScales, fieldScaleRow) +
           table("\n### Start-up\n\n| `init` of all effects | Time | Instructions, in millions |\n|---|---:|---:|\n",
                 results.startUps, startUpRow) +
           frameCosts(results.frame);
}

std::string scalingPlot(const Results& results) {
    std::string svg =
        "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 1040 500\" font-family=\"sans-serif\" "
        "font-size=\"13\">\n<rect width=\"1040\" height=\"500\" fill=\"white\"/>\n"
        "<text x=\"70\" y=\"24\" font-size=\"16\">Cost against size, both relative to the smallest</text>\n";
    for (const double factor : {1.0, 2.0, 5.0, 10.0, 20.0, 50.0, 100.0})
        svg += gridLines(factor);
    svg += format("<path d=\"M%.1f %.1fL%.1f %.1f\" stroke=\"#999\" stroke-dasharray=\"5 5\"/>\n", left, bottom, right,
                  top);
    const std::vector<Series> all = measured(results.series);
    for (size_t i = 0; i < all.size(); ++i)
        svg += plotLine(all[i], i);
    return svg + "<text x=\"610\" y=\"440\" fill=\"#666\">dashed: in proportion, exponent 1</text>\n</svg>\n";
}

} // namespace tidalume::bench
