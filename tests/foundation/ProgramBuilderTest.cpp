#include "foundation/ProgramBuilder.h"

#include "foundation/ProgramTable.h"
#include "tests/support/CallsTest.h"
#include "tests/support/FailingMalloc.h"
#include "tests/support/LogCatalogue.h"

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <iterator>
#include <regex>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

using namespace testing;

constexpr char vertexSource[] = "#version 300 es\nvoid main() { gl_Position = vec4(0.0, 0.0, 0.0, 1.0); }";
constexpr char fragmentSource[] =
    "#version 300 es\nprecision highp float;\nout vec4 color;\nvoid main() { color = vec4(1.0); }";
constexpr char unlinkable[] =
    "#version 300 es\nprecision highp float;\nin vec4 absent;\nout vec4 color;\nvoid main() { color = absent; }";

const LogLine rejected = {6, "EGLUtils", "in createProgram() link fail, so createProgram with text again"};
const LogLine notOpened = {6, "EGLUtils", "in saveProgram() FILENAME fopen error"};
const LogLine outOfMemory = {6, "EGLUtils", "in createProgram() malloc fail"};

class ProgramBuilderTest : public CallsTest {
  protected:
    char folder[24] = "/tmp/tidalume-XXXXXX";
    const std::string file = std::string(mkdtemp(folder)) + "/Program.dat";

    ProgramBuilderTest() { std::snprintf(GlobalProperty::ROOT_DIR, sizeof(GlobalProperty::ROOT_DIR), "%s/", folder); }

    void TearDown() override {
        std::filesystem::remove_all(folder);
        EXPECT_EQ(liveObjects(), 0) << "GL objects leaked";
        CallsTest::TearDown();
    }

