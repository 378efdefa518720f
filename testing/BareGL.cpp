#include "testing/BareGL.h"

#include <GLES3/gl3.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <unordered_map>
#include <vector>

namespace {

using Names = std::vector<std::string>;

/// What a shader's text declares.
struct Interface {
    Names uniforms;
    Names attributes;
};

Interface parse(GLenum type, const std::string& text) {
    Interface declared;
    std::map<std::string, std::string> defined;
    std::istringstream lines(text);
    for (std::string line, word; std::getline(lines, line);) {
        std::string name = line.substr(line.rfind(' ') + 1, line.find(';') - line.rfind(' ') - 1);
        if (std::istringstream words(line); words >> word && word == "#define" && words >> word) defined[word] = name;
        if (defined.count(name)) name = defined[name];
        const bool isInput = line.rfind("in ", 0) == 0 || line.rfind("layout(location", 0) == 0;
        if (line.rfind("uniform ", 0) == 0) declared.uniforms.push_back(name);
        if (isInput && type == GL_VERTEX_SHADER) declared.attributes.push_back(name);
    }
    return declared;
}

/// Texts stay the same from one context to the next.
const Interface& interfaceOf(GLenum type, const std::string& text) {
    static std::unordered_map<std::string, Interface> known;
    const auto found = known.find(text);
    return found != known.end() ? found->second : known.emplace(text, parse(type, text)).first->second;
}

struct Shader {
    GLenum type;
    const Interface* declared;
};

struct Program {
    Names uniforms;
    Names attributes;
    int shaders;
};

struct Array {
    bool enabled;
    GLint size;
    GLsizei stride;
    const GLubyte* data;
};

constexpr GLuint arrayCount = 16;

struct Context {
    std::set<GLuint> textures;
    std::set<GLuint> framebuffers;
    std::map<GLuint, Shader> shaders;
    std::map<GLuint, Program> programs;
    GLuint lastName = 0;
    GLuint currentProgram = 0;
    GLenum error = GL_NO_ERROR;
    bool isBlending = false;
    Array arrays[arrayCount] = {};
};

Context gl;

void setError(GLenum error) {
    if (gl.error == GL_NO_ERROR) gl.error = error;
}

/// The place of a name, moved by a distance that differs from program to program; -1 where it is none.
GLint location(const Names& names, const char* name, GLint distance, GLint modulus) {
    const auto found = std::find(names.begin(), names.end(), name);
    return found == names.end() ? -1 : static_cast<GLint>((found - names.begin()) + distance) % modulus;
}

GLint attributeLocation(GLuint program, const std::string& name) {
    return location(gl.programs.at(program).attributes, name.c_str(), static_cast<GLint>(3 * program), arrayCount);
}

const Program* programOf(GLuint name) {
    const auto found = gl.programs.find(name);
    if (found == gl.programs.end()) setError(GL_INVALID_VALUE);
    return found == gl.programs.end() ? nullptr : &found->second;
}

void setUniform(GLint location) {
    if (location >= 0 && gl.currentProgram == 0) setError(GL_INVALID_OPERATION);
}

/// Reads the bytes, so that a sanitizer sees those that are not there.
void read(const void* data, std::size_t size) {
    const auto* bytes = static_cast<const volatile GLubyte*>(data);
    for (std::size_t i = 0; i < size; ++i)
        static_cast<void>(bytes[i]);
}

void draw(std::size_t vertices) {
    if (gl.currentProgram == 0 || vertices == 0) return;
    for (const std::string& name : gl.programs.at(gl.currentProgram).attributes) {
        const Array& array = gl.arrays[attributeLocation(gl.currentProgram, name)];
        if (!array.enabled) {
            std::fprintf(stderr, "BareGL: a draw needs the array \"%s\", which is not enabled\n", name.c_str());
            std::abort();
        }
        const std::size_t length = static_cast<std::size_t>(array.size) * sizeof(float);
        const std::size_t stride = array.stride ? static_cast<std::size_t>(array.stride) : length;
        for (std::size_t vertex = 0; vertex < vertices; ++vertex)
            read(array.data + vertex * stride, length);
    }
}

void setEnabled(GLuint index, bool enabled) {
    if (index >= arrayCount) return setError(GL_INVALID_VALUE);
    gl.arrays[index].enabled = enabled;
}

} // namespace

