#include "bench/GLReplay.h"

#include <GLES3/gl3.h>

#include <dlfcn.h>

namespace tidalume::bench {
namespace {

GLCalls* recording = nullptr;
bool acceptsProgramBinaries = false;

void note(std::function<void()> call) {
    recording->calls.push_back(std::move(call));
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

using tidalume::bench::note;

extern "C" {

/// The driver's own function of this name.
// NOLINTNEXTLINE(bugprone-macro-parentheses): a name in decltype
#define REAL(function) static const auto real = reinterpret_cast<decltype(&function)>(dlsym(RTLD_NEXT, #function))

#define PASS_ON(result, function, parameters, arguments)                                                               \
    result function parameters {                                                                                       \
        REAL(function);                                                                                                \
        if (tidalume::bench::recording) note([=] { real arguments; });                                                 \
        return real arguments;                                                                                         \
    }

/// Counted, not noted down: what the effects draw with is there before.
#define TRANSFER(result, function, parameters, arguments)                                                              \
    result function parameters {                                                                                       \
        REAL(function);                                                                                                \
        if (tidalume::bench::recording) ++tidalume::bench::recording->transfers;                                       \
        return real arguments;                                                                                         \
    }

#define PASS_ON_DATA(function, parameters, floats, arguments)                                                          \
    void function parameters {                                                                                         \
        REAL(function);                                                                                                \
        if (tidalume::bench::recording) {                                                                              \
            note([=, copy = std::vector<GLfloat>(data, data + (floats))] {                                             \
                const GLfloat* data = copy.data();                                                                     \
                real arguments;                                                                                        \
            });                                                                                                        \
        }                                                                                                              \
        real arguments;                                                                                                \
    }

PASS_ON(void, glActiveTexture, (GLenum unit), (unit))
PASS_ON(void, glBindBuffer, (GLenum target, GLuint buffer), (target, buffer))
PASS_ON(void, glBindFramebuffer, (GLenum target, GLuint framebuffer), (target, framebuffer))
PASS_ON(void, glBindTexture, (GLenum target, GLuint texture), (target, texture))
PASS_ON(void, glBlendColor, (GLfloat r, GLfloat g, GLfloat b, GLfloat a), (r, g, b, a))
PASS_ON(void, glBlendEquation, (GLenum mode), (mode))
PASS_ON(void, glBlendFunc, (GLenum source, GLenum target), (source, target))
PASS_ON(void, glBlendFuncSeparate, (GLenum srcRGB, GLenum dstRGB, GLenum srcA, GLenum dstA),
        (srcRGB, dstRGB, srcA, dstA))
PASS_ON(void, glClear, (GLbitfield mask), (mask))
PASS_ON(void, glClearColor, (GLfloat r, GLfloat g, GLfloat b, GLfloat a), (r, g, b, a))
PASS_ON(void, glDisable, (GLenum capability), (capability))
PASS_ON(void, glDisableVertexAttribArray, (GLuint index), (index))
PASS_ON(void, glDrawArrays, (GLenum mode, GLint first, GLsizei count), (mode, first, count))
PASS_ON(void, glDrawElements, (GLenum mode, GLsizei count, GLenum type, const void* indices),
        (mode, count, type, indices))
PASS_ON(void, glEnable, (GLenum capability), (capability))
PASS_ON(void, glEnableVertexAttribArray, (GLuint index), (index))
PASS_ON(void, glFlush, (), ())
PASS_ON(void, glFramebufferTexture2D, (GLenum target, GLenum point, GLenum kind, GLuint texture, GLint level),
        (target, point, kind, texture, level))
PASS_ON(GLint, glGetAttribLocation, (GLuint program, const GLchar* name), (program, name))
PASS_ON(GLenum, glGetError, (), ())
PASS_ON(GLint, glGetUniformLocation, (GLuint program, const GLchar* name), (program, name))
PASS_ON(void, glTexParameteri, (GLenum target, GLenum parameter, GLint value), (target, parameter, value))
PASS_ON(void, glUniform1f, (GLint location, GLfloat x), (location, x))
PASS_ON(void, glUniform1i, (GLint location, GLint x), (location, x))
PASS_ON(void, glUniform2f, (GLint location, GLfloat x, GLfloat y), (location, x, y))
PASS_ON_DATA(glUniform2fv, (GLint location, GLsizei count, const GLfloat* data), 2 * count, (location, count, data))
PASS_ON_DATA(glUniform3fv, (GLint location, GLsizei count, const GLfloat* data), 3 * count, (location, count, data))
PASS_ON_DATA(glUniform4fv, (GLint location, GLsizei count, const GLfloat* data), 4 * count, (location, count, data))
PASS_ON_DATA(glUniformMatrix4fv, (GLint location, GLsizei count, GLboolean transpose, const GLfloat* data), 16 * count,
             (location, count, transpose, data))
PASS_ON(void, glUseProgram, (GLuint program), (program))
PASS_ON(void, glVertexAttribPointer,
        (GLuint index, GLint size, GLenum type, GLboolean normalized, GLsizei stride, const void* pointer),
        (index, size, type, normalized, stride, pointer))
PASS_ON(void, glViewport, (GLint x, GLint y, GLsizei width, GLsizei height), (x, y, width, height))

TRANSFER(void, glBufferData, (GLenum target, GLsizeiptr size, const void* data, GLenum usage),
         (target, size, data, usage))
TRANSFER(void, glBufferSubData, (GLenum target, GLintptr offset, GLsizeiptr size, const void* data),
         (target, offset, size, data))
TRANSFER(void, glCompressedTexImage2D,
         (GLenum target, GLint level, GLenum internal, GLsizei w, GLsizei h, GLint border, GLsizei size,
          const void* data),
         (target, level, internal, w, h, border, size, data))
TRANSFER(void, glCompressedTexImage3D,
         (GLenum target, GLint level, GLenum internal, GLsizei w, GLsizei h, GLsizei d, GLint border, GLsizei size,
          const void* data),
         (target, level, internal, w, h, d, border, size, data))
TRANSFER(void, glCompressedTexSubImage2D,
         (GLenum target, GLint level, GLint x, GLint y, GLsizei w, GLsizei h, GLenum format, GLsizei size,
          const void* data),
         (target, level, x, y, w, h, format, size, data))
TRANSFER(void, glCompressedTexSubImage3D,
         (GLenum target, GLint level, GLint x, GLint y, GLint z, GLsizei w, GLsizei h, GLsizei d, GLenum format,
          GLsizei size, const void* data),
         (target, level, x, y, z, w, h, d, format, size, data))
TRANSFER(void*, glMapBufferRange, (GLenum target, GLintptr offset, GLsizeiptr length, GLbitfield access),
         (target, offset, length, access))
TRANSFER(void, glReadPixels, (GLint x, GLint y, GLsizei w, GLsizei h, GLenum format, GLenum type, void* data),
         (x, y, w, h, format, type, data))
TRANSFER(void, glTexImage2D,
         (GLenum target, GLint level, GLint internal, GLsizei w, GLsizei h, GLint border, GLenum format, GLenum type,
          const void* data),
         (target, level, internal, w, h, border, format, type, data))
TRANSFER(void, glTexImage3D,
         (GLenum target, GLint level, GLint internal, GLsizei w, GLsizei h, GLsizei d, GLint border, GLenum format,
          GLenum type, const void* data),
         (target, level, internal, w, h, d, border, format, type, data))
TRANSFER(void, glTexSubImage2D,
         (GLenum target, GLint level, GLint x, GLint y, GLsizei w, GLsizei h, GLenum format, GLenum type,
          const void* data),
         (target, level, x, y, w, h, format, type, data))
TRANSFER(void, glTexSubImage3D,
         (GLenum target, GLint level, GLint x, GLint y, GLint z, GLsizei w, GLsizei h, GLsizei d, GLenum format,
          GLenum type, const void* data),
         (target, level, x, y, z, w, h, d, format, type, data))

void glProgramBinary(GLuint program, GLenum format, const void* binary, GLsizei length) {
    REAL(glProgramBinary);
    GLint formats[8] = {};
    if (tidalume::bench::acceptsProgramBinaries) glGetIntegerv(GL_PROGRAM_BINARY_FORMATS, formats);
    real(program, formats[0] ? static_cast<GLenum>(formats[0]) : format, binary, length);
}

} // extern "C"
