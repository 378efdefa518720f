#include "tests/support/LogCatalogue.h"

#include <algorithm>
#include <regex>
#include <vector>

namespace {

struct Entry {
    int priority;
    std::regex tagAndMessage; ///< separated by a colon
};

/// Newlines of compilers and linkers included.
#define ANY_TEXT "[\\s\\S]*"

const std::vector<Entry>& catalogue() {
    static const std::vector<Entry> entries = {
        {6, std::regex(R"((\w+):\1 Shader Init : \d+\.\d{6} ms)")},
        {2, std::regex(R"(ShallowWater:addDrop center\[\S+,\S+\] radius\[\S+\] strength\[\S+\])")},
        {6, std::regex(R"(EGLUtils:GL .+ = .*\n)")},
        {6, std::regex(R"(EGLUtils:.+\(\) returned -?\d+\n)")},
        {6, std::regex(R"(EGLUtils:after .+\(\) eglError \w+ \(0x[0-9a-f]+\)\n)")},
        {6, std::regex(R"(EGLUtils:after .+\(\) glError \(0x500\) GL_INVALID_ENUM\n)")},
        {6, std::regex(R"(EGLUtils:after .+\(\) glError \(0x501\) GL_INVALID_VALUE\n)")},
        {6, std::regex(R"(EGLUtils:after .+\(\) glError \(0x502\) GL_INVALID_OPERATION\n)")},
        {6, std::regex(R"(EGLUtils:after .+\(\) glError \(0x505\) GL_OUT_OF_MEMORY\n)")},
        {6, std::regex(R"(EGLUtils:after .+\(\) glError \(0x(?!50[0125]\))[0-9a-f]+\)\n)")},
        {6, std::regex("EGLUtils:Could not compile shader (35633|35632):\n" ANY_TEXT "\n")},
        {6, std::regex("EGLUtils:Could not link program:\n" ANY_TEXT "\n")},
        {6, std::regex("EGLUtils:Null string error in appendString\n")},
        {6, std::regex(R"(EGLUtils:in createProgram\(\) malloc fail)")},
        {6, std::regex(R"(EGLUtils:in saveProgram\(\) FILENAME fopen error)")},
        {6, std::regex(R"(EGLUtils:in createProgram\(\) link fail, so createProgram with text again)")},
    };
    return entries;
}

} // namespace

bool isInCatalogue(const LogLine& line) {
    const std::string text = line.tag + ":" + line.message;
    return std::any_of(catalogue().begin(), catalogue().end(), [&](const Entry& entry) {
        return entry.priority == line.priority && std::regex_match(text, entry.tagAndMessage);
    });
}
