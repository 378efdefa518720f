#pragma once

#include "tests/support/GLTest.h"

#include <algorithm>
#include <sstream>

/// A test of the GL calls that operations make, in the recorder's notation.
class CallsTest : public GLTest {
  protected:
    /// @param expected   the calls, separated by semicolons or line ends
    /// @param beginning  of all calls, only those that begin so
    static void expectCalls(const std::function<void()>& action, const std::string& expected,
                            const std::string& beginning = "") {
        EXPECT_EQ(lines(glRecorder().record(action), beginning), lines(expected))
            << "calls and their order are frozen: docs/compatibility.md";
    }

  private:
    /// The calls that begin so, one a line: their differences are shown then.
    static std::string lines(std::string calls, const std::string& beginning = "") {
        std::replace(calls.begin(), calls.end(), ';', '\n');
        std::istringstream rest(calls);
        std::string all;
        for (std::string call; std::getline(rest >> std::ws, call);)
            if (call.rfind(beginning, 0) == 0) all += call + "\n";
        return all;
    }
};
