#include "bench/GLReplay.h"

#include "bench/DriversOwn.h"

#include <algorithm>

namespace tidalume::bench {
namespace {

GLCalls* recording = nullptr;
bool acceptsProgramBinaries = false;

void note(std::function<void()> call) {
    recording->calls.push_back(std::move(call));
}

/// Copies what a draw reads from the caller's arrays, which hold other vertices by the time of the replay.
void keepVertices(int count) {
    for (const GLuint index : {0U, 1U}) {
        GLint enabled = 0;
        GLint size = 0;
        GLint stride = 0;
        void* pointer = nullptr;
        glGetVertexAttribiv(index, GL_VERTEX_ATTRIB_ARRAY_ENABLED, &enabled);
        glGetVertexAttribiv(index, GL_VERTEX_ATTRIB_ARRAY_SIZE, &size);
        glGetVertexAttribiv(index, GL_VERTEX_ATTRIB_ARRAY_STRIDE, &stride);
        glGetVertexAttribPointerv(index, GL_VERTEX_ATTRIB_ARRAY_POINTER, &pointer);
        if (!enabled || !pointer) continue;
        const auto* first = static_cast<const float*>(pointer);
        const int step = stride == 0 ? size : stride / static_cast<int>(sizeof(float));
        note([=, copy = std::vector<float>(first, first + step * (count - 1) + size)] {
            glVertexAttribPointer(index, size, GL_FLOAT, GL_FALSE, stride, copy.data());
        });
    }
}

} // namespace

void GLCalls::replay() const {
    for (const std::function<void()>& call : calls)
        call();
}

GLCalls record(const std::function<void()>& action) {
    GLCalls calls;
    recording = &calls;
    action();
    recording = nullptr;
    return calls;
}

void acceptProgramBinaries(bool accept) {
    acceptsProgramBinaries = accept;
}

} // namespace tidalume::bench

using tidalume::bench::acceptsProgramBinaries;
using tidalume::bench::note;
using tidalume::bench::recording;

