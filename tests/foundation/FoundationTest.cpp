#include "foundation/Diagnostics.h"
#include "foundation/ProgramBuilder.h"
#include "foundation/ProgramTable.h"
#include "tests/support/FailingMalloc.h"
#include "tests/support/Files.h"
#include "tests/support/GLTest.h"

#include <EGL/egl.h>

#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <map>
#include <numeric>
#include <regex>
#include <sstream>

static time_t seconds = 0; // of the library's clock: each time that it asks is a second after the last

extern "C" {
EGLBoolean __real_eglGetConfigAttrib(EGLDisplay, EGLConfig, EGLint, EGLint*);

/// Every attribute of every configuration is its own name's code.
EGLBoolean __wrap_eglGetConfigAttrib(EGLDisplay display, EGLConfig config, EGLint attribute, EGLint* value) {
    if (config == nullptr) return __real_eglGetConfigAttrib(display, config, attribute, value);
    *value = attribute;
    return EGL_TRUE;
}

int __wrap_clock_gettime(clockid_t, timespec* time) {
    *time = {++seconds, 0};
    return 0;
}
}

namespace {

using namespace testing;

constexpr char vertexSource[] = "#version 300 es\nvoid main() { gl_Position = vec4(0.0); }";
constexpr char fragmentSource[] = "#version 300 es\nvoid main() {}";
constexpr char unlinkable[] = "#version 300 es\nin lowp vec4 absent; out lowp vec4 c; void main() { c = absent; }";

using Lines = std::vector<std::string>;

constexpr char rejected[] = "6 EGLUtils: in createProgram() link fail, so createProgram with text again";
constexpr char notOpened[] = "6 EGLUtils: in saveProgram() FILENAME fopen error";
constexpr char outOfMemory[] = "6 EGLUtils: in createProgram() malloc fail";
constexpr char noPath[] = "6 EGLUtils: Null string error in appendString\n";

class FoundationTest : public GLTest {
  protected:
    FoundationTest() { std::strcpy(GlobalProperty::ROOT_DIR, "./"); }

    /// Builds through the cache and returns what is logged, without GL errors, which a rejected binary of a foreign
    /// format may raise, as the driver pleases.
    Lines build(bool succeeds = true) {
        const GLuint program = createProgram(vertexSource, fragmentSource, "Program");
        EXPECT_EQ(program != 0, succeeds);
        glDeleteProgram(program);
        Lines lines;
        for (const std::string& line : log.take())
            if (line.find("after gl") == std::string::npos) lines.push_back(line);
        return lines;
    }

    const WorkingFolder folder;
};

TEST_F(FoundationTest, LogsToTheLetter) {
    checkGLError("nothing");
    glRecorder().faults.pendingErrors = {0x500, 0x501, 0x502, 0x505, 0x506};
    checkGLError("glTest mName");
    checkEGLError("nothing", EGL_TRUE);
    checkEGLError("eglTest", eglGetConfigAttrib(eglGetCurrentDisplay(), nullptr, EGL_RED_SIZE, nullptr));
    printGLString("Version", GL_VERSION);
    const std::string version = reinterpret_cast<const char*>(glGetString(GL_VERSION));
    const Lines lines = log.take();
    EXPECT_EQ(std::accumulate(lines.begin(), lines.end(), std::string()),
              R"(6 EGLUtils: after glTest mName() glError (0x500) GL_INVALID_ENUM
6 EGLUtils: after glTest mName() glError (0x501) GL_INVALID_VALUE
6 EGLUtils: after glTest mName() glError (0x502) GL_INVALID_OPERATION
6 EGLUtils: after glTest mName() glError (0x505) GL_OUT_OF_MEMORY
6 EGLUtils: after glTest mName() glError (0x506)
6 EGLUtils: eglTest() returned 0
6 EGLUtils: after eglTest() eglError EGL_BAD_CONFIG (0x3005)
6 EGLUtils: GL Version = )" +
                  version + "\n");
}

