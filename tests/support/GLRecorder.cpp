#include "tests/support/GLRecorder.h"

#include <algorithm>
#include <cstdio>
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

/// The GLSL name of a uniform or attribute of the current program.
std::string nameOf(const GLRecorder::Locations& names, GLint location) {
    const auto found = names.find({recorder.currentProgram, location});
    return found == names.end() ? text(location) : found->second;
}

std::string uniform(GLint location) {
    return nameOf(recorder.uniforms, location);
}

std::string attribute(GLuint location) {
    return nameOf(recorder.attributes, static_cast<GLint>(location));
}

/// Remembers a value that is passed on.
template <typename Value>
Value kept(Value& place, Value value) {
    return place = value;
}

/// Turns what the driver says about a shader or program into a failure, or its info log into none.
constexpr char refusal[] = "refused";
void refuse(bool fails, GLenum parameter, GLenum status, GLint* value) {
    if (fails && parameter == status) *value = GL_FALSE;
    if (parameter != GL_INFO_LOG_LENGTH) return;
    if (fails) *value = sizeof(refusal);
    if (recorder.faults.infoLogIsEmpty) *value = 0;
}

/// Describes an attribute array, and remembers array 0.
std::string array(GLuint index, GLint size, GLenum type, GLboolean normalized, GLsizei stride, const void* pointer) {
    if (index == 0) {
        recorder.array0 = static_cast<const float*>(pointer);
        recorder.stride0 = stride / static_cast<GLsizei>(sizeof(float));
    }
    return text(attribute(index), size, name(type), static_cast<int>(normalized), stride);
}

