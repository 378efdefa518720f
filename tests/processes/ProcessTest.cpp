// Each test draws in child processes, so that this one never has a GL context that they would inherit.

#include "foundation/GlobalProperty.h"
#include "headless/HeadlessContext.h"
#include "testing/Effects.h"
#include "testing/GLRecorder.h"
#include "tests/support/Files.h"
#include "tests/support/LogCapture.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using tidalume::headless::HeadlessContext;

const EffectCase& pond = *std::find_if(effectCases().begin(), effectCases().end(),
                                       [](const EffectCase& effect) { return effect.name == "ShallowWater"; });

/// Runs a body in processes of its own. They end with status 0 where no expectation of the body fails.
/// @return 0, or how one of them ended otherwise: with a status, or a signal; -1 where one could not begin
int endOf(const std::function<void()>& body, int processes = 1) noexcept { // a child must not leave by an exception
    int end = 0;
    for (int i = 0; i < processes; ++i) {
        const pid_t child = fork();
        if (child < 0) end = -1;
        if (child != 0) continue;
        body();
        _exit(testing::Test::HasFailure() ? 1 : 0);
    }
    for (int one = 0; wait(&one) > 0;)
        if (end == 0) end = one;
    return end;
}

class Processes : public testing::Test {
  protected:
    Processes() { std::strcpy(GlobalProperty::ROOT_DIR, "./"); }

    const WorkingFolder folder;
};

TEST_F(Processes, TwoMayBuildIntoOneCacheFolderAtOnce) {
    const auto drawInRounds = [] {
        const LogCapture log;
        const HeadlessContext context(AnyEffect::width, AnyEffect::height);
        const std::vector<float> expected = pond.make().prepare().picture();
        GlobalProperty::BINARY_SHADER = true;
        for (int round = 0; round < 60; ++round) {
            glRecorder().faults.acceptsProgramBinaries = round % 2 == 1; // then what is there is loaded
            EXPECT_EQ(pond.make().prepare().picture(), expected) << "in round " << round;
        }
    };
    EXPECT_EQ(endOf(drawInRounds, 2), 0);
    const int end = endOf([] {
        const HeadlessContext context(AnyEffect::width, AnyEffect::height);
        GlobalProperty::BINARY_SHADER = true;
        glRecorder().faults.acceptsProgramBinaries = true;
        pond.make().init();
        EXPECT_EQ(glRecorder().counts["glProgramBinary"], 3);
        EXPECT_EQ(glRecorder().counts["glCompileShader"], 0);
    });
    EXPECT_EQ(end, 0) << "the next start finds usable files";
}

/// A size that the driver allows, in an address space that has no room for it.
TEST_F(Processes, AScreenTooLargeForMemoryIsSurvived) {
    const int end = endOf([] {
        LogCapture log;
        const HeadlessContext context(AnyEffect::width, AnyEffect::height);
        const auto effect = pond.make().prepare();
        const std::vector<float> expected = effect.picture();
        const rlimit limit = {2UL << 30, 2UL << 30};
        setrlimit(RLIMIT_AS, &limit);
        effect.setScreenSize(16384, 16384);
        EXPECT_THAT(log.take(), testing::Contains(testing::HasSubstr("OUT_OF_MEMORY")));
        effect.prepare();
        EXPECT_EQ(effect.picture(), expected);
    });
    EXPECT_EQ(end, 0);
}

} // namespace
