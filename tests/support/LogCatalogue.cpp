#include "tests/support/LogCatalogue.h"

#include <algorithm>
#include <regex>
#include <sstream>

namespace {

/// Priority, tag and message; what compilers and linkers say may have several lines.
const std::regex catalogue[] = {
    std::regex(R"(6 (\w+): \1 Shader Init : \d+\.\d{6} ms)"),
    std::regex(R"(2 ShallowWater: addDrop center\[\S+,\S+\] radius\[\S+\] strength\[\S+\])"),
    std::regex(R"(6 EGLUtils: after .+\(\) glError \(0x500\) GL_INVALID_ENUM\n)"),
    std::regex(R"(6 EGLUtils: after .+\(\) glError \(0x501\) GL_INVALID_VALUE\n)"),
    std::regex(R"(6 EGLUtils: after .+\(\) glError \(0x502\) GL_INVALID_OPERATION\n)"),
    std::regex(R"(6 EGLUtils: after .+\(\) glError \(0x505\) GL_OUT_OF_MEMORY\n)"),
    std::regex(R"(6 EGLUtils: after .+\(\) glError \(0x(?!50[0125]\))[0-9a-f]+\)\n)"),
    std::regex(R"(6 EGLUtils: Could not compile shader (35633|35632):\n[\s\S]*\n)"),
    std::regex(R"(6 EGLUtils: Could not link program:\n[\s\S]*\n)"),
};

} // namespace

bool isInCatalogue(const LogLine& line) {
    std::ostringstream text;
    text << line;
    return std::any_of(std::begin(catalogue), std::end(catalogue),
                       [&](const std::regex& entry) { return std::regex_match(text.str(), entry); });
}
