// Each test draws in child processes, so that this one never has a GL context that they would inherit.

#include "effects/vector/VectorGraphicRenderer.h"
#include "effects/water/ShallowWater.h"
#include "foundation/GlobalProperty.h"
#include "headless/HeadlessContext.h"
#include "headless/Pixels.h"
#include "tests/support/LogCapture.h"

#include <algorithm>
#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace tidalume::headless;

constexpr int extent = 40;

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

/// Builds the five programs of the class and draws with each.
std::vector<float> picture() {
    VectorGraphicRenderer graphics;
    graphics.init();
    graphics.setScreenSize(extent, extent);
    GLuint bitmap = makeTexture(GL_RGBA8, 2, 1, std::vector<std::uint8_t>{255, 90, 0, 255, 40, 0, 200, 255});
    float blue[] = {0.1F, 0.2F, 0.9F, 1.0F};
    float green[] = {0.1F, 0.9F, 0.3F, 1.0F};
    graphics.renderRadialGradient(20, 20, 5, blue, 25, green);
    graphics.renderCircle(10, 10, 8, green);
    graphics.renderBitmapCircle(30, 10, 16, blue, bitmap);
    graphics.renderBitmapRectangle(0, 20, 20, 18, bitmap);
    graphics.renderAlphaMaskedBitmapRectangle(20, 20, 18, 18, static_cast<int>(bitmap), static_cast<int>(bitmap));
    glDeleteTextures(1, &bitmap);
    return readFramebuffer(extent, extent).rgba;
}

/// Runs a body in a process of its own, which ends with what it returns; an exception aborts it.
template <typename Body>
pid_t start(Body body) noexcept {
    const pid_t child = fork();
    if (child == 0) _exit(body());
    return child;
}

/// How a process ended: the status, or minus the signal.
int statusOf(pid_t child) {
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

constexpr int right = 0;
constexpr int wrongPicture = 1;
constexpr int notLoaded = 2;
constexpr int notRefused = 3;
constexpr int notPossible = 77;

class Processes : public testing::Test {
  protected:
    Processes() {
        char name[] = "/tmp/tidalume-XXXXXX";
        folder = mkdtemp(name);
        std::snprintf(GlobalProperty::ROOT_DIR, sizeof(GlobalProperty::ROOT_DIR), "%s/", folder.c_str());
    }
    ~Processes() override { std::filesystem::remove_all(folder); }

    std::map<std::string, std::string> files() const {
        std::map<std::string, std::string> contents;
        for (const auto& file : std::filesystem::directory_iterator(folder)) {
            std::ifstream stream(file.path(), std::ios::binary);
            contents[file.path().filename()] = {std::istreambuf_iterator<char>(stream), {}};
        }
        return contents;
    }

    /// Draws through the cache, loading what is there in every second round, and compares with a picture without it.
    static int drawInRounds(int rounds) {
        const LogCapture log;
        const HeadlessContext context(extent, extent);
        const std::vector<float> expected = picture();
        GlobalProperty::BINARY_SHADER = true;
        for (int round = 0; round < rounds; ++round) {
            loadsBinaries = round % 2 == 1;
            if (picture() != expected) return wrongPicture;
        }
        return right;
    }

    /// Whether another start finds as many usable files.
    static int load(size_t count) {
        const HeadlessContext context(extent, extent);
        GlobalProperty::BINARY_SHADER = true;
        loadsBinaries = true;
        picture();
        return loaded == static_cast<int>(count) ? right : notLoaded;
    }

    std::filesystem::path folder;
};

TEST_F(Processes, TwoMayBuildIntoOneCacheFolderAtOnce) {
    ASSERT_EQ(statusOf(start([] { return drawInRounds(1); })), right);
    const auto undisturbed = files();
    ASSERT_EQ(undisturbed.size(), 5U);
    for (const auto& [name, content] : undisturbed)
        std::filesystem::remove(folder / name);

    const pid_t children[] = {start([] { return drawInRounds(60); }), start([] { return drawInRounds(60); })};
    for (const pid_t child : children)
        EXPECT_EQ(statusOf(child), right);
    EXPECT_EQ(files(), undisturbed);
    EXPECT_EQ(statusOf(start([&] { return load(undisturbed.size()); })), right);
}

TEST_F(Processes, AFullDiskCostsOnlyTheCache) {
    const int status = statusOf(start([this] {
        // Mounted in a name space of the child, it ends with the child.
        if (unshare(CLONE_NEWNS) != 0 && unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) return notPossible;
        mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr);
        if (mount("tmpfs", folder.c_str(), "tmpfs", 0, "size=8k") != 0) return notPossible;
        const int drawn = drawInRounds(4);
        return std::filesystem::space(folder).available == 0 ? drawn : notPossible;
    }));
    if (status == notPossible) GTEST_SKIP() << "no tmpfs can be mounted here";
    EXPECT_EQ(status, right);
}

std::vector<float> pondWithDrop(ShallowWater& pond) {
    float center[] = {20.0F, 20.0F};
    pond.setScreenSize(extent, extent);
    pond.addDrop(center, 16.0F, 0.5F);
    return readTexture(pond.getTexture(), extent, extent).rgba;
}

/// A size that the driver allows, in an address space that has no room for it.
TEST_F(Processes, AScreenTooLargeForMemoryIsSurvived) {
    const pid_t child = start([] {
        LogCapture log;
        const HeadlessContext context(extent, extent);
        ShallowWater pond;
        pond.init();
        const std::vector<float> expected = pondWithDrop(pond);
        const rlimit limit = {2UL << 30, 2UL << 30};
        setrlimit(RLIMIT_AS, &limit);
        pond.setScreenSize(16384, 16384);
        const std::vector<LogLine> lines = log.take();
        const bool refused = std::any_of(lines.begin(), lines.end(), [](const LogLine& line) {
            return line.message.find("GL_OUT_OF_MEMORY") != std::string::npos;
        });
        if (!refused) return notRefused;
        return pondWithDrop(pond) == expected ? right : wrongPicture;
    });
    EXPECT_EQ(statusOf(child), right);
}

} // namespace
