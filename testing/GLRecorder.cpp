#include "testing/GLRecorder.h"

#include <algorithm>
#include <cstring>
#include <dlfcn.h>
#include <sstream>
#include <utility>

namespace {

GLRecorder& recorder = glRecorder();
bool lastFormatIsRefused = false; ///< the one that glTexImage2D was given

// clang-format off
#define NAMED(name) {GL_##name, #name}
/// Enums that make a sequence readable; others are printed in hexadecimal. Names of objects have the same type: below
/// 0x100 the number is printed, so that no enum there has a name.
const std::map<GLenum, const char*> enumNames = {
    NAMED(TEXTURE_2D), NAMED(FRAMEBUFFER), NAMED(ARRAY_BUFFER), NAMED(BLEND), NAMED(DEPTH_TEST), NAMED(TEXTURE0),
    NAMED(TEXTURE1), NAMED(TEXTURE2), NAMED(COLOR_BUFFER_BIT), NAMED(FUNC_ADD), NAMED(SRC_ALPHA),
    NAMED(ONE_MINUS_SRC_ALPHA), NAMED(SRC_COLOR), NAMED(DST_COLOR), NAMED(TEXTURE_MIN_FILTER),
    NAMED(TEXTURE_MAG_FILTER), NAMED(TEXTURE_WRAP_S), NAMED(TEXTURE_WRAP_T), NAMED(LINEAR), NAMED(CLAMP_TO_EDGE),
    NAMED(MIRRORED_REPEAT), NAMED(R16F), NAMED(RG16F), NAMED(RGB16F), NAMED(RGBA16F), NAMED(RED), NAMED(RG),
    NAMED(RGB), NAMED(RGBA), NAMED(HALF_FLOAT), NAMED(FLOAT), NAMED(UNSIGNED_SHORT), NAMED(MAX_TEXTURE_SIZE),
    NAMED(VERTEX_SHADER), NAMED(FRAGMENT_SHADER)};
// clang-format on
constexpr const char* modeNames[] = {" POINTS",    " LINES",          " LINE_LOOP",   " LINE_STRIP",
                                     " TRIANGLES", " TRIANGLE_STRIP", " TRIANGLE_FAN"};

/// Arguments, each after a blank; pointers, which differ from run to run, are left out.
template <typename... Arguments>
std::string text(Arguments... arguments) {
    std::ostringstream stream;
    [[maybe_unused]] const auto write = [&](auto value) {
        if constexpr (std::is_pointer_v<decltype(value)>)
            return;
        else if constexpr (!std::is_same_v<decltype(value), GLenum>)
            stream << " " << +value;
        else if (enumNames.count(value))
            stream << " " << enumNames.at(value);
        else
            stream << " " << (value < 0x100 ? std::dec : std::hex) << std::showbase << value << std::dec;
    };
    (write(arguments), ...);
    return stream.str();
}

template <typename Value>
std::string list(const Value* values, int count) {
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text(values[i]);
    return all;
}

std::string object(const char* kind, GLuint name) {
    const auto role = recorder.roles.find({kind, name});
    return " " + (role == recorder.roles.end() ? std::to_string(name) : role->second);
}

std::string objects(const char* kind, const GLuint* names, int count) {
    std::string all;
    for (int i = 0; i < count; ++i)
        all += object(kind, names[i]);
    return all;
}

template <typename... Values>
std::string uniform(GLint location, Values... values) {
    return recorder.uniforms[{recorder.current["program"], location}] + " =" + text(values...);
}

template <typename... Values>
std::string attribute(GLuint location, Values... values) {
    return " " + recorder.attributes[{recorder.current["program"], static_cast<GLint>(location)}] + text(values...);
}

} // namespace

GLRecorder& glRecorder() {
    static GLRecorder recorder;
    return recorder;
}

std::string GLRecorder::record(const std::function<void()>& action) {
    mCalls.clear();
    action();
    return std::exchange(mCalls, {});
}

void GLRecorder::call(const std::string& name, const std::string& arguments) {
    ++counts[name];
    mCalls += name + arguments + "\n";
}

/// The first label of an object that was just made tells its role.
void GLRecorder::label(const std::string& label) {
    mCalls += "[" + label + "]\n";
    static const std::map<std::string, std::string> kinds = {
        {"glTexImage2D", "texture"}, {"glFramebufferTexture2D", "framebuffer"}, {"createProgram", "program"}};
    std::istringstream words(label);
    std::string call, role;
    words >> call >> role;
    const auto kind = kinds.find(call);
    if (kind == kinds.end()) return;
    std::string& known = roles[{kind->second, current[kind->second]}];
    if (known.rfind(kind->second, 0) == 0) known = role;
}

