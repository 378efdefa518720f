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
    Array arrays[arrayCount] = {};
};

Context gl;

/// The place of a name, moved by a distance that differs from program to program; -1 where it is none.
GLint location(const Names& names, const char* name, GLint distance, GLint modulus) {
    const auto found = std::find(names.begin(), names.end(), name);
    return found == names.end() ? -1 : static_cast<GLint>((found - names.begin()) + distance) % modulus;
}

/// One without uniforms and attributes where the name is none's.
const Program& programOf(GLuint name) {
    static const Program none = {};
    const auto found = gl.programs.find(name);
    return found == gl.programs.end() ? none : found->second;
}

GLint attributeLocation(GLuint program, const std::string& name) {
    return location(programOf(program).attributes, name.c_str(), static_cast<GLint>(3 * program), arrayCount);
}

/// Reads the bytes, so that a sanitizer sees those that are not there.
void read(const void* data, std::size_t size) {
    const auto* bytes = static_cast<const volatile GLubyte*>(data);
    for (std::size_t i = 0; i < size; ++i)
        static_cast<void>(bytes[i]);
}

void draw(std::size_t vertices) {
    for (const std::string& name : programOf(gl.currentProgram).attributes) {
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

template <typename... Arguments>
void ignore(const Arguments&...) {}

} // namespace

extern "C" {

void bareGLReset() {
    gl = {};
}

std::size_t bareGLLiveObjects() {
    return gl.textures.size() + gl.framebuffers.size() + gl.shaders.size() + gl.programs.size();
}

// What is not kept.
#define PASS_ON(result, function, parameters, arguments)                                                               \
    result function parameters {                                                                                       \
        ignore arguments;                                                                                              \
    }
#define NAMES(function, parameters, arguments, kind) PASS_ON(void, function, parameters, arguments)
#define UNIFORM(function, parameters, arguments) PASS_ON(void, function, parameters, arguments)
#define UNIFORM_DATA(function, parameters, floats, arguments)                                                          \
    void function parameters {                                                                                         \
        ignore arguments;                                                                                              \
        read(data, static_cast<std::size_t>(floats) * sizeof(float));                                                  \
    }
#define ATTRIBUTE(function, parameters, arguments) // below
#include "testing/DrawingCalls.inc"
void glCompileShader(GLuint) {}
void glLinkProgram(GLuint) {}
void glTexParameteri(GLenum, GLenum, GLint) {}
void glTexImage2D(GLenum, GLint, GLint, GLsizei, GLsizei, GLint, GLenum, GLenum, const void*) {}

// What is left unanswered.
void glGetIntegerv(GLenum, GLint*) {}
GLenum glCheckFramebufferStatus(GLenum) {
    return 0;
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
void glGetProgramiv(GLuint program, GLenum parameter, GLint* value) {
    *value = parameter == GL_LINK_STATUS && programOf(program).shaders == 2 ? GL_TRUE : 0;
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
    return location(programOf(program).uniforms, name, static_cast<GLint>(7 * program), 1000);
}
GLint glGetAttribLocation(GLuint program, const GLchar* name) {
    return attributeLocation(program, name);
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
