#include "foundation/ProgramBuilder.h"

#include "foundation/ProgramTable.h"
#include "tests/support/FailingMalloc.h"
#include "tests/support/GLTest.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <iterator>
#include <sys/stat.h>

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

constexpr char vertexSource[] = "#version 300 es\nvoid main() { gl_Position = vec4(0.0, 0.0, 0.0, 1.0); }";
constexpr char fragmentSource[] =
    "#version 300 es\nprecision highp float;\nout vec4 color;\nvoid main() { color = vec4(1.0); }";
constexpr char unlinkable[] =
    "#version 300 es\nprecision highp float;\nin vec4 absent;\nout vec4 color;\nvoid main() { color = absent; }";

const LogLine rejected = {6, "EGLUtils", "in createProgram() link fail, so createProgram with text again"};
const LogLine notOpened = {6, "EGLUtils", "in saveProgram() FILENAME fopen error"};
const LogLine outOfMemory = {6, "EGLUtils", "in createProgram() malloc fail"};

class ProgramBuilderTest : public GLTest {
  protected:
    ProgramBuilderTest() {
        char name[] = "/tmp/tidalume-XXXXXX";
        folder = mkdtemp(name);
        std::snprintf(GlobalProperty::ROOT_DIR, sizeof(GlobalProperty::ROOT_DIR), "%s/", folder.c_str());
    }

    void TearDown() override {
        std::filesystem::remove_all(folder);
        EXPECT_EQ(liveObjects(), 0U) << "GL objects leaked";
        GLTest::TearDown();
    }

    std::filesystem::path file() const { return folder / "Program.dat"; }

