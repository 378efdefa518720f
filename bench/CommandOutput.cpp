#include "bench/CommandOutput.h"

#include <cstdio>
#include <stdexcept>

namespace tidalume {

std::string outputOf(const std::string& command) {
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe) throw std::runtime_error("cannot run " + command);
    std::string output;
    char buffer[256];
    while (std::fgets(buffer, sizeof(buffer), pipe))
        output += buffer;
    if (pclose(pipe) != 0) throw std::runtime_error("failed: " + command + "\n" + output);
    return output;
}

} // namespace tidalume
