#pragma once

#include <GLES3/gl3.h>

#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

/// Stands in front of the GL entry points that the library calls (and of checkGLError), passes every call on to the
/// driver, and can write it down, count what lives, or make it fail. One for the process; see GLTest, which resets it.
class GLRecorder {
  public:
    using Calls = std::vector<std::string>;

    /// The calls that an action makes. A call reads "glUniform1f radius 12" (uniforms and attributes by their GLSL
    /// names), "glUseProgram 1" (programs by the order in which they were created), "glBindTexture TEXTURE_2D 3",
    /// "checkGLError glTexImage2D mTexture"; pointers and matrices are left out; the glGetError calls of checkGLError
    /// too.
    Calls record(const std::function<void()>& action);

    /// The same as text, one call per line; only calls with one of these words in them where there are words.
    std::string sequence(const std::function<void()>& action, const std::vector<const char*>& words = {});

    /// GL objects that live now, by kind: "texture", "framebuffer", "program", "shader". Counted from the last reset.
    std::map<std::string, std::set<GLuint>> live;

    /// Text of every shader that was handed to the driver since the last reset, in order.
    std::vector<std::pair<GLenum, std::string>> shaderTexts;

    /// How often each entry point was called since the last reset.
    std::map<std::string, int> counts;

    /// What attribute array 0 held at each glDrawArrays of points since the last reset, one draw after the other.
    std::vector<float> points;

    /// Faults: what the driver answers instead of its own word. Empty: its own word.
    struct Faults {
        /// For these entry points ("glCreateProgram", "glCreateShader", "glGenTextures", "glGenFramebuffers"): gives 0.
        std::set<std::string> givesZero;
        /// Internal formats that no framebuffer is complete with; drawing into one is an error.
        std::set<GLint> notRenderable;
        bool compileFails = false;
        bool linkFails = false;
        /// Injected failures of compiler and linker say "refused", or nothing.
        bool infoLogIsEmpty = false;
        /// Accepts program binaries whatever their announced format, as a driver does whose format the cache names.
        bool acceptsProgramBinaries = false;
        /// Errors that glGetError gives before the driver's own, front first.
        std::vector<GLenum> pendingErrors;
    } faults;

    /// Forgets counts, faults, live objects and calls.
    void reset();

    // What follows is for the entry points in GLRecorder.cpp.
    using Locations = std::map<std::pair<GLuint, GLint>, std::string>; ///< names by program and location
    void call(const char* name, const std::string& arguments);
    bool refusesTarget();

    bool insideCheck = false;
    const float* array0 = nullptr;
    GLsizei stride0 = 0;
    GLuint currentProgram = 0;
    GLuint boundTexture = 0;
    GLuint boundFramebuffer = 0;
    Locations uniforms;
    Locations attributes;
    std::map<GLuint, int> orderOfProgram;
    std::map<GLuint, GLenum> typeOfShader;
    std::map<GLuint, GLint> formatOfTexture;
    std::map<GLuint, GLuint> textureOfFramebuffer;

  private:
    bool mRecording = false;
    Calls mCalls;
};

GLRecorder& glRecorder();

/// Calls as tests write them down, separated by semicolons or line ends, in the form of GLRecorder::sequence.
std::string calls(const std::string& text);
