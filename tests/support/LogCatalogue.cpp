#include "tests/support/LogCatalogue.h"

#include <algorithm>
#include <regex>
#include <sstream>

namespace {

// Newlines of compilers and linkers included.
#define ANY_TEXT "[\\s\\S]*"

/// Priority, tag and message.
const std::regex catalogue[] = {
    std::regex(R"(6 (\w+): \1 Shader Init : \d+\.\d{6} ms)"),
    std::regex(R"(2 ShallowWater: addDrop center\[\S+,\S+\] radius\[\S+\] strength\[\S+\])"),
    std::regex(R"(6 EGLUtils: GL .+ = .*\n)"),
    std::regex(R"(6 EGLUtils: .+\(\) returned -?\d+\n)"),
    std::regex(R"(6 EGLUtils: after .+\(\) eglError \w+ \(0x[0-9a-f]+\)\n)"),
    std::regex(R"(6 EGLUtils: after .+\(\) glError \(0x500\) GL_INVALID_ENUM\n)"),
    std::regex(R"(6 EGLUtils: after .+\(\) glError \(0x501\) GL_INVALID_VALUE\n)"),
    std::regex(R"(6 EGLUtils: after .+\(\) glError \(0x502\) GL_INVALID_OPERATION\n)"),
    std::regex(R"(6 EGLUtils: after .+\(\) glError \(0x505\) GL_OUT_OF_MEMORY\n)"),
    std::regex(R"(6 EGLUtils: after .+\(\) glError \(0x(?!50[0125]\))[0-9a-f]+\)\n)"),
    std::regex("6 EGLUtils: Could not compile shader (35633|35632):\n" ANY_TEXT "\n"),
    std::regex("6 EGLUtils: Could not link program:\n" ANY_TEXT "\n"),
    std::regex("6 EGLUtils: Null string error in appendString\n"),
    std::regex(R"(6 EGLUtils: in createProgram\(\) malloc fail)"),
    std::regex(R"(6 EGLUtils: in saveProgram\(\) FILENAME fopen error)"),
    std::regex(R"(6 EGLUtils: in createProgram\(\) link fail, so createProgram with text again)"),
};

} // namespace

bool isInCatalogue(const LogLine& line) {
    std::ostringstream text;
    text << line;
    return std::any_of(std::begin(catalogue), std::end(catalogue),
                       [&](const std::regex& entry) { return std::regex_match(text.str(), entry); });
}
