#include "bench/phones/Report.h"

#include <algorithm>
#include <ctime>
#include <iomanip>
#include <sstream>

namespace tidalume::phones {
namespace {

/// Programs that may have more than their plain form.
constexpr struct {
    const char* gpu;
    const char* program;
    const char* reason;
} exceptions[] = {
    {"Adreno 540", "ShallowWaterIterativeProgramUpdate", "coordinates are put together between the reads"},
    {"Adreno 540", "ShallowWaterProgramUpdate", "coordinates are put together between the reads"},
    {"Adreno 330", "ShallowWaterIterativeProgramUpdate", "coordinates are put together between the reads"},
    {"Adreno 330", "ShallowWaterProgramUpdate", "coordinates are put together between the reads"},
    {"Adreno 540", "FieldPainterProgram", "it computes less while it waits: both add up to as much"},
    {"Adreno 330", "FieldPainterProgram", "it computes less while it waits: both add up to as much"},
};

/// Why a program may have more than its plain form; empty: it must not.
std::string excuse(const std::string& gpu, const std::string& program) {
    for (const auto& exception : exceptions)
        if (gpu == exception.gpu && program == exception.program) return exception.reason;
    return "";
}

/// Whose time is bounded: the driver says in cycles of a core what a pixel needs.
constexpr struct {
    const char* gpu;
    int cores;
    int megahertz;
} phones[] = {{"Mali-G57", 2, 950}, {"Mali-G52", 2, 1000}};

/// A frame of water on a screen of 1080 x 1920; the simulation may have half that width and height.
constexpr double screenPixels = 1080.0 * 1920.0;
constexpr struct {
    const char* program;
    double passes;
    bool isSimulation;
} waterFrame[] = {{"ShallowWaterIterativeProgramUpdate", 8.0, true},
                  {"ShallowWaterIterativeProgramDrop", 1.0, true},
                  {"NormalMapBuilderProgram", 1.0, false},
                  {"ShallowWaterRendererProgram", 1.0, false}};

std::string today() {
    const std::time_t now = std::time(nullptr);
    std::ostringstream text;
    text << std::put_time(std::localtime(&now), "%Y-%m-%d");
    return text.str();
}

std::string number(double value, int digits = 3) {
    std::ostringstream text;
    text << std::setprecision(digits) << value;
    return text.str();
}

/// "ShallowWater Update" for ShallowWaterProgramUpdate.
std::string title(std::string program) {
    const std::string word = "Program";
    program.replace(program.find(word), word.size(), " ");
    return program.back() == ' ' ? program.substr(0, program.size() - 1) : program;
}

/// A program in both forms, as far as one figure goes.
struct Pair {
    double library;
    double plain;
    bool isExcess() const { return library > plain; }
};

Pair pair(const Result& result, const std::string& program, const Column& column) {
    const auto value = [&](const Compilation& compilation) {
        return column.scale * compilation.programs.at(program).at("fragment").at(column.figure);
    };
    return {value(result.library), value(result.plain)};
}

/// "17 / 20", bold where the library has more than it should have.
std::string cell(const Pair& pair, const Column& column) {
    const std::string text = number(pair.library) + " / " + number(pair.plain);
    return column.bounded && pair.isExcess() ? "**" + text + "**" : text;
}

/// Which unit needs the cycles, where the driver counts by unit.
std::string busiestUnit(const Family& family, const Figures& figures) {
    const auto less = [&](const std::string& a, const std::string& b) { return figures.at(a) < figures.at(b); };
    const auto busiest = std::max_element(family.units.begin(), family.units.end(), less);
    return busiest == family.units.end() ? "" : *busiest;
}

std::string busiestUnits(const Result& result, const std::string& program) {
    const auto unit = [&](const Compilation& compilation) {
        return busiestUnit(*result.gpu.family, compilation.programs.at(program).at("fragment"));
    };
    return unit(result.library) + " / " + unit(result.plain);
}

std::string row(const std::vector<std::string>& cells) {
    std::string text = "|";
    for (const std::string& cell : cells)
        text += " " + cell + " |";
    return text + "\n";
}

std::string head(const std::vector<std::string>& cells) {
    return row(cells) + row(std::vector<std::string>(cells.size(), "---"));
}

std::string limitsTable(const std::vector<Result>& results) {
    std::vector<std::string> headings = {"driver"};
    for (const auto& [what, limit] : results.front().library.limits)
        headings.push_back(what);
    std::string text = head(headings);
    for (const Result& result : results) {
        std::vector<std::string> cells = {result.library.driver};
        for (const auto& [what, limit] : result.library.limits)
            cells.push_back(limit);
        text += row(cells);
    }
    return text;
}

/// What is bounded, but the spills, of which there are none.
std::string overviewTable(const std::vector<Result>& results) {
    const auto isShown = [](const Column& column) { return column.bounded && column.heading != std::string("spills"); };
    std::vector<std::string> headings = {"fragment program"};
    for (const Result& result : results) {
        std::string heading = result.gpu.name;
        for (const Column& column : result.gpu.family->columns)
            if (isShown(column)) heading += std::string(heading == result.gpu.name ? ": " : "; ") + column.heading;
        headings.push_back(heading);
    }
    std::string text = head(headings);
    for (const std::string& program : results.front().library.names) {
        std::vector<std::string> cells = {title(program)};
        for (const Result& result : results) {
            std::string figures;
            for (const Column& column : result.gpu.family->columns)
                if (isShown(column))
                    figures += (figures.empty() ? "" : "; ") + cell(pair(result, program, column), column);
            cells.push_back(figures);
        }
        text += row(cells);
    }
    return text;
}

std::string gpuTable(const Result& result) {
    const Family& family = *result.gpu.family;
    std::vector<std::string> headings = {"fragment program"};
    for (const Column& column : family.columns)
        headings.emplace_back(column.heading);
    if (!family.units.empty()) headings.emplace_back("busiest unit");
    std::string text = head(headings);
    for (const std::string& program : result.library.names) {
        std::vector<std::string> cells = {title(program)};
        for (const Column& column : family.columns)
            cells.push_back(cell(pair(result, program, column), column));
        if (!family.units.empty()) cells.push_back(busiestUnits(result, program));
        text += row(cells);
    }
    return text;
}

std::string callsTable(const Compilation& library) {
    std::vector<std::string> headings = {"frame"};
    headings.insert(headings.end(), callKinds.begin(), callKinds.end());
    std::string text = head(headings);
    for (const auto& [frame, counts] : library.calls) {
        std::vector<std::string> cells = {frame};
        for (const int count : counts)
            cells.push_back(std::to_string(count));
        text += row(cells);
    }
    return text;
}

/// Milliseconds for which the busiest unit is busy; a frame takes no less.
/// @param scale  of the simulation's width and height
double leastTime(const Result& result, int cores, int megahertz, double scale) {
    double cycles = 0.0;
    for (const auto& pass : waterFrame) {
        const double pixels = pass.isSimulation ? scale * scale * screenPixels : screenPixels;
        cycles += pixels * pass.passes * result.library.programs.at(pass.program).at("fragment").at("cycles");
    }
    return cycles / (1000.0 * megahertz * cores);
}

std::string leastTimesTable(const std::vector<Result>& results) {
    std::string text = head({"GPU", "cores, MHz", "simulation of the screen's size", "of half its width and height"});
    for (const auto& phone : phones)
        for (const Result& result : results)
            if (result.gpu.name == std::string(phone.gpu))
                text += row({phone.gpu, std::to_string(phone.cores) + ", " + std::to_string(phone.megahertz),
                             number(leastTime(result, phone.cores, phone.megahertz, 1.0)) + " ms",
                             number(leastTime(result, phone.cores, phone.megahertz, 0.5)) + " ms"});
    return text;
}

/// {"key": value, ...} of a map's entries.
template <typename Map, typename Write>
std::string object(const Map& map, const Write& write) {
    std::string text = "{";
    for (const auto& [key, value] : map)
        text += (text.size() == 1 ? "\"" : ", \"") + key + "\": " + write(value);
    return text + "}";
}

std::string json(const Compilation& compilation) {
    return object(compilation.programs, [](const Program& program) {
        return "\n  " + object(program, [](const Figures& figures) {
                   return object(figures, [](double figure) { return number(figure, 6); });
               });
    });
}

} // namespace

std::string markdownTables(const std::vector<Result>& results) {
    std::string text = today() +
                       ". Where two numbers stand in a cell, the first is the library's, the second the plain form's. "
                       "Adreno 630 and Mali-G52 leave out texture reads that they make before a program starts.\n\n"
                       "## Limits\n\n" +
                       limitsTable(results) + "\n## Overview\n\n" + overviewTable(results);
    text += "\n## GL calls of a frame\n\n" + callsTable(results.front().library);
    text += "\n## What a frame of water takes at least, at 1080 x 1920\n\n" + leastTimesTable(results);
    for (const Result& result : results)
        text += std::string("\n## ") + result.gpu.name + "\n\n" + gpuTable(result);
    return text;
}

std::string json(const std::vector<Result>& results) {
    std::map<std::string, const Result*> byName;
    for (const Result& result : results)
        byName[result.gpu.name] = &result;
    return object(byName, [](const Result* result) {
        const std::map<std::string, std::string> limits(result->library.limits.begin(), result->library.limits.end());
        return "{\n \"driver\": \"" + result->library.driver +
               "\",\n \"limits\": " + object(limits, [](const std::string& limit) { return "\"" + limit + "\""; }) +
               ",\n \"library\": " + json(result->library) + ",\n \"plain\": " + json(result->plain) + "}\n";
    });
}

std::vector<Excess> excesses(const std::vector<Result>& results) {
    std::vector<Excess> all;
    for (const Result& result : results) {
        for (const std::string& program : result.library.names) {
            for (const Column& column : result.gpu.family->columns) {
                const Pair both = pair(result, program, column);
                if (!column.bounded || !both.isExcess()) continue;
                const std::string text = std::string(result.gpu.name) + ", " + program + ", " + column.heading + ": " +
                                         number(both.library) + ", in the plain form " + number(both.plain);
                all.push_back({text, excuse(result.gpu.name, program)});
            }
        }
    }
    return all;
}

} // namespace tidalume::phones
