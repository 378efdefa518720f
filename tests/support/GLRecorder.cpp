#include "tests/support/GLRecorder.h"

#include <dlfcn.h>
#include <regex>
#include <sstream>
#include <utility>

namespace {

/// The driver's own function.
#define REAL(function) reinterpret_cast<decltype(&function)>(dlsym(RTLD_NEXT, #function))

GLRecorder& recorder = glRecorder();

// clang-format off
#define NAMED(name) {GL_##name, #name}
/// Enums that make a sequence readable; all others are printed in hexadecimal.
const std::map<GLenum, const char*> enumNames = {
    NAMED(TEXTURE_2D), NAMED(FRAMEBUFFER), NAMED(ARRAY_BUFFER), NAMED(BLEND), NAMED(DEPTH_TEST), NAMED(TEXTURE0),
    NAMED(TEXTURE1), NAMED(TEXTURE2), NAMED(COLOR_BUFFER_BIT), NAMED(FUNC_ADD), NAMED(SRC_ALPHA),
    NAMED(ONE_MINUS_SRC_ALPHA), NAMED(SRC_COLOR), NAMED(DST_COLOR), NAMED(TEXTURE_MIN_FILTER),
    NAMED(TEXTURE_MAG_FILTER), NAMED(TEXTURE_WRAP_S), NAMED(TEXTURE_WRAP_T), NAMED(LINEAR), NAMED(CLAMP_TO_EDGE),
    NAMED(MIRRORED_REPEAT), NAMED(R16F), NAMED(RG16F), NAMED(RGB16F), NAMED(RGBA16F), NAMED(RED), NAMED(RG),
    NAMED(RGB), NAMED(RGBA), NAMED(HALF_FLOAT), NAMED(FLOAT), NAMED(UNSIGNED_SHORT), NAMED(MAX_TEXTURE_SIZE),
    NAMED(TRIANGLE_STRIP), NAMED(TRIANGLES)};
// clang-format on

std::string name(GLenum value) {
    const auto found = enumNames.find(value);
    if (found != enumNames.end()) return found->second;
    std::ostringstream text;
    text << "0x" << std::hex << value;
    return text.str();
}

/// Arguments one after another with blanks between.
template <typename... Arguments>
std::string text(const Arguments&... arguments) {
    std::ostringstream stream;
    const char* separator = "";
    ((stream << separator << arguments, separator = " "), ...);
    return stream.str();
}

template <typename Value>
std::string list(const Value* values, int count) {
    std::string all;
    for (int i = 0; i < count; ++i)
        all += (i ? " " : "") + text(values[i]);
    return all;
}

/// GLSL names of the current program.
std::string uniform(GLint location) {
    return recorder.uniforms[{recorder.currentProgram, location}];
}

std::string attribute(GLuint location) {
    return recorder.attributes[{recorder.currentProgram, static_cast<GLint>(location)}];
}

/// Notes new objects, or none where the driver is to give none.
void created(const char* function, const char* kind, GLsizei n, GLuint* names) {
    for (GLsizei i = 0; i < n; ++i) {
        if (recorder.faults.givesZero.count(function)) names[i] = 0;
        if (names[i]) recorder.live[kind].insert(names[i]);
    }
}

/// Notes objects that are deleted, and lists them.
std::string deleted(const char* kind, GLsizei n, const GLuint* names) {
    for (GLsizei i = 0; i < n; ++i)
        recorder.live[kind].erase(names[i]);
    return list(names, n);
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

void GLRecorder::call(const char* name, const std::string& arguments) {
    ++counts[name];
    mCalls += (arguments.empty() ? name : name + (" " + arguments)) + "\n";
}

// The linker sends the library's calls of checkGLError through here (--wrap), so that labels stand in the sequence.
extern "C" {
void __real__Z12checkGLErrorPKc(const char* op);
void __wrap__Z12checkGLErrorPKc(const char* op) {
    recorder.call("checkGLError", op);
    __real__Z12checkGLErrorPKc(op);
}

/// An entry point that is written down and passed on: parameters, the arguments to pass, and the text to write.
#define PASS_ON(function, parameters, arguments, description)                                                          \
    void function parameters {                                                                                         \
        recorder.call(#function, description);                                                                         \
        REAL(function) arguments;                                                                                      \
    }

PASS_ON(glActiveTexture, (GLenum unit), (unit), name(unit))
PASS_ON(glBindBuffer, (GLenum target, GLuint buffer), (target, buffer), text(name(target), buffer))
PASS_ON(glBlendColor, (GLfloat r, GLfloat g, GLfloat b, GLfloat a), (r, g, b, a), text(r, g, b, a))
PASS_ON(glBlendEquation, (GLenum mode), (mode), name(mode))
PASS_ON(glBlendFunc, (GLenum source, GLenum target), (source, target), text(name(source), name(target)))
PASS_ON(glBlendFuncSeparate, (GLenum srcRGB, GLenum dstRGB, GLenum srcAlpha, GLenum dstAlpha),
        (srcRGB, dstRGB, srcAlpha, dstAlpha), text(name(srcRGB), name(dstRGB), name(srcAlpha), name(dstAlpha)))
PASS_ON(glClearColor, (GLfloat r, GLfloat g, GLfloat b, GLfloat a), (r, g, b, a), text(r, g, b, a))
PASS_ON(glCompileShader, (GLuint shader), (shader), "")
PASS_ON(glDisable, (GLenum capability), (capability), name(capability))
PASS_ON(glDisableVertexAttribArray, (GLuint index), (index), attribute(index))
PASS_ON(glEnable, (GLenum capability), (capability), name(capability))
PASS_ON(glEnableVertexAttribArray, (GLuint index), (index), attribute(index))
PASS_ON(glFlush, (), (), "")
PASS_ON(glGetProgramBinary, (GLuint program, GLsizei size, GLsizei* length, GLenum* format, void* binary),
        (program, size, length, format, binary), "")
PASS_ON(glTexParameteri, (GLenum target, GLenum parameter, GLint value), (target, parameter, value),
        text(name(target), name(parameter), name(static_cast<GLenum>(value))))
PASS_ON(glUniform1f, (GLint location, GLfloat v), (location, v), text(uniform(location), v))
PASS_ON(glUniform1i, (GLint location, GLint v), (location, v), text(uniform(location), v))
PASS_ON(glUniform2f, (GLint location, GLfloat x, GLfloat y), (location, x, y), text(uniform(location), x, y))
PASS_ON(glUniform2fv, (GLint location, GLsizei count, const GLfloat* v), (location, count, v),
        text(uniform(location), list(v, 2 * count)))
PASS_ON(glUniform3fv, (GLint location, GLsizei count, const GLfloat* v), (location, count, v),
        text(uniform(location), list(v, 3 * count)))
PASS_ON(glUniform4fv, (GLint location, GLsizei count, const GLfloat* v), (location, count, v),
        text(uniform(location), list(v, 4 * count)))
PASS_ON(glUniformMatrix4fv, (GLint location, GLsizei count, GLboolean transpose, const GLfloat* v),
        (location, count, transpose, v), text(uniform(location), count))
PASS_ON(glVertexAttribPointer,
        (GLuint index, GLint size, GLenum type, GLboolean normalized, GLsizei stride, const void* pointer),
        (index, size, type, normalized, stride, pointer),
        text(attribute(index), size, name(type), static_cast<int>(normalized), stride))
PASS_ON(glViewport, (GLint x, GLint y, GLsizei width, GLsizei height), (x, y, width, height), text(x, y, width, height))

PASS_ON(glBindFramebuffer, (GLenum target, GLuint framebuffer), (target, framebuffer), text(name(target), framebuffer))
PASS_ON(glBindTexture, (GLenum target, GLuint texture), (target, texture), text(name(target), texture))
PASS_ON(glFramebufferTexture2D, (GLenum target, GLenum attachment, GLenum textarget, GLuint texture, GLint level),
        (target, attachment, textarget, texture, level), text(texture))
PASS_ON(glUseProgram, (GLuint program), (program), text(recorder.orderOfProgram[recorder.currentProgram = program]))
PASS_ON(glDeleteTextures, (GLsizei n, const GLuint* names), (n, names), text(n, deleted("texture", n, names)))
PASS_ON(glDeleteFramebuffers, (GLsizei n, const GLuint* names), (n, names), text(n, deleted("framebuffer", n, names)))
PASS_ON(glDeleteProgram, (GLuint program), (program),
        (deleted("program", 1, &program), text(recorder.orderOfProgram[program])))
PASS_ON(glDeleteShader, (GLuint shader), (shader), (deleted("shader", 1, &shader), ""))
PASS_ON(glLinkProgram, (GLuint program), (program), "")
PASS_ON(glGetIntegerv, (GLenum parameter, GLint* value), (parameter, value), name(parameter))
PASS_ON(glClear, (GLbitfield mask), (mask), name(mask))
PASS_ON(glDrawArrays, (GLenum mode, GLint first, GLsizei count), (mode, first, count),
        text(mode == GL_POINTS ? "POINTS" : name(mode), first, count))
PASS_ON(glDrawElements, (GLenum mode, GLsizei count, GLenum type, const void* indices), (mode, count, type, indices),
        text(name(mode), count, name(type)))

#define GENERATE(function, kind)                                                                                       \
    void function(GLsizei n, GLuint* names) {                                                                          \
        REAL(function)(n, names);                                                                                      \
        created(#function, kind, n, names);                                                                            \
        recorder.call(#function, text(n));                                                                             \
    }

GENERATE(glGenTextures, "texture")
GENERATE(glGenFramebuffers, "framebuffer")

/// A look-up of a location, whose name is remembered.
#define LOOK_UP(function, names)                                                                                       \
    GLint function(GLuint program, const GLchar* name) {                                                               \
        recorder.call(#function, name);                                                                                \
        const GLint location = REAL(function)(program, name);                                                          \
        recorder.names[{program, location}] = name;                                                                    \
        return location;                                                                                               \
    }

LOOK_UP(glGetUniformLocation, uniforms)
LOOK_UP(glGetAttribLocation, attributes)

/// What the driver says about a shader or program; with an empty info log where it is to have none.
#define SAY(function)                                                                                                  \
    void function(GLuint object, GLenum parameter, GLint* value) {                                                     \
        recorder.call(#function, name(parameter));                                                                     \
        REAL(function)(object, parameter, value);                                                                      \
        if (recorder.faults.infoLogIsEmpty && parameter == GL_INFO_LOG_LENGTH) *value = 0;                             \
    }

SAY(glGetShaderiv)
SAY(glGetProgramiv)
GLuint glCreateShader(GLenum type) {
    recorder.call("glCreateShader", type == GL_VERTEX_SHADER ? "vertex" : "fragment");
    GLuint shader = REAL(glCreateShader)(type);
    created("glCreateShader", "shader", 1, &shader);
    return shader;
}

void glShaderSource(GLuint shader, GLsizei count, const GLchar* const* sources, const GLint* lengths) {
    GLint type = 0;
    REAL(glGetShaderiv)(shader, GL_SHADER_TYPE, &type);
    recorder.shaderTexts.emplace_back(type, sources[0]);
    recorder.call("glShaderSource", "");
    std::string source = recorder.faults.compileFails ? "no shader" : sources[0];
    if (recorder.faults.pointsAreSinglePixels)
        source = std::regex_replace(source, std::regex("gl_PointSize = ([^;]*);"), "gl_PointSize = min($1, 1.0);");
    const GLchar* given = source.c_str();
    REAL(glShaderSource)(shader, count, &given, lengths);
}

GLuint glCreateProgram() {
    recorder.call("glCreateProgram", "");
    GLuint program = REAL(glCreateProgram)();
    created("glCreateProgram", "program", 1, &program);
    if (program) recorder.orderOfProgram[program] = recorder.counts["glCreateProgram"];
    return program;
}

void glAttachShader(GLuint program, GLuint shader) {
    recorder.call("glAttachShader", "");
    if (!recorder.faults.linkFails) REAL(glAttachShader)(program, shader);
}

GLenum glCheckFramebufferStatus(GLenum target) {
    recorder.call("glCheckFramebufferStatus", "");
    return REAL(glCheckFramebufferStatus)(target);
}

void glTexImage2D(GLenum target, GLint level, GLint internalFormat, GLsizei width, GLsizei height, GLint border,
                  GLenum format, GLenum type, const void* data) {
    recorder.call("glTexImage2D", text(name(static_cast<GLenum>(internalFormat)), width, height, name(format),
                                       name(type), data ? "data" : "none"));
    if (recorder.faults.notRenderable.count(internalFormat))
        return REAL(glTexImage2D)(target, level, GL_RGB9_E5, width, height, border, GL_RGB, GL_HALF_FLOAT, nullptr);
    REAL(glTexImage2D)(target, level, internalFormat, width, height, border, format, type, data);
}

void glProgramBinary(GLuint program, GLenum format, const void* binary, GLsizei length) {
    constexpr GLenum formatOfMesa = 0x875F;
    recorder.call("glProgramBinary", text(name(format), length));
    REAL(glProgramBinary)(program, recorder.faults.acceptsProgramBinaries ? formatOfMesa : format, binary, length);
}

GLenum glGetError() {
    std::vector<GLenum>& pending = recorder.faults.pendingErrors;
    if (pending.empty()) return REAL(glGetError)();
    const GLenum error = pending.front();
    pending.erase(pending.begin());
    return error;
}

} // extern "C"
