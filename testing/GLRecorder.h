#pragma once

#include <GLES3/gl3.h>

#include <dlfcn.h>
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
    /// The calls that an action makes, one per line, without pointers and glGetError. Most read as they are written:
    ///
    ///     glBindTexture mTexture         objects by their role, once a label has named it ("glTexImage2D mTexture",
    ///                                    "glFramebufferTexture2D mFBONormal mTexture", "createProgram mProgramDraw");
    ///                                    before by the order in which they were made: "program 2"
    ///     radius = 10                    sets a uniform, by its GLSL name; "= ..." for more than four floats
    ///     ?radius                        looks the location of a uniform or an attribute up
    ///     [glTexImage2D mTexture]        checkGLError
    ///     glVertexAttribPointer vertices 3 FLOAT 0 24    components, type, whether normalised, stride
    ///     glTexImage2D R16F 97 61 RED HALF_FLOAT         "and data" where there is some
    std::string record(const std::function<void()>& action);

    /// What objects are for, by kind ("texture", "framebuffer", "program") and name; labels tell it for most.
    std::map<std::pair<std::string, GLuint>, std::string> roles;

    /// Text of every shader that was handed to the driver since the last reset, in order.
    std::vector<std::pair<GLenum, std::string>> shaderTexts;

    /// How often each entry point was called since the last reset.
    std::map<std::string, int> counts;

    /// Where the driver's functions are looked up, by dlsym.
    void* driver = RTLD_NEXT;

    /// Faults: what the driver answers instead of its own word. Empty: its own word.
    struct Faults {
        /// For these entry points ("glCreateProgram", "glCreateShader", "glGenTextures", "glGenFramebuffers"): gives 0.
        std::set<std::string> givesZero;
        /// In place of these internal formats the driver is given one that no framebuffer is complete with.
        std::set<GLint> notRenderable;
        /// What the driver says its renderer is; null: its own word. On some of those that draw on the processor the
        /// library leaves hints to tile-based GPUs out.
        const char* renderer = nullptr;
        /// Shaders whose text has these words do not compile; by default no text has them.
        const char* cannotCompile = "no words of a shader";
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
    void call(const std::string& name, const std::string& arguments = "");
    void label(const std::string& label);
    void made(const char* kind, GLuint object);
    std::map<std::string, GLuint> current; ///< the object of a kind that is bound or in use
    Locations uniforms;
    Locations attributes;

  private:
    std::string mCalls;
    std::map<std::string, int> mMade; ///< how many objects of a kind
};

GLRecorder& glRecorder();
