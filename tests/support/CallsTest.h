#pragma once

#include "tests/support/GLTest.h"

#include <regex>
#include <sstream>

/// A test of the GL calls that operations make, with short forms for what recurs:
///
///     radius 10                  sets a uniform (by a call of another type it would be an error)
///     ?radius, ?radius 10        looks a uniform or an attribute up; and sets it
///     [label]                    checkGLError
///     R16F 97 61 mTexture        an empty half-float texture and its label
///     glFramebufferTexture2D 1   its colour texture
///     WRAP_S CLAMP_TO_EDGE       a texture parameter
///     target 1 97 61             viewport and framebuffer
///     unit 0 texture 7           makes a unit active and binds a texture to it
///     Pointer vertices 3 0       an attribute's floats per vertex and stride
///     Enable, Disable vertices   its array
///     quad                       all of these around a draw of four vertices
class CallsTest : public GLTest {
  protected:
    static constexpr std::pair<const char*, const char*> forms[] = {
        {"(^|\n)glUniform\\w+ ", "$1"},
        {"glGet\\w+Location ", "?"},
        {"\\?(\\w+)\n\\1 ", "?$1 "},
        {"checkGLError (.*)", "[$1]"},
        {"glTexImage2D (\\w+ \\d+ \\d+) \\w+ HALF_FLOAT none\n\\[glTexImage2D (.*)\\]", "$1 $2"},
        {"glTexParameteri TEXTURE_2D TEXTURE_", ""},
        {"glFramebufferTexture2D FRAMEBUFFER 0x8ce0 TEXTURE_2D (\\d+) 0", "glFramebufferTexture2D $1"},
        {"glViewport 0 0 (\\w+ \\w+)\nglBindFramebuffer FRAMEBUFFER (\\w+)", "target $2 $1"},
        {"glActiveTexture TEXTURE(.)\nglBindTexture TEXTURE_2D", "unit $1 texture"},
        {"(^|\n)glVertexAttribPointer (\\w+ \\d) FLOAT 0", "$1Pointer $2"},
        {"(^|\n)gl(Enable|Disable)VertexAttribArray", "$1$2"},
        {"Pointer vertices 3 0\nEnable vertices\nglDrawArrays TRIANGLE_STRIP 0 4\nDisable vertices", "quad"}};

    /// @param expected  the calls, separated by semicolons or line ends
    /// @param counting  a pattern of the calls that count
    static void expectCalls(const std::function<void()>& action, const std::string& expected,
                            const std::string& counting = "") {
        std::istringstream calls(glRecorder().record(action));
        std::string counted;
        for (std::string call; std::getline(calls, call);)
            if (std::regex_search(call, std::regex(counting))) counted += call + "\n";
        for (const auto& [whole, brief] : forms)
            counted = std::regex_replace(counted, std::regex(whole), brief);
        const std::regex separator("\\s*[;\n][;\\s]*");
        EXPECT_EQ("\n" + counted, std::regex_replace("\n" + expected + "\n", separator, "\n"));
    }
};