/// Under the names that the platform's header has for them.
TEST_F(FoundationTest, NamesErrorsAndAttributesOfAConfiguration) {
    std::map<std::string, EGLint> codes;
    const std::string header = fileContent(TIDALUME_EGL_HEADER);
    const std::regex definition("#define (EGL_[A-Z_]+) +(0x[0-9A-F]{4})\\b");
    for (std::sregex_iterator found(header.begin(), header.end(), definition), end; found != end; ++found)
        codes[(*found)[1]] = std::stoi((*found)[2], nullptr, 16);
    for (const auto& [name, code] : codes) {
        const bool isError = code >= EGL_SUCCESS && code <= EGL_CONTEXT_LOST;
        EXPECT_EQ(stringEGLError(code), isError ? name : "UNKNOWN");
    }

    internal::CaptureStdout();
    printEGLConfiguration(eglGetCurrentDisplay(), &codes);
    printEGLConfiguration(eglGetCurrentDisplay(), nullptr);
    const std::string output = internal::GetCapturedStdout();
    EXPECT_THAT(output, MatchesRegex("( EGL_[A-Z_]+: -?[0-9]+ \\(0x[0-9a-f]+\\)){32}\n\n")) << "none of no config";
    EXPECT_THAT(output, ContainsRegex("^ EGL_BUFFER_SIZE: .* EGL_MAX_PBUFFER_HEIGHT: [^:]+ EGL_MAX_PBUFFER_PIXELS: .* "
                                      "EGL_CONFORMANT: [^:]+$"));
    const std::regex attribute("(EGL_[A-Z_]+): (\\S+)");
    for (std::sregex_iterator found(output.begin(), output.end(), attribute), end; found != end; ++found)
        EXPECT_EQ(std::stoi((*found)[2]), codes[(*found)[1]]) << (*found)[1];
    EXPECT_EQ(eglGetError(), EGL_SUCCESS);
}

TEST_F(FoundationTest, ReportsWhatTheCompilerAndTheLinkerSay) {
    EXPECT_EQ(createProgram(vertexSource, "void main() { fragment }", "Program"), 0);
    EXPECT_EQ(createProgram(vertexSource, unlinkable, "Program"), 0);
    EXPECT_THAT(log.take(), ElementsAre(ContainsRegex("^6 EGLUtils: Could not compile shader 35632:\n.*error.*\n$"),
                                        ContainsRegex("^6 EGLUtils: Could not link program:\n.*absent.*\n$")));
    EXPECT_TRUE(std::filesystem::is_empty(".")) << "a failed build is not saved";
}

/// The time is logged when the last program was among those built.
TEST_F(FoundationTest, LogsTheTimeOfMissingPrograms) {
    GlobalProperty::DEBUG_LOG = true;
    GLuint ids[2] = {};
    const tidalume::ProgramTable table = {"Effect",
                                          "Effect Shader Init : %lf ms",
                                          {{&ids[0], "First", "first", vertexSource, fragmentSource, {}, {}},
                                           {&ids[1], "Last", "last", vertexSource, fragmentSource, {}, {}}}};
    seconds = 0;
    tidalume::buildPrograms(table);
    EXPECT_THAT(log.take(), ElementsAre("6 Effect: Effect Shader Init : 1000.000000 ms"));
    EXPECT_EQ(seconds, 2) << "from before the first to after the last";
    for (const int missing : {0, 1}) {
        glDeleteProgram(std::exchange(ids[missing], 0));
        tidalume::buildPrograms(table);
        EXPECT_THAT(log.take(), SizeIs(missing));
    }
    tidalume::deletePrograms(table);
}