extern "C" {

void bareGLReset() {
    gl = {};
}

std::size_t bareGLLiveObjects() {
    return gl.textures.size() + gl.framebuffers.size() + gl.shaders.size() + gl.programs.size();
}

GLenum glGetError() {
    const GLenum error = gl.error;
    gl.error = GL_NO_ERROR;
    return error;
}

// What is left unanswered.
void glGetIntegerv(GLenum, GLint*) {}
const GLubyte* glGetString(GLenum) {
    return nullptr;
}
GLenum glCheckFramebufferStatus(GLenum) {
    return 0;
}

// What changes no answer.
void glActiveTexture(GLenum) {}
void glBindBuffer(GLenum, GLuint) {}
void glBindFramebuffer(GLenum, GLuint) {}
void glBindTexture(GLenum, GLuint) {}
void glBlendColor(GLfloat, GLfloat, GLfloat, GLfloat) {}
void glBlendEquation(GLenum) {}
void glBlendFunc(GLenum, GLenum) {}
void glBlendFuncSeparate(GLenum, GLenum, GLenum, GLenum) {}
void glClear(GLbitfield) {}
void glClearColor(GLfloat, GLfloat, GLfloat, GLfloat) {}
void glCompileShader(GLuint) {}
void glDisable(GLenum capability) {
    if (capability == GL_BLEND) gl.isBlending = false;
}
void glEnable(GLenum capability) {
    if (capability == GL_BLEND) gl.isBlending = true;
}
void glFlush() {}
void glFramebufferTexture2D(GLenum, GLenum, GLenum, GLuint, GLint) {}
void glTexParameteri(GLenum, GLenum, GLint) {}
void glTexImage2D(GLenum, GLint, GLint, GLsizei width, GLsizei height, GLint, GLenum, GLenum, const void*) {
    if (width < 0 || height < 0) setError(GL_INVALID_VALUE);
}
GLboolean glIsEnabled(GLenum capability) {
    return gl.isBlending && capability == GL_BLEND ? GL_TRUE : GL_FALSE;
}
void glViewport(GLint, GLint, GLsizei width, GLsizei height) {
    if (width < 0 || height < 0) setError(GL_INVALID_VALUE);
}

// Objects.
#define OBJECTS(kind, objects)                                                                                         \
    void glGen##kind(GLsizei n, GLuint* names) {                                                                       \
        for (GLsizei i = 0; i < n; ++i)                                                                                \
            gl.objects.insert(names[i] = ++gl.lastName);                                                               \
    }                                                                                                                  \
    void glDelete##kind(GLsizei n, const GLuint* names) {                                                              \
        for (GLsizei i = 0; i < n; ++i)                                                                                \
            gl.objects.erase(names[i]);                                                                                \
    }
OBJECTS(Textures, textures)
OBJECTS(Framebuffers, framebuffers)

