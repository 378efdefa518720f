// Each test draws in child processes, so that this one never has a GL context that they would inherit.

#include "foundation/GlobalProperty.h"
#include "headless/HeadlessContext.h"
#include "tests/support/Effects.h"
#include "tests/support/GLRecorder.h"
#include "tests/support/LogCapture.h"
#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using tidalume::headless::HeadlessContext;

constexpr int notPossible = 77;

const EffectCase& effectCase(const std::string& name) {
    const auto isNamed = [&](const EffectCase& effect) { return effect.name == name; };
    return *std::find_if(effectCases().begin(), effectCases().end(), isNamed);
}

const EffectCase& vectorGraphics = effectCase("VectorGraphicRenderer"); // of five programs, the most
const EffectCase& pond = effectCase("ShallowWater");

/// Draws through the cache, loading what is there in every second round, and compares with a picture without it.
void drawInRounds(int rounds) {
    const LogCapture log;
    const HeadlessContext context(AnyEffect::width, AnyEffect::height);
    const std::vector<float> expected = vectorGraphics.ready()->picture();
    GlobalProperty::BINARY_SHADER = true;
    for (int round = 0; round < rounds; ++round) {
        glRecorder().faults.acceptsProgramBinaries = round % 2 == 1;
        ASSERT_EQ(vectorGraphics.ready()->picture(), expected) << "in round " << round;
    }
}

/// Runs a body in a process of its own, which ends with status 0 where no expectation of the body fails.
pid_t start(const std::function<void()>& body) noexcept {
    const pid_t child = fork();
    if (child != 0) return child;
    body();
    _exit(testing::Test::HasFailure() ? 1 : 0);
}

/// How a process ended: with status 0, another one, or a signal.
int endOf(pid_t child) {
    int end = 0;
    waitpid(child, &end, 0);
    return end;
}

class Processes : public testing::Test {
  protected:
    Processes() { std::strcpy(GlobalProperty::ROOT_DIR, "./"); }

    const TemporaryFolder folder;
};

TEST_F(Processes, TwoMayBuildIntoOneCacheFolderAtOnce) {
    const auto draw = [] { drawInRounds(60); };
    for (const pid_t child : {start(draw), start(draw)})
        EXPECT_EQ(endOf(child), 0);
    const auto loadAll = [] {
        const HeadlessContext context(AnyEffect::width, AnyEffect::height);
        GlobalProperty::BINARY_SHADER = true;
        glRecorder().faults.acceptsProgramBinaries = true;
        vectorGraphics.make()->init();
        EXPECT_EQ(glRecorder().counts["glProgramBinary"], 5);
        EXPECT_EQ(glRecorder().counts["glCompileShader"], 0);
    };
    EXPECT_EQ(endOf(start(loadAll)), 0) << "the next start finds usable files";
}

TEST_F(Processes, AFullDiskCostsOnlyTheCache) {
    const int end = endOf(start([] {
        // Mounted in a name space of the child, it ends with the child.
        if (unshare(CLONE_NEWNS) != 0 && unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) _exit(notPossible);
        mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr);
        if (mount("tmpfs", ".", "tmpfs", 0, "size=8k") != 0) _exit(notPossible);
        std::filesystem::current_path(std::filesystem::current_path()); // into what is mounted now
        drawInRounds(4);
        EXPECT_EQ(std::filesystem::space(".").available, 0U);
    }));
    if (WEXITSTATUS(end) == notPossible) GTEST_SKIP() << "no tmpfs can be mounted here";
    EXPECT_EQ(end, 0);
}

/// A size that the driver allows, in an address space that has no room for it.
TEST_F(Processes, AScreenTooLargeForMemoryIsSurvived) {
    const int end = endOf(start([] {
        LogCapture log;
        const HeadlessContext context(AnyEffect::width, AnyEffect::height);
        const auto effect = pond.ready();
        const std::vector<float> expected = effect->picture();
        const rlimit limit = {2UL << 30, 2UL << 30};
        setrlimit(RLIMIT_AS, &limit);
        effect->setScreenSize(16384, 16384);
        EXPECT_THAT(log.take(), testing::Contains(testing::HasSubstr("OUT_OF_MEMORY")));
        effect->prepare();
        EXPECT_EQ(effect->picture(), expected);
    }));
    EXPECT_EQ(end, 0);
}

} // namespace