/// What is called without a cache file, with one that the driver rejects, and with one that it accepts.
TEST_F(FoundationTest, CallsTheDriverInOrder) {
    const std::string textBuild = R"(
        glCreateShader VERTEX_SHADER; glShaderSource; glCompileShader; glGetShaderiv 0x8b81
        glCreateShader FRAGMENT_SHADER; glShaderSource; glCompileShader; glGetShaderiv 0x8b81
        glCreateProgram; glAttachShader; [glAttachShader]; glAttachShader; [glAttachShader]
        glLinkProgram; glDeleteShader; glDeleteShader; glGetProgramiv 0x8b82; )";
    const std::string save = "glGetProgramiv 0x8741; [glGetProgramiv]; glGetProgramBinary; [glGetProgramBinary]; ";
    const auto buildWithoutName = [] { glDeleteProgram(createProgram(vertexSource, fragmentSource, nullptr)); };
    EXPECT_CALLS(buildWithoutName(), textBuild + "glDeleteProgram program 1");
    EXPECT_CALLS(build(), textBuild + save + "glDeleteProgram program 2");
    const std::string size = std::to_string(std::filesystem::file_size("Program.dat"));
    const std::string load =
        "glCreateProgram; glProgramBinary 0x8740 " + size + "; [glProgramBinary]; glGetProgramiv 0x8b82; ";
    EXPECT_CALLS(build(), load + "glDeleteProgram program 3; " + textBuild + save + "glDeleteProgram program 4");
    glRecorder().faults.acceptsProgramBinaries = true;
    EXPECT_CALLS(build(), load + "glDeleteProgram program 5");
}

/// Whatever stands in the file's place, and whichever allocation fails, nothing is lost but the cache.
TEST_F(FoundationTest, BuildsFromTextWhereTheCacheIsOfNoUse) {
    const GLuint program = createProgram(vertexSource, fragmentSource);
    GLint length = 0;
    glGetProgramiv(program, GL_PROGRAM_BINARY_LENGTH, &length);
    EXPECT_EQ(saveProgram(program, strdup("Program.dat"), nullptr), program);
    EXPECT_EQ(saveProgram(program, strdup("/dev/full"), nullptr), 0);
    glDeleteProgram(program);
    EXPECT_EQ(std::filesystem::file_size("Program.dat"), length);
    std::filesystem::rename("Program.dat", "usable");

    const struct {
        std::string command; ///< that puts the file there
        Lines says;
        int failingAllocation = -1;
        bool builds = true;
    } cases[] = {
        {"head -c 99 usable > Program.dat", {rejected}},
        {"touch Program.dat", {rejected}},
        {"head -c 5000 /bin/sh > Program.dat", {rejected}},
        {"truncate -s 3G Program.dat", {}}, // longer than the driver can be told
        {"mkdir Program.dat", {notOpened}},
        {"mkfifo Program.dat", {notOpened}},                   // which must not block
        {"ln -s /proc/absent Program.dat", {notOpened}},       // as in an unwritable folder
        {"ln -s /dev/full Program.dat", {rejected}},           // read as an empty file, written without effect
        {"cp usable Program.dat", {noPath}, 0},                // no memory for the first half of the path
        {"cp usable Program.dat", {noPath}, 1},                // for the whole path
        {"cp usable Program.dat", {outOfMemory}, 2, false},    // for the cached binary: no text build
        {"cp usable Program.dat", {rejected, outOfMemory}, 3}, // for the binary to save
    };
    for (const auto& [command, says, failingAllocation, builds] : cases) {
        SCOPED_TRACE(command + " " + std::to_string(failingAllocation));
        EXPECT_EQ(std::system(("rm -rf Program.dat && " + command).c_str()), 0);
        failingMalloc(failingAllocation);
        EXPECT_EQ(build(builds), says);
        EXPECT_EQ(failingMalloc(-1), failingAllocation >= 0) << "asked for";
        EXPECT_EQ(std::system("test ! -f Program.dat || cmp usable Program.dat"), 0) << "a file is usable again";
    }
    std::memset(GlobalProperty::ROOT_DIR, 'x', sizeof(GlobalProperty::ROOT_DIR) - 1);
    EXPECT_THAT(build(), ElementsAre(notOpened)) << "a name that is too long";
}

} // namespace