/// Describes a draw, and keeps its points.
std::string drawing(GLenum mode, GLint first, GLsizei count) {
    if (mode != GL_POINTS) return text(name(mode), first, count);
    recorder.points.insert(recorder.points.end(), recorder.array0, recorder.array0 + count * recorder.stride0);
    return text("POINTS", first, count);
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

GLRecorder::Calls GLRecorder::record(const std::function<void()>& action) {
    mCalls.clear();
    mRecording = true;
    action();
    mRecording = false;
    return std::exchange(mCalls, {});
}

std::string GLRecorder::sequence(const std::function<void()>& action, const std::vector<const char*>& words) {
    std::string lines;
    for (const std::string& call : record(action)) {
        const auto contained = [&](const char* word) { return call.find(word) != std::string::npos; };
        if (words.empty() || std::any_of(words.begin(), words.end(), contained)) lines += call + "\n";
    }
    return calls(lines);
}

std::string calls(const std::string& text) {
    const std::regex call("[^;\\s][^;\n]*");
    std::string lines;
    for (std::sregex_token_iterator next(text.begin(), text.end(), call), end; next != end; ++next)
        lines += next->str().substr(0, next->str().find_last_not_of(' ') + 1) + "\n";
    return lines;
}

void GLRecorder::reset() {
    *this = GLRecorder();
}

void GLRecorder::call(const char* name, const std::string& arguments) {
    ++counts[name];
    if (mRecording && !insideCheck) mCalls.push_back(arguments.empty() ? name : name + (" " + arguments));
}

bool GLRecorder::refusesTarget() {
    return faults.notRenderable.count(formatOfTexture[textureOfFramebuffer[boundFramebuffer]]) != 0;
}

// The linker sends the library's calls of checkGLError through here (--wrap), so that labels stand in the sequence.
extern "C" {
void __real__Z12checkGLErrorPKc(const char* op);
void __wrap__Z12checkGLErrorPKc(const char* op) {
    recorder.call("checkGLError", op);
    recorder.insideCheck = true;
    __real__Z12checkGLErrorPKc(op);
    recorder.insideCheck = false;
}

/// An entry point that is written down and passed on: parameters, the arguments to pass, and the text to write.
#define PASS_ON(function, parameters, arguments, description)                                                          \
    void function parameters {                                                                                         \
        recorder.call(#function, description);                                                                         \
        REAL(function) arguments;                                                                                      \
    }

/// The same for one that is an error where the target is not complete.
#define DRAW(function, parameters, arguments, description)                                                             \
    void function parameters {                                                                                         \
        recorder.call(#function, description);                                                                         \
        if (!recorder.refusesTarget()) return REAL(function) arguments;                                                \
        recorder.faults.pendingErrors.push_back(GL_INVALID_FRAMEBUFFER_OPERATION);                                     \
    }

PASS_ON(glActiveTexture, (GLenum unit), (unit), name(unit))
PASS_ON(glAttachShader, (GLuint program, GLuint shader), (program, shader), "")
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
PASS_ON(glLinkProgram, (GLuint program), (program), "")
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
        (location, count, transpose, v), text(uniform(location), count, transpose ? "transposed" : ""))
PASS_ON(glVertexAttribPointer,
        (GLuint index, GLint size, GLenum type, GLboolean normalized, GLsizei stride, const void* pointer),
        (index, size, type, normalized, stride, pointer), array(index, size, type, normalized, stride, pointer))
PASS_ON(glViewport, (GLint x, GLint y, GLsizei width, GLsizei height), (x, y, width, height), text(x, y, width, height))

PASS_ON(glBindFramebuffer, (GLenum target, GLuint framebuffer), (target, framebuffer),
        text(name(target), kept(recorder.boundFramebuffer, framebuffer)))
PASS_ON(glBindTexture, (GLenum target, GLuint texture), (target, texture),
        text(name(target), kept(recorder.boundTexture, texture)))
PASS_ON(glFramebufferTexture2D, (GLenum target, GLenum attachment, GLenum textarget, GLuint texture, GLint level),
        (target, attachment, textarget, texture, level),
        text(kept(recorder.textureOfFramebuffer[recorder.boundFramebuffer], texture)))
PASS_ON(glTexImage2D,
        (GLenum target, GLint level, GLint internalFormat, GLsizei width, GLsizei height, GLint border, GLenum format,
         GLenum type, const void* data),
        (target, level, internalFormat, width, height, border, format, type, data),
        text(name(static_cast<GLenum>(kept(recorder.formatOfTexture[recorder.boundTexture], internalFormat))), width,
             height, name(format), name(type), data ? "data" : "none"))
PASS_ON(glUseProgram, (GLuint program), (program),
        text(recorder.orderOfProgram[kept(recorder.currentProgram, program)]))
PASS_ON(glDeleteTextures, (GLsizei n, const GLuint* names), (n, names), text(n, deleted("texture", n, names)))
PASS_ON(glDeleteFramebuffers, (GLsizei n, const GLuint* names), (n, names), text(n, deleted("framebuffer", n, names)))
PASS_ON(glDeleteProgram, (GLuint program), (program), deleted("program", 1, &program))
PASS_ON(glGetIntegerv, (GLenum parameter, GLint* value), (parameter, value), name(parameter))
DRAW(glClear, (GLbitfield mask), (mask), name(mask))
DRAW(glDrawArrays, (GLenum mode, GLint first, GLsizei count), (mode, first, count), drawing(mode, first, count))
DRAW(glDrawElements, (GLenum mode, GLsizei count, GLenum type, const void* indices), (mode, count, type, indices),
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

/// What the driver says about a shader or program, or a failure and its info log.
#define SAY(status, infoLog, statusName, fails)                                                                        \
    void status(GLuint object, GLenum parameter, GLint* value) {                                                       \
        recorder.call(#status, name(parameter));                                                                       \
        REAL(status)(object, parameter, value);                                                                        \
        refuse(recorder.faults.fails, parameter, statusName, value);                                                   \
    }                                                                                                                  \
    void infoLog(GLuint object, GLsizei size, GLsizei* length, GLchar* log) {                                          \
        recorder.call(#infoLog, "");                                                                                   \
        REAL(infoLog)(object, size, length, log);                                                                      \
        if (recorder.faults.fails) std::snprintf(log, static_cast<size_t>(size), "%s", refusal);                       \
    }

SAY(glGetShaderiv, glGetShaderInfoLog, GL_COMPILE_STATUS, compileFails)
SAY(glGetProgramiv, glGetProgramInfoLog, GL_LINK_STATUS, linkFails)

void glDeleteShader(GLuint shader) {
    deleted("shader", 1, &shader);
    recorder.call("glDeleteShader", "");
    REAL(glDeleteShader)(shader);
}

GLuint glCreateShader(GLenum type) {
    recorder.call("glCreateShader", type == GL_VERTEX_SHADER ? "vertex" : "fragment");
    GLuint shader = REAL(glCreateShader)(type);
    created("glCreateShader", "shader", 1, &shader);
    recorder.typeOfShader[shader] = type;
    return shader;
}

GLuint glCreateProgram() {
    recorder.call("glCreateProgram", "");
    GLuint program = REAL(glCreateProgram)();
    created("glCreateProgram", "program", 1, &program);
    if (program) recorder.orderOfProgram[program] = recorder.counts["glCreateProgram"];
    return program;
}

void glShaderSource(GLuint shader, GLsizei count, const GLchar* const* sources, const GLint* lengths) {
    recorder.shaderTexts.emplace_back(recorder.typeOfShader[shader], sources[0]);
    recorder.call("glShaderSource", "");
    REAL(glShaderSource)(shader, count, sources, lengths);
}

GLenum glCheckFramebufferStatus(GLenum target) {
    recorder.call("glCheckFramebufferStatus", "");
    if (recorder.refusesTarget()) return GL_FRAMEBUFFER_INCOMPLETE_ATTACHMENT;
    return REAL(glCheckFramebufferStatus)(target);
}

void glProgramBinary(GLuint program, GLenum format, const void* binary, GLsizei length) {
    recorder.call("glProgramBinary", text(name(format), length));
    if (recorder.faults.acceptsProgramBinaries) {
        GLint formats[8] = {};
        REAL(glGetIntegerv)(GL_PROGRAM_BINARY_FORMATS, formats);
        format = static_cast<GLenum>(formats[0]);
    }
    REAL(glProgramBinary)(program, format, binary, length);
}

GLenum glGetError() {
    std::vector<GLenum>& pending = recorder.faults.pendingErrors;
    recorder.call("glGetError", "");
    if (pending.empty()) return REAL(glGetError)();
    const GLenum error = pending.front();
    pending.erase(pending.begin());
    return error;
}

} // extern "C"
