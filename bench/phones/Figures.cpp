#include "bench/phones/Figures.h"

#include "bench/CommandOutput.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <sstream>
#include <stdexcept>

namespace tidalume::phones {
namespace {

const Family adreno = {{{"instructions", "inst", 1.0, true},
                        {"texture reads", "cat5", 1.0, false},
                        {"waits for reads", "systall", 1.0, true},
                        {"waves", "waves", 1.0, false},
                        {"spills", "stp", 1.0, true}},
                       {}};

const Family valhall = {{{"instructions", "inst", 1.0, true},
                         {"cycles", "cycles", 1.0, true},
                         {"texture reads", "t", 4.0, false},
                         {"threads", "threads", 1.0, false},
                         {"spills", "spills", 1.0, true}},
                        {"fma", "cvt", "sfu", "v", "t", "ls"}};

const Family bifrost = {{{"instructions", "inst", 1.0, true},
                         {"cycles", "cycles", 1.0, true},
                         {"texture reads", "texture", 2.0, false},
                         {"read before the start, in cycles", "preloads", 1.0 / 16.0, false},
                         {"threads", "threads", 1.0, false},
                         {"spills", "spills", 1.0, true}},
                        {"arith", "texture", "vary", "ldst"}};

const Family midgard = {{{"instructions", "inst", 1.0, true},
                         {"bundles", "bundles", 1.0, true},
                         {"threads", "threads", 1.0, false},
                         {"spills", "spills", 1.0, true}},
                        {}};

const Family videoCore = {{{"instructions", "inst", 1.0, true},
                           {"with stalls", "inst-and-stalls", 1.0, true},
                           {"threads", "threads", 1.0, false},
                           {"spills", "spills", 1.0, true}},
                          {}};

/// "28 inst, 2.5 cycles, 0:0 spills:fills": numbers before names.
Figures figures(const std::string& list) {
    Figures result;
    std::istringstream entries(list);
    for (std::string entry; std::getline(entries, entry, ',');) {
        std::istringstream words(entry);
        std::string number;
        std::string name;
        words >> number >> name;
        const size_t colon = number.find(':');
        result[name.substr(0, name.find(':'))] = std::stod(number);
        if (colon != std::string::npos) result[name.substr(name.find(':') + 1)] = std::stod(number.substr(colon + 1));
    }
    return result;
}

/// Of the drivers' names of stages, MESA_SHADER_FRAGMENT and FRAG, the one that all tables use.
std::string stageName(std::string name) {
    const std::string prefix = "MESA_SHADER_";
    if (name.rfind(prefix, 0) == 0) name.erase(0, prefix.size());
    std::transform(name.begin(), name.end(), name.begin(), [](unsigned char c) { return std::tolower(c); });
    return name == "frag" ? "fragment" : name == "vert" ? "vertex" : name;
}

/// Of several variants of a shader the last one is drawn with.
void readMessage(const std::string& message, Program& program) {
    const std::string mark = " shader: ";
    const size_t at = message.find(mark);
    if (at != std::string::npos) program[stageName(message.substr(0, at))] = figures(message.substr(at + mark.size()));
}

/// "a disc=1=2=13": a name, and a count of each kind.
std::pair<std::string, std::vector<int>> calls(const std::string& line) {
    std::istringstream parts(line);
    std::pair<std::string, std::vector<int>> result;
    std::getline(parts, result.first, '=');
    for (std::string count; std::getline(parts, count, '=');)
        result.second.push_back(std::stoi(count));
    return result;
}

Compilation read(const std::string& output) {
    Compilation result;
    std::string program;
    std::istringstream lines(output);
    for (std::string line; std::getline(lines, line);) {
        const size_t space = std::min(line.find(' '), line.size());
        const std::string kind = line.substr(0, space);
        const std::string rest = line.substr(std::min(space + 1, line.size()));
        if (kind == "driver") result.driver = rest;
        if (kind == "limit")
            result.limits.emplace_back(rest.substr(0, rest.find('=')), rest.substr(rest.find('=') + 1));
        if (kind == "calls") result.calls.push_back(calls(rest));
        if (kind == "program") program = rest;
        if (kind == "program" && !rest.empty() && result.programs.try_emplace(rest).second)
            result.names.push_back(rest);
        if (kind == "message" && !program.empty()) readMessage(rest, result.programs[program]);
    }
    return result;
}

} // namespace

const std::vector<Gpu> gpus = {
    {"Adreno 630", &adreno}, {"Mali-G57", &valhall},  {"Mali-G52", &bifrost},        {"Mali-T760", &midgard},
    {"Adreno 540", &adreno}, {"Adreno 330", &adreno}, {"VideoCore 4.2", &videoCore},
};

/// Messages come from the thread that draws alone.
Compilation compile(const Gpu& gpu, bool plain) {
    const std::string environment = "FD_MESA_DEBUG=shaderdb V3D_DEBUG=shaderdb GALLIUM_THREAD=0";
    const std::string self = std::filesystem::read_symlink("/proc/self/exe");
    Compilation result = read(outputOf(environment + " '" PHONE_DRIVER "' '" + gpu.name + "' '" + self + "' --print " +
                                       (plain ? "plain" : "library") + " 2>&1"));
    for (const auto& [name, program] : result.programs)
        if (program.count("fragment") == 0)
            throw std::runtime_error(std::string("the driver of ") + gpu.name + " says nothing of " + name);
    return result;
}

} // namespace tidalume::phones
