#pragma once

#include <regex>
#include <string>

/// Whether a line is one of those that an effect may write: its priority, its tag and its words, with any arguments;
/// what compilers and linkers say may have several lines. No build takes less than 0.01 ms or more than 100 s.
inline bool isInCatalogue(const std::string& line) {
    static const std::regex catalogue(
        R"(6 (\w+): \1 Shader Init : (?!0\.00)\d{1,5}\.\d{6} ms|)"
        R"(2 ShallowWater: addDrop center\[\S+,\S+\] radius\[\S+\] strength\[\S+\]|)"
        R"(6 EGLUtils: after .+\(\) glError \(0x[0-9a-f]+\)( GL_[A-Z_]+)?\n|)"
        R"(6 EGLUtils: Could not (compile shader (35633|35632)|link program):\n[\s\S]+\n)");
    return std::regex_match(line, catalogue);
}
