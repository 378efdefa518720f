#pragma once

#include "tests/support/GLTest.h"

#include <sstream>

/// A test of the GL calls that operations make, in the recorder's notation.
class CallsTest : public GLTest {
  protected:
    /// @param expected  the calls, separated by semicolons or line ends
    static void expectCalls(const std::function<void()>& action, const std::string& expected) {
        expectSame(lines(glRecorder().record(action)), lines(expected));
    }

    /// Of the calls, only those that begin so.
    static void expectCallsThatBegin(const std::string& beginning, const std::function<void()>& action,
                                     const std::string& expected) {
        std::vector<std::string> calls;
        for (const std::string& call : lines(glRecorder().record(action)))
            if (call.rfind(beginning, 0) == 0) calls.push_back(call);
        expectSame(calls, lines(expected));
    }

  private:
    static std::vector<std::string> lines(const std::string& text) {
        std::vector<std::string> all;
        std::istringstream rest(text);
        for (std::string line; std::getline(rest, line);) {
            std::istringstream calls(line);
            for (std::string call; std::getline(calls >> std::ws, call, ';');)
                if (!call.empty()) all.push_back(call);
        }
        return all;
    }

    static void expectSame(const std::vector<std::string>& made, const std::vector<std::string>& expected) {
        size_t i = 0;
        while (i < made.size() && i < expected.size() && made[i] == expected[i])
            ++i;
        if (i == made.size() && i == expected.size()) return;
        const auto around = [&](const std::vector<std::string>& calls) {
            std::string some;
            for (size_t j = i < 3 ? 0 : i - 3; j < std::min(i + 4, calls.size()); ++j)
                some += (j == i ? "  > " : "    ") + calls[j] + "\n";
            return some.empty() ? "    nothing\n" : some;
        };
        ADD_FAILURE() << "call " << i + 1 << " is another; calls and their order are frozen: docs/compatibility.md\n"
                      << "made:\n"
                      << around(made) << "expected:\n"
                      << around(expected);
    }
};