extern "C" {

#define PASS_ON(result, function, parameters, arguments)                                                               \
    result function parameters {                                                                                       \
        static const auto real = DRIVERS_OWN(function);                                                                \
        if (recording) note([=] { real arguments; });                                                                  \
        return real arguments;                                                                                         \
    }

/// Counted, not noted down: operations draw with what is there before.
#define TRANSFER(result, function, parameters, arguments)                                                              \
    result function parameters {                                                                                       \
        static const auto real = DRIVERS_OWN(function);                                                                \
        if (recording) ++recording->transfers;                                                                         \
        return real arguments;                                                                                         \
    }

#define NAMES(function, parameters, arguments, kind) PASS_ON(void, function, parameters, arguments)
#define UNIFORM(function, parameters, arguments) PASS_ON(void, function, parameters, arguments)
#define ATTRIBUTE(function, parameters, arguments) PASS_ON(void, function, parameters, arguments)

#define UNIFORM_DATA(function, parameters, floats, arguments)                                                          \
    void function parameters {                                                                                         \
        static const auto real = DRIVERS_OWN(function);                                                                \
        if (recording) {                                                                                               \
            note([=, copy = std::vector<GLfloat>(data, data + (floats))] {                                             \
                const GLfloat* data = copy.data();                                                                     \
                real arguments;                                                                                        \
            });                                                                                                        \
        }                                                                                                              \
        real arguments;                                                                                                \
    }

#include "testing/DrawingCalls.inc"
PASS_ON(void, glUniform3f, (GLint location, GLfloat x, GLfloat y, GLfloat z), (location, x, y, z))
PASS_ON(void, glUniform4f, (GLint location, GLfloat x, GLfloat y, GLfloat z, GLfloat w), (location, x, y, z, w))
PASS_ON(GLint, glGetAttribLocation, (GLuint program, const GLchar* name), (program, name))
PASS_ON(GLenum, glGetError, (), ())
PASS_ON(GLint, glGetUniformLocation, (GLuint program, const GLchar* name), (program, name))
PASS_ON(void, glTexParameteri, (GLenum target, GLenum parameter, GLint value), (target, parameter, value))
PASS_ON(void, glUseProgram, (GLuint program), (program))

void glDrawArrays(GLenum mode, GLint first, GLsizei count) {
    static const auto real = DRIVERS_OWN(glDrawArrays);
    if (recording) {
        tidalume::bench::keepVertices(first + count);
        note([=] { real(mode, first, count); });
    }
    real(mode, first, count);
}

/// Indices stay as they are.
void glDrawElements(GLenum mode, GLsizei count, GLenum type, const void* indices) {
    static const auto real = DRIVERS_OWN(glDrawElements);
    const auto* list = static_cast<const GLushort*>(indices);
    if (recording) {
        tidalume::bench::keepVertices(1 + *std::max_element(list, list + count));
        note([=] { real(mode, count, type, indices); });
    }
    real(mode, count, type, indices);
}

// Their parameters are named by the first letters.
TRANSFER(void, glBufferData, (GLenum t, GLsizeiptr s, const void* d, GLenum u), (t, s, d, u))
TRANSFER(void, glBufferSubData, (GLenum t, GLintptr o, GLsizeiptr s, const void* d), (t, o, s, d))
TRANSFER(void, glCompressedTexImage2D,
         (GLenum t, GLint l, GLenum f, GLsizei w, GLsizei h, GLint b, GLsizei s, const void* d),
         (t, l, f, w, h, b, s, d))
TRANSFER(void, glCompressedTexImage3D,
         (GLenum t, GLint l, GLenum f, GLsizei w, GLsizei h, GLsizei z, GLint b, GLsizei s, const void* d),
         (t, l, f, w, h, z, b, s, d))
TRANSFER(void, glCompressedTexSubImage2D,
         (GLenum t, GLint l, GLint x, GLint y, GLsizei w, GLsizei h, GLenum f, GLsizei s, const void* d),
         (t, l, x, y, w, h, f, s, d))
TRANSFER(void, glCompressedTexSubImage3D,
         (GLenum t, GLint l, GLint x, GLint y, GLint z, GLsizei w, GLsizei h, GLsizei n, GLenum f, GLsizei s,
          const void* d),
         (t, l, x, y, z, w, h, n, f, s, d))
TRANSFER(void*, glMapBufferRange, (GLenum t, GLintptr o, GLsizeiptr l, GLbitfield a), (t, o, l, a))
TRANSFER(void, glReadPixels, (GLint x, GLint y, GLsizei w, GLsizei h, GLenum f, GLenum t, void* d),
         (x, y, w, h, f, t, d))
TRANSFER(void, glTexImage3D,
         (GLenum t, GLint l, GLint i, GLsizei w, GLsizei h, GLsizei z, GLint b, GLenum f, GLenum p, const void* d),
         (t, l, i, w, h, z, b, f, p, d))
TRANSFER(void, glTexSubImage2D,
         (GLenum t, GLint l, GLint x, GLint y, GLsizei w, GLsizei h, GLenum f, GLenum p, const void* d),
         (t, l, x, y, w, h, f, p, d))
TRANSFER(void, glTexSubImage3D,
         (GLenum t, GLint l, GLint x, GLint y, GLint z, GLsizei w, GLsizei h, GLsizei n, GLenum f, GLenum p,
          const void* d),
         (t, l, x, y, z, w, h, n, f, p, d))

void glTexImage2D(GLenum target, GLint level, GLint internal, GLsizei w, GLsizei h, GLint border, GLenum format,
                  GLenum type, const void* data) {
    static const auto real = DRIVERS_OWN(glTexImage2D);
    real(target, level, internal, w, h, border, format, type, data);
    if (!recording) return;
    ++recording->transfers;
    GLint texture = 0;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &texture);
    if (type == GL_HALF_FLOAT) recording->storages[static_cast<GLuint>(texture)] = {format, w, h};
}

/// Accepted, its format is the driver's own.
void glProgramBinary(GLuint program, GLenum format, const void* binary, GLsizei length) {
    static const auto real = DRIVERS_OWN(glProgramBinary);
    GLint formats[8] = {};
    if (acceptsProgramBinaries) glGetIntegerv(GL_PROGRAM_BINARY_FORMATS, formats);
    real(program, formats[0] ? static_cast<GLenum>(formats[0]) : format, binary, length);
}

} // extern "C"
