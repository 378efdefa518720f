// Each test draws in child processes, so that this one never has a GL context that they would inherit.

#include "foundation/GlobalProperty.h"
#include "headless/HeadlessContext.h"
#include "testing/Effects.h"
#include "testing/GLRecorder.h"
#include "tests/support/Files.h"
#include "tests/support/LogCapture.h"

#include <algorithm>
#include <cstring>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using tidalume::headless::HeadlessContext;

const EffectCase& pond = *std::find_if(effectCases().begin(), effectCases().end(),
                                       [](const EffectCase& effect) { return effect.name == "ShallowWater"; });

class Processes : public testing::Test {
  protected:
    Processes() { std::strcpy(GlobalProperty::ROOT_DIR, "./"); }

    /// Ends this process, with status 0 where no expectation has failed.
    [[noreturn]] static void end() { _exit(testing::Test::HasFailure() ? 1 : 0); }

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
    const auto drawTwice = [=] {
        const bool isOther = fork() == 0;
        drawInRounds();
        if (isOther) end();
        int other = -1;
        wait(&other);
        EXPECT_EQ(other, 0);
        end();
    };
    EXPECT_EXIT(drawTwice(), testing::ExitedWithCode(0), "");
    const auto startAgain = [] {
        const HeadlessContext context(AnyEffect::width, AnyEffect::height);
        GlobalProperty::BINARY_SHADER = true;
        glRecorder().faults.acceptsProgramBinaries = true;
        pond.make().init();
        EXPECT_EQ(glRecorder().counts["glProgramBinary"], 3);
        EXPECT_EQ(glRecorder().counts["glCompileShader"], 0) << "the next start finds usable files";
        end();
    };
    EXPECT_EXIT(startAgain(), testing::ExitedWithCode(0), "");
}

/// A size that the driver allows, in an address space that has no room for it.
TEST_F(Processes, AScreenTooLargeForMemoryIsSurvived) {
    const auto draw = [] {
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
        end();
    };
    EXPECT_EXIT(draw(), testing::ExitedWithCode(0), "");
}

} // namespace
