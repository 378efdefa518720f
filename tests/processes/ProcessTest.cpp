// Each test draws in child processes, so that this one never has a GL context that they would inherit.

#include "effects/vector/VectorGraphicRenderer.h"
#include "effects/water/ShallowWater.h"
#include "foundation/GlobalProperty.h"
#include "headless/HeadlessContext.h"
#include "headless/Pixels.h"
#include "tests/support/LogCapture.h"

#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace tidalume::headless;

constexpr int extent = 40;
constexpr int notPossible = 77;

/// Whether the driver loads binaries; Mesa does, but of another format than the one that the cache asks for.
bool loadsBinaries = false;
int loaded = 0;

} // namespace

/// Stands before the driver's own.
extern "C" void glProgramBinary(GLuint program, GLenum format, const void* binary, GLsizei length) {
    static const auto real = reinterpret_cast<decltype(&glProgramBinary)>(dlsym(RTLD_NEXT, "glProgramBinary"));
    GLint mesaFormat = 0;
    glGetIntegerv(GL_PROGRAM_BINARY_FORMATS, &mesaFormat);
    real(program, loadsBinaries ? static_cast<GLenum>(mesaFormat) : format, binary, length);
    GLint linked = 0;
    glGetProgramiv(program, GL_LINK_STATUS, &linked);
    loaded += linked;
}

namespace {

/// Builds the five programs of the class and draws with two.
std::vector<float> picture() {
    VectorGraphicRenderer graphics;
    graphics.init();
    graphics.setScreenSize(extent, extent);
    float blue[] = {0.1F, 0.2F, 0.9F, 1};
    float green[] = {0.1F, 0.9F, 0.3F, 1};
    graphics.renderRadialGradient(20, 20, 5, blue, 25, green);
    graphics.renderCircle(10, 10, 8, green);
    return readFramebuffer(extent, extent).rgba;
}

/// Draws through the cache, loading what is there in every second round, and compares with a picture without it.
void drawInRounds(int rounds) {
    const LogCapture log;
    const HeadlessContext context(extent, extent);
    const std::vector<float> expected = picture();
    GlobalProperty::BINARY_SHADER = true;
    for (int round = 0; round < rounds; ++round) {
        loadsBinaries = round % 2 == 1;
        ASSERT_EQ(picture(), expected) << "in round " << round;
    }
}

/// Runs a body in a process of its own, which ends with status 0 where no expectation of the body fails.
pid_t start(const std::function<void()>& body) noexcept {
    const pid_t child = fork();
    if (child != 0) return child;
    body();
    _exit(testing::Test::HasFailure() ? 1 : 0);
}

/// How a process ended: the status, or minus the signal.
int statusOf(pid_t child) {
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

class Processes : public testing::Test {
  protected:
    Processes() {
        char name[] = "/tmp/tidalume-XXXXXX";
        folder = mkdtemp(name);
        std::snprintf(GlobalProperty::ROOT_DIR, sizeof(GlobalProperty::ROOT_DIR), "%s/", folder.c_str());
    }
    ~Processes() override { std::filesystem::remove_all(folder); }

    std::filesystem::path folder;
};

TEST_F(Processes, TwoMayBuildIntoOneCacheFolderAtOnce) {
    const auto draw = [] { drawInRounds(60); };
    for (const pid_t child : {start(draw), start(draw)})
        EXPECT_EQ(statusOf(child), 0);

    const auto loadAll = [] {
        const HeadlessContext context(extent, extent);
        GlobalProperty::BINARY_SHADER = true;
        loadsBinaries = true;
        picture();
        EXPECT_EQ(loaded, 5);
    };
    EXPECT_EQ(statusOf(start(loadAll)), 0) << "the next start finds usable files";
}

TEST_F(Processes, AFullDiskCostsOnlyTheCache) {
    const int status = statusOf(start([this] {
        // Mounted in a name space of the child, it ends with the child.
        if (unshare(CLONE_NEWNS) != 0 && unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) _exit(notPossible);
        mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr);
        if (mount("tmpfs", folder.c_str(), "tmpfs", 0, "size=8k") != 0) _exit(notPossible);
        drawInRounds(4);
        EXPECT_EQ(std::filesystem::space(folder).available, 0U);
    }));
    if (status == notPossible) GTEST_SKIP() << "no tmpfs can be mounted here";
    EXPECT_EQ(status, 0);
}

/// A size that the driver allows, in an address space that has no room for it.
TEST_F(Processes, AScreenTooLargeForMemoryIsSurvived) {
    const pid_t child = start([] {
        LogCapture log;
        const HeadlessContext context(extent, extent);
        ShallowWater pond;
        pond.init();
        const auto drop = [&pond] {
            float center[] = {20, 20};
            pond.setScreenSize(extent, extent);
            pond.addDrop(center, 16, 0.5F);
            return readTexture(pond.getTexture(), extent, extent).rgba;
        };
        const std::vector<float> expected = drop();
        const rlimit limit = {2UL << 30, 2UL << 30};
        setrlimit(RLIMIT_AS, &limit);
        pond.setScreenSize(16384, 16384);
        EXPECT_THAT(log.take(),
                    testing::Contains(testing::Field(&LogLine::message, testing::HasSubstr("OUT_OF_MEMORY"))));
        EXPECT_EQ(drop(), expected);
    });
    EXPECT_EQ(statusOf(child), 0);
}

} // namespace
