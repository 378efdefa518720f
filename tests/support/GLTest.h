#pragma once

#include "foundation/GlobalProperty.h"
#include "headless/HeadlessContext.h"
#include "testing/GLRecorder.h"
#include "tests/support/Files.h"
#include "tests/support/LiveNames.h"
#include "tests/support/LogCapture.h"

#include <algorithm>
#include <cstring>
#include <gmock/gmock.h>
#include <regex>
#include <sstream>

/// Compares the GL calls that an operation makes with those expected: see GLTest::expectCalls.
#define EXPECT_CALLS(operation, ...)                                                                                   \
    expectCalls(                                                                                                       \
        #operation, [&] { operation; }, __VA_ARGS__)

/// A test with a GL context current, the recorder reset, the log captured and the settings at their defaults. Fails
/// afterwards where a GL error is pending, a line was left in the log that the test did not take, a GL object lives, or
/// a file is open.
class GLTest : public testing::Test {
  protected:
    static constexpr int width = 97;
    static constexpr int height = 61;

    GLTest() : context(width, height) {
        glClear(GL_COLOR_BUFFER_BIT); // a new framebuffer 0 holds anything
        glRecorder().reset();
        GlobalProperty::DEBUG_LOG = false;
        GlobalProperty::BINARY_SHADER = false;
        GlobalProperty::ROOT_DIR[0] = '\0';
    }

    /// What the test has made is destroyed by now, but the context.
    ~GLTest() override {
        glRecorder().faults = {};
        EXPECT_EQ(liveObjects(), 0) << "GL objects leaked";
        EXPECT_EQ(openFiles(), mOpenFiles) << "a file was left open";
        EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
        EXPECT_EQ(log.take(), std::vector<std::string>{});
    }

    /// To the bit, a NaN too; else says where they begin to differ.
    static testing::AssertionResult same(const float* made, const float* expected, size_t count) {
        for (size_t i = 0; i < count; ++i)
            if (std::memcmp(made + i, expected + i, sizeof(float)) != 0)
                return testing::AssertionFailure() << "at " << i << ": " << made[i] << " instead of " << expected[i];
        return testing::AssertionSuccess();
    }
    static testing::AssertionResult same(const std::vector<float>& made, const std::vector<float>& expected) {
        if (made.size() == expected.size()) return same(made.data(), expected.data(), made.size());
        return testing::AssertionFailure() << made.size() << " values instead of " << expected.size();
    }

    /// In the recorder's notation.
    /// @param operation  what makes the calls, in words
    /// @param expected   the calls, separated by semicolons or line ends
    /// @param beginning  of all calls, only those that begin as this regular expression says
    static void expectCalls(const char* operation, const std::function<void()>& action, const std::string& expected,
                            const std::string& beginning = "") {
        EXPECT_EQ(lines(glRecorder().record(action), beginning), lines(expected))
            << operation << ": its calls and their order are frozen, see docs/compatibility.md";
    }

    tidalume::headless::HeadlessContext context;
    LogCapture log;

  private:
    const std::vector<std::string> mOpenFiles = openFiles();

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