    std::string content() const {
        std::ifstream stream(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    /// Without GL errors, which a rejected binary of a foreign format may raise, as the driver pleases.
    std::vector<LogLine> takeLog() {
        std::vector<LogLine> lines;
        for (const LogLine& line : log.take())
            if (line.message.find("after gl") != 0) lines.push_back(line);
        return lines;
    }

    /// Builds through the cache, checks that a program came out, and returns the log.
    std::vector<LogLine> build() {
        const GLuint program = createProgram(vertexSource, fragmentSource, "Program");
        EXPECT_NE(program, 0);
        glDeleteProgram(program);
        return takeLog();
    }
};

TEST_F(ProgramBuilderTest, ReportsWhatTheCompilerAndTheLinkerSay) {
    const struct {
        const char *vertex, *fragment, *firstLine, *detail;
    } failures[] = {
        {"void main() { vertex }", fragmentSource, "Could not compile shader 35633:\n", "error"},
        {vertexSource, "#version 300 es\nvoid main() { fragment }", "Could not compile shader 35632:\n", "error"},
        {vertexSource, unlinkable, "Could not link program:\n", "absent"},
    };
    for (const auto& [vertex, fragment, firstLine, detail] : failures) {
        EXPECT_EQ(createProgram(vertex, fragment, "Program"), 0);
        const auto message = Field(&LogLine::message, AllOf(StartsWith(firstLine), HasSubstr(detail)));
        EXPECT_THAT(log.take(), ElementsAre(AllOf(ResultOf(isInCatalogue, true), message)));
        glRecorder().faults.infoLogIsEmpty = true;
        EXPECT_EQ(createProgram(vertex, fragment), 0) << "an empty log is not printed";
        glRecorder().faults.infoLogIsEmpty = false;
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder)) << "a failed build is not saved";
}

/// What is called without a cache file, with one that the driver rejects, and with one that it accepts.
TEST_F(ProgramBuilderTest, CallsTheDriverInOrder) {
    const std::string textBuild =
        "glCreateShader vertex; glShaderSource; glCompileShader; glGetShaderiv 0x8b81; "
        "glCreateShader fragment; glShaderSource; glCompileShader; glGetShaderiv 0x8b81; "
        "glCreateProgram; glAttachShader; [glAttachShader]; glAttachShader; [glAttachShader]; "
        "glLinkProgram; glDeleteShader; glDeleteShader; glGetProgramiv 0x8b82; ";
    const std::string save = "glGetProgramiv 0x8741; [glGetProgramiv]; glGetProgramBinary; [glGetProgramBinary]; ";
    const auto callsOf = [](const char* cacheName) {
        GLuint program = 0;
        const auto action = [&] { program = createProgram(vertexSource, fragmentSource, cacheName); };
        const std::string sequence = shortened(glRecorder().sequence(action));
        glDeleteProgram(program);
        return std::regex_replace(sequence, std::regex("DeleteProgram \\d+"), "DeleteProgram");
    };
    EXPECT_EQ(callsOf(nullptr), calls(textBuild));
    EXPECT_TRUE(std::filesystem::is_empty(folder)) << "without a name no file is touched";
    EXPECT_EQ(callsOf("Program"), calls(textBuild + save));
    const std::string size = std::to_string(std::filesystem::file_size(file));
    const std::string load =
        "glCreateProgram; glProgramBinary 0x8740 " + size + "; [glProgramBinary]; glGetProgramiv 0x8b82; ";
    EXPECT_EQ(callsOf("Program"), calls(load + "glDeleteProgram; " + textBuild + save));
    EXPECT_THAT(takeLog(), ElementsAre(rejected));
    glRecorder().faults.acceptsProgramBinaries = true;
    EXPECT_EQ(callsOf("Program"), calls(load));
}

TEST_F(ProgramBuilderTest, BuildsFromTextWhenTheFileIsOfNoUse) {
    const GLuint program = createProgram(vertexSource, fragmentSource);
    EXPECT_EQ(saveProgram(program, strdup(file.c_str()), nullptr), program);
    GLint length = 0;
    glGetProgramiv(program, GL_PROGRAM_BINARY_LENGTH, &length);
    glDeleteProgram(program);
    const std::string binary = content();
    EXPECT_EQ(binary.size(), length);
    for (const std::string& bytes : {binary, {}, binary.substr(0, 99), std::string(5000, '\xA7')}) {
        std::ofstream(file, std::ios::binary) << bytes;
        EXPECT_THAT(build(), ElementsAre(rejected));
        EXPECT_EQ(content(), binary) << "the file is usable again";
    }
}

TEST_F(ProgramBuilderTest, WhatIsNoFileCostsOnlyTheCache) {
    mkdir(file.c_str(), 0700);
    EXPECT_THAT(build(), ElementsAre(notOpened)) << "a folder";
    std::filesystem::remove(file);
    mkfifo(file.c_str(), 0600);
    EXPECT_THAT(build(), ElementsAre(notOpened)) << "a pipe, which must not block";
    std::filesystem::remove(file);
    std::filesystem::create_symlink("/proc/absent", file);
    EXPECT_THAT(build(), ElementsAre(notOpened)) << "in an unwritable folder";
    std::filesystem::remove(file);
    std::filesystem::create_symlink("/dev/full", file);
    EXPECT_THAT(build(), ElementsAre(rejected)) << "a full disk: read as an empty file, written without effect";
    const GLuint program = createProgram(vertexSource, fragmentSource);
    EXPECT_EQ(saveProgram(program, strdup(file.c_str()), nullptr), 0);
    glDeleteProgram(program);
    std::memset(GlobalProperty::ROOT_DIR, 'x', sizeof(GlobalProperty::ROOT_DIR) - 1);
    EXPECT_THAT(build(), ElementsAre(notOpened)) << "a name that is too long";
}

/// The time is logged when the last program was among those built, from the first one that was.
TEST_F(ProgramBuilderTest, LogsTheTimeOfTheProgramsThatWereMissing) {
    GlobalProperty::DEBUG_LOG = true;
    GLuint ids[2] = {};
    const tidalume::ProgramTable table = {"Effect",
                                          {{&ids[0], "First", "first", vertexSource, fragmentSource, {}, {}},
                                           {&ids[1], "Last", "last", vertexSource, fragmentSource, {}, {}}}};
    const auto start = std::chrono::steady_clock::now();
    tidalume::buildPrograms(table);
    const std::chrono::duration<double, std::milli> whole = std::chrono::steady_clock::now() - start;
    const std::vector<LogLine> lines = log.take();
    ASSERT_THAT(lines, ElementsAre(ResultOf(isInCatalogue, true)));
    const double logged = std::stod(lines[0].message.substr(std::strlen("Effect Shader Init : ")));
    EXPECT_THAT(logged, AllOf(Le(whole.count()), Gt(0.1 * whole.count())));
    for (const int missing : {0, 1}) {
        glDeleteProgram(std::exchange(ids[missing], 0));
        tidalume::buildPrograms(table);
        EXPECT_THAT(log.take(), SizeIs(missing));
        EXPECT_THAT(glRecorder().live["program"], UnorderedElementsAreArray(ids));
    }
    tidalume::deletePrograms(table);
}

/// Lets the first, the second, ... allocation of a cached build fail, until none is left to fail.
TEST_F(ProgramBuilderTest, EveryAllocationMayFail) {
    const LogLine noPath = {6, "EGLUtils", "Null string error in appendString\n"};
    build();
    const std::pair<std::vector<LogLine>, bool> outcomes[] = {
        {{noPath}, true},                // first half of the path: text build without the cache
        {{noPath}, true},                // whole path
        {{outOfMemory}, false},          // cached binary: no text build
        {{rejected, outOfMemory}, true}, // binary to save
    };
    int allocation = 0;
    for (const auto& [lines, builds] : outcomes) {
        failingMalloc(allocation++);
        const GLuint program = createProgram(vertexSource, fragmentSource, "Program");
        EXPECT_TRUE(failingMalloc(-1)) << "allocation " << allocation << " was never asked for";
        EXPECT_EQ(program != 0, builds) << "allocation " << allocation;
        EXPECT_EQ(takeLog(), lines) << "allocation " << allocation;
        glDeleteProgram(program);
    }
}

} // namespace