void GLRecorder::made(const char* kind, GLuint object) {
    if (object != 0) roles[{kind, object}] = std::string(kind) + " " + std::to_string(++mMade[kind]);
}

// The linker sends the library's calls of checkGLError, whose labels stand in the sequence, through here (--wrap).
extern "C" {
void __real__Z12checkGLErrorPKc(const char* op);
void __wrap__Z12checkGLErrorPKc(const char* op) {
    recorder.label(op);
    __real__Z12checkGLErrorPKc(op);
}

/// The driver's own function of this name.
#define DRIVER(function) reinterpret_cast<decltype(&function)>(dlsym(recorder.driver, #function))

/// An entry point that is written down and passed on.
#define PASS_ON_AS(result, function, parameters, arguments, description)                                               \
    result function parameters {                                                                                       \
        recorder.call(#function, description);                                                                         \
        return DRIVER(function) arguments;                                                                             \
    }
#define PASS_ON(result, function, parameters, arguments)                                                               \
    PASS_ON_AS(result, function, parameters, arguments, text arguments)
#define NAMES(function, parameters, arguments, kind)                                                                   \
    void function parameters {                                                                                         \
        if (std::string(#function).find("glBind") == 0) recorder.current[#kind] = name;                                \
        recorder.call(#function, object(#kind, name));                                                                 \
        DRIVER(function) arguments;                                                                                    \
    }
#define UNIFORM(function, parameters, arguments)                                                                       \
    void function parameters {                                                                                         \
        recorder.call(uniform arguments);                                                                              \
        DRIVER(function) arguments;                                                                                    \
    }
#define UNIFORM_DATA(function, parameters, floats, arguments)                                                          \
    void function parameters {                                                                                         \
        recorder.call(uniform(location), (floats) > 4 ? " ..." : list(data, floats));                                  \
        DRIVER(function) arguments;                                                                                    \
    }
#define ATTRIBUTE(function, parameters, arguments)                                                                     \
    PASS_ON_AS(void, function, parameters, arguments, attribute arguments)
#include "testing/DrawingCalls.inc"

PASS_ON_AS(void, glCompileShader, (GLuint shader), (shader), "")
PASS_ON(void, glGetIntegerv, (GLenum parameter, GLint* value), (parameter, value))
PASS_ON_AS(void, glGetProgramBinary, (GLuint program, GLsizei size, GLsizei* length, GLenum* format, void* binary),
           (program, size, length, format, binary), "")
PASS_ON(GLboolean, glIsEnabled, (GLenum capability), (capability))
PASS_ON_AS(void, glLinkProgram, (GLuint program), (program), "")
PASS_ON_AS(void, glUseProgram, (GLuint program), (program), object("program", recorder.current["program"] = program))
PASS_ON_AS(void, glDeleteTextures, (GLsizei n, const GLuint* names), (n, names), objects("texture", names, n))
PASS_ON_AS(void, glDeleteFramebuffers, (GLsizei n, const GLuint* names), (n, names), objects("framebuffer", names, n))
PASS_ON_AS(void, glDeleteProgram, (GLuint program), (program), object("program", program))
PASS_ON_AS(void, glDeleteShader, (GLuint shader), (shader), "")
PASS_ON_AS(void, glDrawArrays, (GLenum mode, GLint first, GLsizei count), (mode, first, count),
           modeNames[mode] + text(first, count))
PASS_ON_AS(void, glDrawElements, (GLenum mode, GLsizei count, GLenum type, const void* indices),
           (mode, count, type, indices), modeNames[mode] + text(count, type))
PASS_ON_AS(void, glTexParameteri, (GLenum target, GLenum parameter, GLint value), (target, parameter, value),
           text(parameter, GLenum(value)))

#define GENERATE(function, kind)                                                                                       \
    void function(GLsizei n, GLuint* names) {                                                                          \
        recorder.call(#function, text(n));                                                                             \
        if (recorder.faults.givesZero.count(#function))                                                                \
            std::fill_n(names, n, 0);                                                                                  \
        else                                                                                                           \
            DRIVER(function)(n, names);                                                                                \
        for (GLsizei i = 0; i < n; ++i)                                                                                \
            recorder.made(kind, names[i]);                                                                             \
    }

GENERATE(glGenTextures, "texture")
GENERATE(glGenFramebuffers, "framebuffer")

/// A look-up of a location, whose name is remembered.
#define LOOK_UP(function, names)                                                                                       \
    GLint function(GLuint program, const GLchar* name) {                                                               \
        recorder.call("?" + std::string(name));                                                                        \
        const GLint location = DRIVER(function)(program, name);                                                        \
        recorder.names[{program, location}] = name;                                                                    \
        return location;                                                                                               \
    }

LOOK_UP(glGetUniformLocation, uniforms)
LOOK_UP(glGetAttribLocation, attributes)

/// What the driver says about a shader or program; with an empty info log where it is to have none.
#define SAY(function)                                                                                                  \
    void function(GLuint object, GLenum parameter, GLint* value) {                                                     \
        recorder.call(#function, text(parameter));                                                                     \
        DRIVER(function)(object, parameter, value);                                                                    \
        if (recorder.faults.infoLogIsEmpty && parameter == GL_INFO_LOG_LENGTH) *value = 0;                             \
    }

SAY(glGetShaderiv)
SAY(glGetProgramiv)

GLuint glCreateShader(GLenum type) {
    recorder.call("glCreateShader", text(type));
    return recorder.faults.givesZero.count("glCreateShader") ? 0 : DRIVER(glCreateShader)(type);
}

void glShaderSource(GLuint shader, GLsizei count, const GLchar* const* sources, const GLint* lengths) {
    GLint type = 0;
    DRIVER(glGetShaderiv)(shader, GL_SHADER_TYPE, &type);
    recorder.shaderTexts.emplace_back(type, sources[0]);
    recorder.call("glShaderSource", "");
    const GLchar* given = std::strstr(sources[0], recorder.faults.cannotCompile) ? "no shader" : sources[0];
    DRIVER(glShaderSource)(shader, count, &given, lengths);
}

GLuint glCreateProgram() {
    recorder.call("glCreateProgram", "");
    if (recorder.faults.givesZero.count("glCreateProgram")) return 0;
    const GLuint program = DRIVER(glCreateProgram)();
    recorder.made("program", recorder.current["program"] = program);
    return program;
}

void glAttachShader(GLuint program, GLuint shader) {
    recorder.call("glAttachShader", "");
    if (!recorder.faults.linkFails) DRIVER(glAttachShader)(program, shader);
}

void glTexImage2D(GLenum target, GLint level, GLint internalFormat, GLsizei width, GLsizei height, GLint border,
                  GLenum format, GLenum type, const void* data) {
    recorder.call("glTexImage2D",
                  text(GLenum(internalFormat), width, height, format, type) + (data ? " and data" : ""));
    lastFormatIsRefused = recorder.faults.notRenderable.count(internalFormat) > 0;
    if (lastFormatIsRefused)
        return DRIVER(glTexImage2D)(target, level, GL_RGB9_E5, width, height, border, GL_RGB, GL_HALF_FLOAT, nullptr);
    DRIVER(glTexImage2D)(target, level, internalFormat, width, height, border, format, type, data);
}

/// Where the format was given last, as drivers that know it to be none say it; else in the words of this one.
GLenum glCheckFramebufferStatus(GLenum target) {
    recorder.call("glCheckFramebufferStatus");
    const GLenum status = DRIVER(glCheckFramebufferStatus)(target);
    return lastFormatIsRefused ? GL_FRAMEBUFFER_UNSUPPORTED : status;
}

void glProgramBinary(GLuint program, GLenum format, const void* binary, GLsizei length) {
    constexpr GLenum formatOfMesa = 0x875F;
    recorder.call("glProgramBinary", text(format, length));
    DRIVER(glProgramBinary)
    (program, recorder.faults.acceptsProgramBinaries ? formatOfMesa : format, binary, length);
}

const GLubyte* glGetString(GLenum name) {
    const char* renderer = name == GL_RENDERER ? recorder.faults.renderer : nullptr;
    return renderer ? reinterpret_cast<const GLubyte*>(renderer) : DRIVER(glGetString)(name);
}

GLenum glGetError() {
    std::vector<GLenum>& pending = recorder.faults.pendingErrors;
    if (pending.empty()) return DRIVER(glGetError)();
    const GLenum error = pending.front();
    pending.erase(pending.begin());
    return error;
}

} // extern "C"
