#include "tests/support/GLRecorder.h"

#include <algorithm>
#include <cstdio>
#include <dlfcn.h>
#include <regex>
#include <sstream>
#include <utility>

namespace {

/// The driver's own function of this name.
template <typename Function>
Function* real(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

/// Enums that make a sequence readable; all others are printed in hexadecimal.
const std::map<GLenum, const char*> enumNames = {
    {GL_TEXTURE_2D, "TEXTURE_2D"},
    {GL_FRAMEBUFFER, "FRAMEBUFFER"},
    {GL_ARRAY_BUFFER, "ARRAY_BUFFER"},
    {GL_BLEND, "BLEND"},
    {GL_DEPTH_TEST, "DEPTH_TEST"},
    {GL_TEXTURE0, "TEXTURE0"},
    {GL_TEXTURE1, "TEXTURE1"},
    {GL_TEXTURE2, "TEXTURE2"},
    {GL_COLOR_ATTACHMENT0, "COLOR_ATTACHMENT0"},
    {GL_COLOR_BUFFER_BIT, "COLOR_BUFFER_BIT"},
    {GL_FUNC_ADD, "FUNC_ADD"},
    {GL_SRC_ALPHA, "SRC_ALPHA"},
    {GL_ONE_MINUS_SRC_ALPHA, "ONE_MINUS_SRC_ALPHA"},
    {GL_SRC_COLOR, "SRC_COLOR"},
    {GL_DST_COLOR, "DST_COLOR"},
    {GL_TEXTURE_MIN_FILTER, "TEXTURE_MIN_FILTER"},
    {GL_TEXTURE_MAG_FILTER, "TEXTURE_MAG_FILTER"},
    {GL_TEXTURE_WRAP_S, "TEXTURE_WRAP_S"},
    {GL_TEXTURE_WRAP_T, "TEXTURE_WRAP_T"},
    {GL_LINEAR, "LINEAR"},
    {GL_CLAMP_TO_EDGE, "CLAMP_TO_EDGE"},
    {GL_MIRRORED_REPEAT, "MIRRORED_REPEAT"},
    {GL_R16F, "R16F"},
    {GL_RG16F, "RG16F"},
    {GL_RGB16F, "RGB16F"},
    {GL_RGBA16F, "RGBA16F"},
    {GL_RED, "RED"},
    {GL_RG, "RG"},
    {GL_RGB, "RGB"},
    {GL_RGBA, "RGBA"},
    {GL_HALF_FLOAT, "HALF_FLOAT"},
    {GL_FLOAT, "FLOAT"},
    {GL_UNSIGNED_SHORT, "UNSIGNED_SHORT"},
    {GL_MAX_TEXTURE_SIZE, "MAX_TEXTURE_SIZE"},
    {GL_TRIANGLE_STRIP, "TRIANGLE_STRIP"},
    {GL_TRIANGLES, "TRIANGLES"},
};

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

std::string floats(const GLfloat* values, int count) {
    std::ostringstream stream;
    for (int i = 0; i < count; ++i)
        stream << (i ? " " : "") << values[i];
    return stream.str();
}

bool givesZero(const char* function) {
    return glRecorder().faults.givesZero.count(function) != 0;
}

void generate(const char* function, const char* kind, GLsizei n, GLuint* names) {
    if (givesZero(function)) {
        for (GLsizei i = 0; i < n; ++i)
            names[i] = 0;
    } else {
        real<void(GLsizei, GLuint*)>(function)(n, names);
    }
    for (GLsizei i = 0; i < n; ++i) {
        if (names[i]) glRecorder().live[kind].insert(names[i]);
    }
    glRecorder().call(function, text(n));
}

void destroy(const char* function, const char* kind, GLsizei n, const GLuint* names) {
    for (GLsizei i = 0; i < n; ++i)
        glRecorder().live[kind].erase(names[i]);
    std::ostringstream list;
    list << n;
    for (GLsizei i = 0; i < n; ++i)
        list << " " << names[i];
    glRecorder().call(function, list.str());
    real<void(GLsizei, const GLuint*)>(function)(n, names);
}

/// The info log of an injected failure.
constexpr char refusal[] = "refused";

/// Turns what the driver says about a shader or program into a failure, or its info log into none.
void refuse(bool fails, GLenum parameter, GLenum status, GLint* value) {
    if (fails && parameter == status) *value = GL_FALSE;
    if (parameter != GL_INFO_LOG_LENGTH) return;
    if (fails) *value = sizeof(refusal);
    if (glRecorder().faults.infoLogIsEmpty) *value = 0;
}

/// The shader for a driver whose points are single pixels.
std::string withSinglePixelPoints(const std::string& source) {
    return std::regex_replace(source, std::regex("gl_PointSize = ([^;]*);"), "gl_PointSize = min($1, 1.0);");
}

/// Describes an attribute array, and remembers array 0.
std::string array(GLuint index, GLint size, GLenum type, GLboolean normalized, GLsizei stride, const void* pointer) {
    if (index == 0) {
        glRecorder().array0 = static_cast<const float*>(pointer);
        glRecorder().stride0 = stride / static_cast<GLsizei>(sizeof(float));
    }
    return text(glRecorder().attribute(index), size, name(type), static_cast<int>(normalized), stride);
}

/// Describes a draw, and keeps its points.
std::string drawing(GLenum mode, GLint first, GLsizei count) {
    GLRecorder& recorder = glRecorder();
    if (mode != GL_POINTS) return text(name(mode), first, count);
    recorder.points.insert(recorder.points.end(), recorder.array0, recorder.array0 + count * recorder.stride0);
    return text("POINTS", first, count);
}

} // namespace

GLRecorder& glRecorder() {
    static GLRecorder recorder;
    return recorder;
}

void GLRecorder::start() {
    mCalls.clear();
    recording = true;
}

GLRecorder::Calls GLRecorder::stop() {
    recording = false;
    return std::exchange(mCalls, {});
}

GLRecorder::Calls GLRecorder::record(const std::function<void()>& action) {
    start();
    action();
    return stop();
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
    if (recording && insideCheck == 0) mCalls.push_back(arguments.empty() ? name : std::string(name) + " " + arguments);
}

std::string GLRecorder::uniform(GLint location) const {
    const auto program = uniforms.find(currentProgram);
    if (program == uniforms.end() || program->second.count(location) == 0) return text(location);
    return program->second.at(location);
}

std::string GLRecorder::attribute(GLuint location) const {
    const auto program = attributes.find(currentProgram);
    const auto key = static_cast<GLint>(location);
    if (program == attributes.end() || program->second.count(key) == 0) return text(location);
    return program->second.at(key);
}

bool GLRecorder::refusesTarget() const {
    const auto texture = textureOfFramebuffer.find(boundFramebuffer);
    if (texture == textureOfFramebuffer.end()) return false;
    const auto format = formatOfTexture.find(texture->second);
    return format != formatOfTexture.end() && faults.notRenderable.count(format->second) != 0;
}

bool GLRecorder::refusesDrawing() {
    const bool refuses = refusesTarget();
    if (refuses) faults.pendingErrors.push_back(GL_INVALID_FRAMEBUFFER_OPERATION);
    return refuses;
}

// The linker sends the library's calls of checkGLError through here (--wrap), so that labels stand in the sequence.
extern "C" {
void __real__Z12checkGLErrorPKc(const char* op);
void __wrap__Z12checkGLErrorPKc(const char* op) {
    glRecorder().call("checkGLError", op);
    ++glRecorder().insideCheck;
    __real__Z12checkGLErrorPKc(op);
    --glRecorder().insideCheck;
}

/// An entry point that is written down and passed on: parameters, the arguments to pass, and the text to write.
#define PASS_ON(function, parameters, arguments, description)                                                          \
    void function parameters {                                                                                         \
        glRecorder().call(#function, description);                                                                     \
        real<void parameters>(#function) arguments;                                                                    \
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
PASS_ON(glDisableVertexAttribArray, (GLuint index), (index), glRecorder().attribute(index))
PASS_ON(glEnable, (GLenum capability), (capability), name(capability))
PASS_ON(glEnableVertexAttribArray, (GLuint index), (index), glRecorder().attribute(index))
PASS_ON(glFlush, (), (), "")
PASS_ON(glGetProgramBinary, (GLuint program, GLsizei size, GLsizei* length, GLenum* format, void* binary),
        (program, size, length, format, binary), "")
PASS_ON(glLinkProgram, (GLuint program), (program), "")
PASS_ON(glTexParameteri, (GLenum target, GLenum parameter, GLint value), (target, parameter, value),
        text(name(target), name(parameter), name(static_cast<GLenum>(value))))
PASS_ON(glUniform1f, (GLint location, GLfloat v), (location, v), text(glRecorder().uniform(location), v))
PASS_ON(glUniform1i, (GLint location, GLint v), (location, v), text(glRecorder().uniform(location), v))
PASS_ON(glUniform2f, (GLint location, GLfloat x, GLfloat y), (location, x, y),
        text(glRecorder().uniform(location), x, y))
PASS_ON(glUniform2fv, (GLint location, GLsizei count, const GLfloat* v), (location, count, v),
        text(glRecorder().uniform(location), floats(v, 2 * count)))
PASS_ON(glUniform3fv, (GLint location, GLsizei count, const GLfloat* v), (location, count, v),
        text(glRecorder().uniform(location), floats(v, 3 * count)))
PASS_ON(glUniform4fv, (GLint location, GLsizei count, const GLfloat* v), (location, count, v),
        text(glRecorder().uniform(location), floats(v, 4 * count)))
PASS_ON(glUniformMatrix4fv, (GLint location, GLsizei count, GLboolean transpose, const GLfloat* v),
        (location, count, transpose, v), text(glRecorder().uniform(location), count, transpose ? "transposed" : ""))
PASS_ON(glVertexAttribPointer,
        (GLuint index, GLint size, GLenum type, GLboolean normalized, GLsizei stride, const void* pointer),
        (index, size, type, normalized, stride, pointer), array(index, size, type, normalized, stride, pointer))
PASS_ON(glViewport, (GLint x, GLint y, GLsizei width, GLsizei height), (x, y, width, height), text(x, y, width, height))

void glBindFramebuffer(GLenum target, GLuint framebuffer) {
    glRecorder().boundFramebuffer = framebuffer;
    glRecorder().call("glBindFramebuffer", text(name(target), framebuffer));
    real<void(GLenum, GLuint)>("glBindFramebuffer")(target, framebuffer);
}

void glClear(GLbitfield mask) {
    glRecorder().call("glClear", name(mask));
    if (!glRecorder().refusesDrawing()) real<void(GLbitfield)>("glClear")(mask);
}

void glDrawArrays(GLenum mode, GLint first, GLsizei count) {
    glRecorder().call("glDrawArrays", drawing(mode, first, count));
    if (!glRecorder().refusesDrawing()) real<void(GLenum, GLint, GLsizei)>("glDrawArrays")(mode, first, count);
}

void glDrawElements(GLenum mode, GLsizei count, GLenum type, const void* indices) {
    glRecorder().call("glDrawElements", text(name(mode), count, name(type)));
    if (glRecorder().refusesDrawing()) return;
    real<void(GLenum, GLsizei, GLenum, const void*)>("glDrawElements")(mode, count, type, indices);
}

void glGenTextures(GLsizei n, GLuint* names) {
    generate("glGenTextures", "texture", n, names);
}
void glGenFramebuffers(GLsizei n, GLuint* names) {
    generate("glGenFramebuffers", "framebuffer", n, names);
}
void glDeleteTextures(GLsizei n, const GLuint* names) {
    destroy("glDeleteTextures", "texture", n, names);
}
void glDeleteFramebuffers(GLsizei n, const GLuint* names) {
    destroy("glDeleteFramebuffers", "framebuffer", n, names);
}

GLuint glCreateShader(GLenum type) {
    glRecorder().call("glCreateShader", type == GL_VERTEX_SHADER ? "vertex" : "fragment");
    const GLuint shader = givesZero("glCreateShader") ? 0 : real<GLuint(GLenum)>("glCreateShader")(type);
    if (shader) glRecorder().live["shader"].insert(shader);
    glRecorder().typeOfShader[shader] = type;
    return shader;
}

void glShaderSource(GLuint shader, GLsizei count, const GLchar* const* sources, const GLint* lengths) {
    glRecorder().shaderTexts.emplace_back(glRecorder().typeOfShader[shader], sources[0]);
    glRecorder().call("glShaderSource", "");
    const std::string singlePixels = withSinglePixelPoints(sources[0]);
    const GLchar* limited = singlePixels.c_str();
    real<void(GLuint, GLsizei, const GLchar* const*, const GLint*)>("glShaderSource")(
        shader, count, glRecorder().faults.pointsAreSinglePixels ? &limited : sources, lengths);
}

void glDeleteShader(GLuint shader) {
    glRecorder().live["shader"].erase(shader);
    glRecorder().call("glDeleteShader", "");
    real<void(GLuint)>("glDeleteShader")(shader);
}

GLuint glCreateProgram() {
    glRecorder().call("glCreateProgram", "");
    const GLuint program = givesZero("glCreateProgram") ? 0 : real<GLuint()>("glCreateProgram")();
    if (program) {
        glRecorder().live["program"].insert(program);
        glRecorder().orderOfProgram[program] = glRecorder().counts["glCreateProgram"];
    }
    return program;
}

void glDeleteProgram(GLuint program) {
    glRecorder().live["program"].erase(program);
    glRecorder().call("glDeleteProgram", text(program));
    real<void(GLuint)>("glDeleteProgram")(program);
}

void glUseProgram(GLuint program) {
    glRecorder().currentProgram = program;
    glRecorder().call("glUseProgram", text(program ? glRecorder().orderOfProgram[program] : 0));
    real<void(GLuint)>("glUseProgram")(program);
}

GLint glGetUniformLocation(GLuint program, const GLchar* name) {
    const GLint location = real<GLint(GLuint, const GLchar*)>("glGetUniformLocation")(program, name);
    glRecorder().uniforms[program][location] = name;
    glRecorder().call("glGetUniformLocation", name);
    return location;
}

GLint glGetAttribLocation(GLuint program, const GLchar* name) {
    const GLint location = real<GLint(GLuint, const GLchar*)>("glGetAttribLocation")(program, name);
    glRecorder().attributes[program][location] = name;
    glRecorder().call("glGetAttribLocation", name);
    return location;
}

void glBindTexture(GLenum target, GLuint texture) {
    glRecorder().boundTexture = texture;
    glRecorder().call("glBindTexture", text(name(target), texture));
    real<void(GLenum, GLuint)>("glBindTexture")(target, texture);
}

void glTexImage2D(GLenum target, GLint level, GLint internalFormat, GLsizei width, GLsizei height, GLint border,
                  GLenum format, GLenum type, const void* data) {
    glRecorder().formatOfTexture[glRecorder().boundTexture] = internalFormat;
    glRecorder().call("glTexImage2D", text(name(static_cast<GLenum>(internalFormat)), width, height, name(format),
                                           name(type), data ? "data" : "none"));
    real<void(GLenum, GLint, GLint, GLsizei, GLsizei, GLint, GLenum, GLenum, const void*)>("glTexImage2D")(
        target, level, internalFormat, width, height, border, format, type, data);
}

void glFramebufferTexture2D(GLenum target, GLenum attachment, GLenum textarget, GLuint texture, GLint level) {
    glRecorder().textureOfFramebuffer[glRecorder().boundFramebuffer] = texture;
    glRecorder().call("glFramebufferTexture2D", text(texture));
    real<void(GLenum, GLenum, GLenum, GLuint, GLint)>("glFramebufferTexture2D")(target, attachment, textarget, texture,
                                                                                level);
}

GLenum glCheckFramebufferStatus(GLenum target) {
    glRecorder().call("glCheckFramebufferStatus", "");
    if (glRecorder().refusesTarget()) return GL_FRAMEBUFFER_INCOMPLETE_ATTACHMENT;
    return real<GLenum(GLenum)>("glCheckFramebufferStatus")(target);
}

void glGetIntegerv(GLenum parameter, GLint* value) {
    glRecorder().call("glGetIntegerv", name(parameter));
    real<void(GLenum, GLint*)>("glGetIntegerv")(parameter, value);
}

void glGetShaderiv(GLuint shader, GLenum parameter, GLint* value) {
    glRecorder().call("glGetShaderiv", name(parameter));
    real<void(GLuint, GLenum, GLint*)>("glGetShaderiv")(shader, parameter, value);
    refuse(glRecorder().faults.compileFails, parameter, GL_COMPILE_STATUS, value);
}

void glGetProgramiv(GLuint program, GLenum parameter, GLint* value) {
    glRecorder().call("glGetProgramiv", name(parameter));
    real<void(GLuint, GLenum, GLint*)>("glGetProgramiv")(program, parameter, value);
    refuse(glRecorder().faults.linkFails, parameter, GL_LINK_STATUS, value);
}

void glGetShaderInfoLog(GLuint shader, GLsizei size, GLsizei* length, GLchar* log) {
    glRecorder().call("glGetShaderInfoLog", "");
    real<void(GLuint, GLsizei, GLsizei*, GLchar*)>("glGetShaderInfoLog")(shader, size, length, log);
    if (glRecorder().faults.compileFails) std::snprintf(log, static_cast<size_t>(size), "%s", refusal);
}

void glGetProgramInfoLog(GLuint program, GLsizei size, GLsizei* length, GLchar* log) {
    glRecorder().call("glGetProgramInfoLog", "");
    real<void(GLuint, GLsizei, GLsizei*, GLchar*)>("glGetProgramInfoLog")(program, size, length, log);
    if (glRecorder().faults.linkFails) std::snprintf(log, static_cast<size_t>(size), "%s", refusal);
}

void glProgramBinary(GLuint program, GLenum format, const void* binary, GLsizei length) {
    glRecorder().call("glProgramBinary", text(name(format), length));
    if (glRecorder().faults.acceptsProgramBinaries) {
        GLint formats[8] = {};
        real<void(GLenum, GLint*)>("glGetIntegerv")(GL_PROGRAM_BINARY_FORMATS, formats);
        format = static_cast<GLenum>(formats[0]);
    }
    real<void(GLuint, GLenum, const void*, GLsizei)>("glProgramBinary")(program, format, binary, length);
}

GLenum glGetError() {
    std::vector<GLenum>& pending = glRecorder().faults.pendingErrors;
    glRecorder().call("glGetError", "");
    if (pending.empty()) return real<GLenum()>("glGetError")();
    const GLenum error = pending.front();
    pending.erase(pending.begin());
    return error;
}

} // extern "C"
