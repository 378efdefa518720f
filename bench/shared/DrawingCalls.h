// The GL calls that set up what an effect draws, for who stands in front of them. No include guard: who includes this
// has defined what is made of a call, by macros of its function, parameters and arguments. PASS_ON: its first argument
// is the result's type. NAMES: it has a parameter `name`, of an object whose kind its last argument says. UNIFORM and ATTRIBUTE: their first parameter is a location. UNIFORM_DATA: it has parameters
// `location`, `count` and `data`, and is also told how many floats `data` holds.

PASS_ON(void, glActiveTexture, (GLenum unit), (unit))
PASS_ON(void, glBindBuffer, (GLenum target, GLuint buffer), (target, buffer))
NAMES(glBindFramebuffer, (GLenum target, GLuint name), (target, name), framebuffer)
NAMES(glBindTexture, (GLenum target, GLuint name), (target, name), texture)
PASS_ON(void, glBlendColor, (GLfloat r, GLfloat g, GLfloat b, GLfloat a), (r, g, b, a))
PASS_ON(void, glBlendEquation, (GLenum mode), (mode))
PASS_ON(void, glBlendFunc, (GLenum source, GLenum target), (source, target))
PASS_ON(void, glBlendFuncSeparate, (GLenum srcRGB, GLenum dstRGB, GLenum srcA, GLenum dstA),
        (srcRGB, dstRGB, srcA, dstA))
PASS_ON(void, glClear, (GLbitfield mask), (mask))
PASS_ON(void, glClearColor, (GLfloat r, GLfloat g, GLfloat b, GLfloat a), (r, g, b, a))
PASS_ON(void, glDisable, (GLenum capability), (capability))
PASS_ON(void, glEnable, (GLenum capability), (capability))
PASS_ON(void, glFlush, (), ())
NAMES(glFramebufferTexture2D, (GLenum target, GLenum point, GLenum kind, GLuint name, GLint level),
      (target, point, kind, name, level), texture)
PASS_ON(void, glViewport, (GLint x, GLint y, GLsizei width, GLsizei height), (x, y, width, height))

UNIFORM(glUniform1f, (GLint location, GLfloat x), (location, x))
UNIFORM(glUniform1i, (GLint location, GLint x), (location, x))
UNIFORM(glUniform2f, (GLint location, GLfloat x, GLfloat y), (location, x, y))
UNIFORM_DATA(glUniform2fv, (GLint location, GLsizei count, const GLfloat* data), 2 * count, (location, count, data))
UNIFORM_DATA(glUniform3fv, (GLint location, GLsizei count, const GLfloat* data), 3 * count, (location, count, data))
UNIFORM_DATA(glUniform4fv, (GLint location, GLsizei count, const GLfloat* data), 4 * count, (location, count, data))
UNIFORM_DATA(glUniformMatrix4fv, (GLint location, GLsizei count, GLboolean transpose, const GLfloat* data), 16 * count,
             (location, count, transpose, data))

ATTRIBUTE(glDisableVertexAttribArray, (GLuint index), (index))
ATTRIBUTE(glEnableVertexAttribArray, (GLuint index), (index))
ATTRIBUTE(glVertexAttribPointer,
          (GLuint index, GLint size, GLenum type, GLboolean normalized, GLsizei stride, const void* pointer),
          (index, size, type, normalized, stride, pointer))
