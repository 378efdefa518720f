#include "testing/BareGL.h"

#include <GLES3/gl3.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace {

using Names = std::vector<std::string>;

struct Program {
    Names uniforms; ///< in the order in which they were looked up
    Names attributes;
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
    std::set<GLuint> shaders;
    std::map<GLuint, Program> programs;
    GLuint lastName = 0;
    GLuint currentProgram = 0;
    Array arrays[arrayCount] = {};
};

Context gl;

/// The place of a name among those that were looked up, moved by a distance that differs from program to program.
GLint location(Names& names, const GLchar* name, GLuint distance) {
    const auto found = std::find(names.begin(), names.end(), name);
    const auto place = static_cast<GLuint>(found - names.begin());
    if (found == names.end()) names.emplace_back(name);
    return static_cast<GLint>(place + distance);
}

GLint attributeLocation(GLuint program, const GLchar* name) {
    Program& object = gl.programs.at(program);
    return location(object.attributes, name, 3 * program % (arrayCount - 2));
}

/// Reads the bytes, so that a sanitizer sees those that are not there.
void read(const void* data, std::size_t size) {
    const auto* bytes = static_cast<const volatile GLubyte*>(data);
    for (std::size_t i = 0; i < size; ++i)
        static_cast<void>(bytes[i]);
}

void draw(std::size_t vertices) {
    if (gl.currentProgram == 0) return;
    for (const std::string& name : gl.programs.at(gl.currentProgram).attributes) {
        const Array& array = gl.arrays[attributeLocation(gl.currentProgram, name.c_str())];
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

} // namespace

extern "C" {

void bareGLReset() {
    gl = {};
}

std::size_t bareGLLiveObjects() {
    return gl.textures.size() + gl.framebuffers.size() + gl.shaders.size() + gl.programs.size();
}

// What is not kept.
#pragma GCC diagnostic ignored "-Wunused-parameter"
#define PASS_ON(result, function, parameters, arguments)                                                               \
    result function parameters {}
#define NAMES(function, parameters, arguments, kind) PASS_ON(void, function, parameters, arguments)
#define UNIFORM(function, parameters, arguments) PASS_ON(void, function, parameters, arguments)
#define UNIFORM_DATA(function, parameters, floats, arguments)                                                          \
    void function parameters {                                                                                         \
        read(data, static_cast<std::size_t>(floats) * sizeof(float));                                                  \
    }
#define ATTRIBUTE(function, parameters, arguments) // below
#include "testing/DrawingCalls.inc"
void glShaderSource(GLuint, GLsizei, const GLchar* const*, const GLint*) {}
void glCompileShader(GLuint) {}
void glLinkProgram(GLuint) {}
void glTexParameteri(GLenum, GLenum, GLint) {}
void glTexImage2D(GLenum, GLint, GLint, GLsizei, GLsizei, GLint, GLenum, GLenum, const void*) {}

// What is left unanswered.
void glGetIntegerv(GLenum, GLint*) {}
const GLubyte* glGetString(GLenum) {
    return nullptr;
}
GLenum glCheckFramebufferStatus(GLenum) {
    return 0;
}
GLboolean glIsEnabled(GLenum) {
    return GL_FALSE;
}
GLenum glGetError() {
    return GL_NO_ERROR;
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
GLuint glCreateShader(GLenum) {
    return *gl.shaders.insert(++gl.lastName).first;
}
void glGetShaderiv(GLuint, GLenum parameter, GLint* value) {
    *value = parameter == GL_COMPILE_STATUS ? GL_TRUE : 0;
}
void glGetShaderInfoLog(GLuint, GLsizei, GLsizei*, GLchar*) {}
void glDeleteShader(GLuint shader) {
    gl.shaders.erase(shader);
}
GLuint glCreateProgram() {
    gl.programs[++gl.lastName] = {};
    return gl.lastName;
}
void glAttachShader(GLuint, GLuint) {}
void glGetProgramiv(GLuint program, GLenum parameter, GLint* value) {
    *value = parameter == GL_LINK_STATUS && gl.programs.count(program) != 0 ? GL_TRUE : 0;
}
void glGetProgramInfoLog(GLuint, GLsizei, GLsizei*, GLchar*) {}
void glGetProgramBinary(GLuint, GLsizei, GLsizei*, GLenum*, void*) {}
void glProgramBinary(GLuint, GLenum, const void*, GLsizei) {}
void glUseProgram(GLuint program) {
    gl.currentProgram = program;
}
void glDeleteProgram(GLuint program) {
    gl.programs.erase(program);
}
GLint glGetUniformLocation(GLuint program, const GLchar* name) {
    if (program == 0) return -1;
    Program& object = gl.programs.at(program);
    return location(object.uniforms, name, 7 * program);
}
GLint glGetAttribLocation(GLuint program, const GLchar* name) {
    return program == 0 ? -1 : attributeLocation(program, name);
}

void glEnableVertexAttribArray(GLuint index) {
    if (index < arrayCount) gl.arrays[index].enabled = true;
}
void glDisableVertexAttribArray(GLuint index) {
    if (index < arrayCount) gl.arrays[index].enabled = false;
}
void glVertexAttribPointer(GLuint index, GLint size, GLenum, GLboolean, GLsizei stride, const void* data) {
    if (index >= arrayCount) return;
    Array& array = gl.arrays[index];
    array = {array.enabled, size, stride, static_cast<const GLubyte*>(data)};
}
void glDrawArrays(GLenum, GLint first, GLsizei count) {
    draw(static_cast<std::size_t>(first) + static_cast<std::size_t>(count));
}
void glDrawElements(GLenum, GLsizei count, GLenum, const void* indices) {
    const auto* first = static_cast<const GLushort*>(indices);
    draw(*std::max_element(first, first + count) + std::size_t{1});
}

} // extern "C"
