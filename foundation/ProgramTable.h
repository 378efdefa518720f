#pragma once

#include <GLES3/gl3.h>

namespace tidalume {

/// A uniform or attribute: where its location is kept, and its name in GLSL.
struct Location {
    GLint* member;
    const char* name;
};

/// One GL program of an effect, as data. Null are only a label that is not checked, and the empty entries.
struct Program {
    GLuint* id;            ///< member that holds the program's name; 0 while it is not built
    const char* cacheName; ///< name of its file in the binary program cache
    const char* label;     ///< checkGLError label after the build; null: not checked
    const char* vertexSource;
    const char* fragmentSource;
    Location uniforms[12];  ///< in the order of the queries; ends at the first empty entry
    Location attributes[3]; ///< queried after the uniforms; ends at the first empty entry
};

/// The programs of one effect in the order in which they are built.
struct ProgramTable {
    const char* className;       ///< log tag of the build-time message
    const char* buildTimeFormat; ///< of that message; it takes one double, the time in milliseconds
    Program programs[6];         ///< ends at the first empty entry
};

/// Builds each program whose id is 0, through the cache when `GlobalProperty::BINARY_SHADER` is set, and looks its
/// locations up. A program that fails to build stays 0 with locations of -1, and is tried again by the next call. With
/// `GlobalProperty::DEBUG_LOG`, logs the time since just before the first program that this call built, provided
/// that the last one of the table was among them. Needs a current context.
void buildPrograms(const ProgramTable& table);

/// Sets every id to 0 and every location to -1 without a GL call, for a context that is gone.
void abandonPrograms(const ProgramTable& table);

/// Deletes the programs that exist, and abandons their names.
void deletePrograms(const ProgramTable& table);

} // namespace tidalume
