#pragma once

#include "tests/support/GLTest.h"

#include <algorithm>
#include <regex>
#include <sstream>

/// Compares the GL calls that an operation makes with those expected: see CallsTest::expectCalls.
#define EXPECT_CALLS(operation, ...)                                                                                   \
    expectCalls(                                                                                                       \
        #operation, [&] { operation; }, __VA_ARGS__)

/// A test of the GL calls that operations make, in the recorder's notation.
class CallsTest : public GLTest {
  protected:
    /// @param operation  what makes them, in words
    /// @param expected   the calls, separated by semicolons or line ends
    /// @param beginning  of all calls, only those that begin as this regular expression says
    static void expectCalls(const char* operation, const std::function<void()>& action, const std::string& expected,
                            const std::string& beginning = "") {
        EXPECT_EQ(lines(glRecorder().record(action), beginning), lines(expected))
            << operation << ": its calls and their order are frozen, see docs/compatibility.md";
    }

  private:
    /// One call a line: their differences are shown then.
    static std::string lines(std::string calls, const std::string& beginning = "") {
        std::replace(calls.begin(), calls.end(), ';', '\n');
        std::istringstream rest(calls);
        const std::regex start("^(" + beginning + ")");
        std::string all;
        for (std::string call; std::getline(rest >> std::ws, call);)
            if (std::regex_search(call, start)) all += call + "\n";
        return all;
    }
};