    std::string content() const {
        std::ifstream stream(file(), std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    void setContent(const std::string& bytes) const { std::ofstream(file(), std::ios::binary) << bytes; }

    /// Builds through the cache, checks that a usable program came out, and returns the log.
    std::vector<LogLine> build() {
        const GLuint program = createProgram(vertexSource, fragmentSource, "Program");
        GLint linked = 0;
        glGetProgramiv(program, GL_LINK_STATUS, &linked);
        EXPECT_EQ(linked, GL_TRUE);
        GLint length = 0;
        glGetProgramiv(program, GL_PROGRAM_BINARY_LENGTH, &length);
        binaryLength = static_cast<size_t>(length);
        glDeleteProgram(program);
        return withoutGLErrors(log.take());
    }

    /// A rejected binary of a foreign format may raise a GL error too, as the driver pleases.
    static std::vector<LogLine> withoutGLErrors(std::vector<LogLine> lines) {
        const auto isGLError = [](const LogLine& line) { return line.message.find("after gl") == 0; };
        lines.erase(std::remove_if(lines.begin(), lines.end(), isGLError), lines.end());
        return lines;
    }

    std::filesystem::path folder;
    size_t binaryLength = 0;
};

TEST_F(ProgramBuilderTest, ReportsWhatTheCompilerAndTheLinkerSay) {
    const struct {
        const char *vertex, *fragment, *firstLine, *detail;
    } failures[] = {
        {"void main() { vertex }", fragmentSource, "Could not compile shader 35633:\n", "error"},
        {vertexSource, "#version 300 es\nvoid main() { fragment }", "Could not compile shader 35632:\n", "error"},
        {vertexSource, unlinkable, "Could not link program:\n", "absent"},
    };
    for (const auto& failure : failures) {
        EXPECT_EQ(createProgram(failure.vertex, failure.fragment), 0U);
        const std::vector<LogLine> lines = log.take();
        ASSERT_EQ(lines.size(), 1U);
        EXPECT_EQ(lines[0].tag, "EGLUtils");
        EXPECT_EQ(lines[0].priority, 6);
        EXPECT_THAT(lines[0].message, AllOf(StartsWith(failure.firstLine), HasSubstr(failure.detail)));

        glRecorder().faults.infoLogIsEmpty = true;
        EXPECT_EQ(createProgram(failure.vertex, failure.fragment), 0U);
        EXPECT_THAT(log.take(), IsEmpty()) << "an empty log is not printed";
        glRecorder().faults.infoLogIsEmpty = false;

        failingMalloc(0);
        EXPECT_EQ(createProgram(failure.vertex, failure.fragment), 0U);
        EXPECT_TRUE(failingMalloc(-1));
        EXPECT_THAT(log.take(), IsEmpty()) << "no memory for the log";
    }
}

/// What is called without a cache file, with one that the driver rejects, and with one that it accepts.
TEST_F(ProgramBuilderTest, CallsTheDriverInOrder) {
    const std::string textBuild = "glCreateShader vertex; glShaderSource; glCompileShader; glGetShaderiv 0x8b81; "
                                  "glCreateShader fragment; glShaderSource; glCompileShader; glGetShaderiv 0x8b81; "
                                  "glCreateProgram; glAttachShader; checkGLError glAttachShader; glAttachShader; "
                                  "checkGLError glAttachShader; glLinkProgram; glDeleteShader; glDeleteShader; "
                                  "glGetProgramiv 0x8b82; ";
    const std::string save = "glGetProgramiv 0x8741; checkGLError glGetProgramiv; glGetProgramBinary; "
                             "checkGLError glGetProgramBinary; ";
    const auto calls = [](const char* cacheName) {
        std::string text;
        GLuint program = 0;
        for (const std::string& call :
             glRecorder().record([&] { program = createProgram(vertexSource, fragmentSource, cacheName); }))
            text += (call.find("glDeleteProgram") == 0 ? "glDeleteProgram" : call) + "; ";
        glDeleteProgram(program);
        return text;
    };
    EXPECT_EQ(calls(nullptr), textBuild);
    EXPECT_TRUE(std::filesystem::is_empty(folder)) << "without a name no file is touched";
    EXPECT_EQ(calls("Program"), textBuild + save);

    const std::string load = "glCreateProgram; glProgramBinary 0x8740 " + std::to_string(content().size()) +
                             "; checkGLError glProgramBinary; glGetProgramiv 0x8b82; ";
    EXPECT_EQ(calls("Program"), load + "glDeleteProgram; " + textBuild + save);
    EXPECT_THAT(withoutGLErrors(log.take()), ElementsAre(rejected));
    glRecorder().faults.acceptsProgramBinaries = true;
    EXPECT_EQ(calls("Program"), load);
}

TEST_F(ProgramBuilderTest, SavesTheBinaryAndLoadsItWhereTheDriverAcceptsIt) {
    EXPECT_THAT(build(), IsEmpty());
    EXPECT_EQ(content().size(), binaryLength);
    EXPECT_GT(binaryLength, 0U);

    const auto written = std::filesystem::last_write_time(file());
    glRecorder().faults.acceptsProgramBinaries = true;
    EXPECT_THAT(build(), IsEmpty());
    EXPECT_EQ(std::filesystem::last_write_time(file()), written) << "an accepted file is not written again";
}

TEST_F(ProgramBuilderTest, BuildsFromTextWhenTheFileIsOfNoUse) {
    build();
    const std::string binary = content();
    const std::string useless[] = {binary, "", binary.substr(0, binary.size() / 2), binary.substr(1),
                                   std::string(5000, '\xA7')};
    for (const std::string& bytes : useless) {
        setContent(bytes);
        EXPECT_THAT(build(), ElementsAre(rejected));
        EXPECT_EQ(content().size(), binaryLength) << "the file is usable again";
    }
}

TEST_F(ProgramBuilderTest, APathThatCannotBeAFileCostsOnlyTheCache) {
    std::filesystem::create_directory(file());
    EXPECT_THAT(build(), ElementsAre(notOpened)) << "a folder";
    for (const mode_t kind : {S_IFIFO, S_IFSOCK}) {
        std::filesystem::remove(file());
        ASSERT_EQ(mknod(file().c_str(), kind | 0600, 0), 0);
        EXPECT_THAT(build(), ElementsAre(notOpened)) << "a pipe or a socket, which must not block: " << kind;
    }
    std::snprintf(GlobalProperty::ROOT_DIR, sizeof(GlobalProperty::ROOT_DIR), "%s/absent/", folder.c_str());
    EXPECT_THAT(build(), ElementsAre(notOpened)) << "a folder that is not there";
    std::memset(GlobalProperty::ROOT_DIR, 'x', sizeof(GlobalProperty::ROOT_DIR) - 1);
    EXPECT_THAT(build(), ElementsAre(notOpened)) << "a name that is too long";
}

TEST_F(ProgramBuilderTest, AFullDiskCostsOnlyTheCache) {
    std::filesystem::create_symlink("/dev/full", file());
    EXPECT_THAT(build(), ElementsAre(rejected)) << "read as an empty file, written without effect";
    const GLuint program = createProgram(vertexSource, fragmentSource);
    EXPECT_EQ(saveProgram(program, strdup(file().c_str()), nullptr), 0U);
    EXPECT_EQ(saveProgram(program, strdup((folder / "Other.dat").c_str()), nullptr), program);
    glDeleteProgram(program);
}

TEST_F(ProgramBuilderTest, AFailedBuildIsNotSaved) {
    EXPECT_EQ(createProgram(vertexSource, unlinkable, "Program"), 0U);
    EXPECT_FALSE(std::filesystem::exists(file()));
    log.take();
}

/// The time is logged when the last program was among those built, from the first one that was.
TEST_F(ProgramBuilderTest, LogsTheTimeOfTheProgramsThatWereMissing) {
    GlobalProperty::DEBUG_LOG = true;
    GLuint ids[2] = {};
    const tidalume::ProgramTable table = {
        "Effect",
        {{&ids[0], "First", "first", vertexSource, fragmentSource, {}, {}},
         {&ids[1], "Last", "last", vertexSource, fragmentSource, {}, {}}},
    };
    for (const auto& [first, last] : {std::pair(0U, 0U), {0U, 7U}, {7U, 0U}, {7U, 7U}}) {
        ids[0] = first;
        ids[1] = last;
        const auto start = std::chrono::steady_clock::now();
        tidalume::buildPrograms(table);
        const std::chrono::duration<double, std::milli> whole = std::chrono::steady_clock::now() - start;
        EXPECT_EQ(glRecorder().live["program"].size(), size_t{first == 0} + size_t{last == 0});
        const std::vector<LogLine> lines = log.take();
        ASSERT_EQ(lines.size(), size_t{last == 0}) << first << " " << last;
        if (last == 0) {
            EXPECT_EQ(lines[0].tag, "Effect");
            const double logged = std::stod(lines[0].message.substr(std::string("Effect Shader Init : ").size()));
            EXPECT_LE(logged, whole.count());
            EXPECT_GT(logged, 0.1 * whole.count());
        }
        for (const GLuint id : ids)
            if (id != 7) glDeleteProgram(id);
    }
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
        EXPECT_EQ(withoutGLErrors(log.take()), lines) << "allocation " << allocation;
        glDeleteProgram(program);
    }
    char* joined = appendString("ab", "cde");
    EXPECT_EQ(std::string(joined, 6), std::string("abcde\0", 6));
    std::free(joined);
}

} // namespace
