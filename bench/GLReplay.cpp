#include "bench/GLReplay.h"

#include "testing/DriversOwn.h"

#include <GLES3/gl3.h>

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

#define PASS_ON(result, function, parameters, arguments)                                                               \
    result function parameters {                                                                                       \
        static const auto real = DRIVERS_OWN(function);                                                                \
        if (tidalume::bench::recording) note([=] { real arguments; });                                                 \
        return real arguments;                                                                                         \
    }

/// Counted, not noted down: what the effects draw with is there before.
#define TRANSFER(result, function, parameters, arguments)                                                              \
    result function parameters {                                                                                       \
        static const auto real = DRIVERS_OWN(function);                                                                \
        if (tidalume::bench::recording) ++tidalume::bench::recording->transfers;                                       \
        return real arguments;                                                                                         \
    }

#define NAMES(function, parameters, arguments, kind) PASS_ON(void, function, parameters, arguments)
#define UNIFORM(function, parameters, arguments) PASS_ON(void, function, parameters, arguments)
#define ATTRIBUTE(function, parameters, arguments) PASS_ON(void, function, parameters, arguments)

#define UNIFORM_DATA(function, parameters, floats, arguments)                                                          \
    void function parameters {                                                                                         \
        static const auto real = DRIVERS_OWN(function);                                                                \
        if (tidalume::bench::recording) {                                                                              \
            note([=, copy = std::vector<GLfloat>(data, data + (floats))] {                                             \
                const GLfloat* data = copy.data();                                                                     \
                real arguments;                                                                                        \
            });                                                                                                        \
        }                                                                                                              \
        real arguments;                                                                                                \
    }

#include "testing/DrawingCalls.inc"
PASS_ON(void, glDrawArrays, (GLenum mode, GLint first, GLsizei count), (mode, first, count))
PASS_ON(void, glDrawElements, (GLenum mode, GLsizei count, GLenum type, const void* indices),
        (mode, count, type, indices))
PASS_ON(GLint, glGetAttribLocation, (GLuint program, const GLchar* name), (program, name))
PASS_ON(GLenum, glGetError, (), ())
PASS_ON(GLint, glGetUniformLocation, (GLuint program, const GLchar* name), (program, name))
PASS_ON(void, glTexParameteri, (GLenum target, GLenum parameter, GLint value), (target, parameter, value))
PASS_ON(void, glUseProgram, (GLuint program), (program))

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
    static const auto real = DRIVERS_OWN(glProgramBinary);
    GLint formats[8] = {};
    if (tidalume::bench::acceptsProgramBinaries) glGetIntegerv(GL_PROGRAM_BINARY_FORMATS, formats);
    real(program, formats[0] ? static_cast<GLenum>(formats[0]) : format, binary, length);
}

} // extern "C"
