#pragma once

#include <cstdio>

/// Builds GL programs from source text, and keeps linked binaries in files so that a later start can skip compiling.
///
/// A cache file is `GlobalProperty::ROOT_DIR` + cache name + ".dat" and holds the bytes of glGetProgramBinary, nothing
/// else. The source text is not part of the key: delete the files when shaders change. A file that the driver
/// rejects is built again from text and overwritten. Files are written in place and never deleted.
///
/// All functions need a current context. Failures are logged under the tag "EGLUtils" and reported as 0 or null. No
/// argument may be null but a cache name and the file of saveProgram.

/// Compiles one shader.
/// @param shaderType  GL_VERTEX_SHADER or GL_FRAGMENT_SHADER
/// @param source      NUL-terminated GLSL text
/// @return the shader object, or 0; the compiler's message is then in the log
unsigned int loadShader(unsigned int shaderType, const char* source);

/// Compiles and links a program from text. The caller owns it. Returns 0 on failure; the message is then in the log.
unsigned int createProgram(const char* vertexSource, const char* fragmentSource);

/// The same through the cache: loads the file of this name where the driver accepts it, else builds from text and
/// saves the binary. A file that cannot be read or written costs only the cache.
/// @param name  cache name; null behaves exactly as the builder without a name
/// @return the program, or 0 when the text build fails or there is no memory for the cached binary
unsigned int createProgram(const char* vertexSource, const char* fragmentSource, const char* name);

/// Writes the binary of a linked program to a file, replacing what was there.
/// @param program  a linked program
/// @param path     file path from malloc; it is released here, whatever happens
/// @param file     not used; pass null
/// @return program when the whole binary was written, else 0
unsigned int saveProgram(unsigned int program, const char* path, FILE* file);

/// A new string of first followed by second, to be released with free; null when there is no memory.
char* appendString(const char* first, const char* second);
