#include "bench/Child.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace tidalume::bench {

std::string runSelf(const std::string& before, const std::string& options) {
    const std::string self = std::filesystem::read_symlink("/proc/self/exe");
    const std::string command = before + " '" + self + "' " + options;
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe) throw std::runtime_error("cannot run " + command);
    std::string output;
    char buffer[256];
    while (std::fgets(buffer, sizeof(buffer), pipe))
        output += buffer;
    if (pclose(pipe) != 0) throw std::runtime_error("failed: " + command);
    return output;
}

std::string callgrind(const std::string& folder) {
    return "valgrind --tool=callgrind --log-file=/dev/null --callgrind-out-file='" + folder + "/callgrind.out' ";
}

std::vector<InstructionCount> readCounts(const std::string& folder) {
    std::vector<std::pair<long, InstructionCount>> parts;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        InstructionCount count = {};
        long part = 0;
        std::ifstream stream(entry.path());
        const std::string trigger = "desc: Trigger: Client Request: ";
        for (std::string line; std::getline(stream, line);) {
            if (line.rfind("part: ", 0) == 0) part = std::strtol(line.c_str() + 6, nullptr, 10);
            if (line.rfind(trigger, 0) == 0) count.name = line.substr(trigger.size());
            if (line.rfind("totals: ", 0) == 0) count.instructions = std::strtod(line.c_str() + 8, nullptr);
        }
        if (!count.name.empty()) parts.emplace_back(part, count);
    }
    std::sort(parts.begin(), parts.end(), [](const auto& x, const auto& y) { return x.first < y.first; });
    std::vector<InstructionCount> counts;
    counts.reserve(parts.size());
    for (const auto& [part, count] : parts)
        counts.push_back(count);
    return counts;
}

} // namespace tidalume::bench