// Shaders and programs. There is no binary format.
GLuint glCreateShader(GLenum type) {
    gl.shaders[++gl.lastName] = {type, nullptr};
    return gl.lastName;
}
void glShaderSource(GLuint shader, GLsizei, const GLchar* const* texts, const GLint*) {
    Shader& object = gl.shaders.at(shader);
    object.declared = &interfaceOf(object.type, texts[0]);
}
void glGetShaderiv(GLuint shader, GLenum parameter, GLint* value) {
    *value = parameter == GL_COMPILE_STATUS ? GL_TRUE : 0;
    if (parameter == GL_SHADER_TYPE) *value = static_cast<GLint>(gl.shaders.at(shader).type);
}
void glGetShaderInfoLog(GLuint, GLsizei, GLsizei*, GLchar*) {}
void glDeleteShader(GLuint shader) {
    gl.shaders.erase(shader);
}
GLuint glCreateProgram() {
    gl.programs[++gl.lastName] = {};
    return gl.lastName;
}
void glAttachShader(GLuint program, GLuint shader) {
    const Interface& declared = *gl.shaders.at(shader).declared;
    Program& object = gl.programs.at(program);
    object.uniforms.insert(object.uniforms.end(), declared.uniforms.begin(), declared.uniforms.end());
    object.attributes.insert(object.attributes.end(), declared.attributes.begin(), declared.attributes.end());
    ++object.shaders;
}
void glLinkProgram(GLuint) {}
void glGetProgramiv(GLuint program, GLenum parameter, GLint* value) {
    *value = parameter == GL_LINK_STATUS && gl.programs.at(program).shaders == 2 ? GL_TRUE : 0;
}
void glGetProgramInfoLog(GLuint, GLsizei, GLsizei*, GLchar*) {}
void glGetProgramBinary(GLuint, GLsizei, GLsizei*, GLenum*, void*) {
    setError(GL_INVALID_OPERATION);
}
void glProgramBinary(GLuint, GLenum, const void*, GLsizei) {
    setError(GL_INVALID_ENUM);
}
void glUseProgram(GLuint program) {
    if (program == 0 || programOf(program)) gl.currentProgram = program;
}
void glDeleteProgram(GLuint program) {
    gl.programs.erase(program);
}
GLint glGetUniformLocation(GLuint program, const GLchar* name) {
    const Program* object = programOf(program);
    return object ? location(object->uniforms, name, static_cast<GLint>(7 * program), 1000) : -1;
}
GLint glGetAttribLocation(GLuint program, const GLchar* name) {
    return programOf(program) ? attributeLocation(program, name) : -1;
}

void glUniform1f(GLint location, GLfloat) {
    setUniform(location);
}
void glUniform1i(GLint location, GLint) {
    setUniform(location);
}
void glUniform2f(GLint location, GLfloat, GLfloat) {
    setUniform(location);
}
#define UNIFORM_DATA(function, floats)                                                                                 \
    void function(GLint location, GLsizei count, const GLfloat* data) {                                                \
        setUniform(location);                                                                                          \
        read(data, static_cast<std::size_t>(count) * (floats) * sizeof(float));                                        \
    }
UNIFORM_DATA(glUniform2fv, 2)
UNIFORM_DATA(glUniform3fv, 3)
UNIFORM_DATA(glUniform4fv, 4)
void glUniformMatrix4fv(GLint location, GLsizei count, GLboolean, const GLfloat* data) {
    setUniform(location);
    read(data, static_cast<std::size_t>(count) * 16 * sizeof(float));
}

void glEnableVertexAttribArray(GLuint index) {
    setEnabled(index, true);
}
void glDisableVertexAttribArray(GLuint index) {
    setEnabled(index, false);
}
void glVertexAttribPointer(GLuint index, GLint size, GLenum, GLboolean, GLsizei stride, const void* data) {
    if (index >= arrayCount) return setError(GL_INVALID_VALUE);
    Array& array = gl.arrays[index];
    array = {array.enabled, size, stride, static_cast<const GLubyte*>(data)};
}
void glDrawArrays(GLenum, GLint first, GLsizei count) {
    if (count < 0) return setError(GL_INVALID_VALUE);
    draw(static_cast<std::size_t>(first) + static_cast<std::size_t>(count));
}
void glDrawElements(GLenum, GLsizei count, GLenum, const void* indices) {
    const auto* first = static_cast<const GLushort*>(indices);
    draw(*std::max_element(first, first + count) + std::size_t{1});
}

} // extern "C"
