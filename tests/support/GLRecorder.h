#pragma once

#include <GLES3/gl3.h>

#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

/// Stands in front of the GL entry points that the library calls (and of checkGLError), passes every call on to the
/// driver, and can write it down, count it, or make it fail. One for the process; see GLTest, which resets it.
class GLRecorder {
  public:
    /// The calls that an action makes, one per line. A call reads "glUniform1f radius 12" (uniforms and attributes by
    /// their GLSL names), "glUseProgram 1" (programs by the order in which they were created), "glBindTexture
    /// TEXTURE_2D 3", "checkGLError glTexImage2D mTexture"; pointers and glGetError are left out; of
    /// uniforms of more than four floats only the count is shown.
    std::string record(const std::function<void()>& action);

    /// Text of every shader that was handed to the driver since the last reset, in order.
    std::vector<std::pair<GLenum, std::string>> shaderTexts;

    /// How often each entry point was called since the last reset.
    std::map<std::string, int> counts;

    /// Faults: what the driver answers instead of its own word. Empty: its own word.
    struct Faults {
        /// For these entry points ("glCreateProgram", "glCreateShader", "glGenTextures", "glGenFramebuffers"): gives 0.
        std::set<std::string> givesZero;
        /// In place of these internal formats the driver is given one that no framebuffer is complete with.
        std::set<GLint> notRenderable;
        /// Point sprites have one pixel, whatever size the shader asks for.
        bool pointsAreSinglePixels = false;
        bool compileFails = false;
        bool linkFails = false;
        bool infoLogIsEmpty = false;
        /// Accepts program binaries whatever their announced format, as a driver does whose format the cache names.
        bool acceptsProgramBinaries = false;
        /// Errors that glGetError gives before the driver's own, front first.
        std::vector<GLenum> pendingErrors;
    } faults;

    /// Forgets everything.
    void reset() { *this = GLRecorder(); }

    // For the entry points in GLRecorder.cpp.
    using Locations = std::map<std::pair<GLuint, GLint>, std::string>; ///< names by program and location
    void call(const char* name, const std::string& arguments);
    GLuint currentProgram = 0;
    Locations uniforms;
    Locations attributes;
    std::map<GLuint, int> orderOfProgram;

  private:
    std::string mCalls;
};

GLRecorder& glRecorder();
