#include "foundation/ProgramTable.h"

#include "foundation/Diagnostics.h"
#include "foundation/GlobalProperty.h"
#include "foundation/Log.h"
#include "foundation/ProgramBuilder.h"

#include <cstdint>
#include <ctime>

namespace tidalume {
namespace {

bool isEmpty(const Location& location) {
    return location.name == nullptr;
}
bool isEmpty(const Program& program) {
    return program.id == nullptr;
}

template <typename Entry, size_t capacity, typename Visit>
void forEachUntilEmpty(const Entry (&entries)[capacity], Visit visit) {
    for (const Entry& entry : entries) {
        if (isEmpty(entry)) return;
        visit(entry);
    }
}

int64_t nanosecondsNow() {
    timespec now = {};
    clock_gettime(CLOCK_REALTIME, &now);
    return static_cast<int64_t>(static_cast<double>(now.tv_sec) * 1e9 + static_cast<double>(now.tv_nsec));
}

void logBuildTime(const ProgramTable& table, int64_t start) {
    const double milliseconds = static_cast<double>(nanosecondsNow() - start) * 1e-6;
    // kept: priority
    __android_log_print(ANDROID_LOG_ERROR, table.className, table.buildTimeFormat, milliseconds);
}

void build(const Program& program) {
    *program.id = GlobalProperty::BINARY_SHADER
                      ? createProgram(program.vertexSource, program.fragmentSource, program.cacheName)
                      : createProgram(program.vertexSource, program.fragmentSource);
    if (program.label) checkGLError(program.label);
    forEachUntilEmpty(program.uniforms, [&](const Location& uniform) {
        *uniform.member = glGetUniformLocation(*program.id, uniform.name);
    });
    forEachUntilEmpty(program.attributes, [&](const Location& attribute) {
        *attribute.member = glGetAttribLocation(*program.id, attribute.name);
    });
}

} // namespace

void buildPrograms(const ProgramTable& table) {
    int64_t start = 0;
    bool builtLast = false;
    forEachUntilEmpty(table.programs, [&](const Program& program) {
        builtLast = *program.id == 0; // kept: last-program
        if (!builtLast) return;
        if (start == 0 && GlobalProperty::DEBUG_LOG) start = nanosecondsNow();
        build(program);
    });
    if (builtLast && GlobalProperty::DEBUG_LOG) logBuildTime(table, start);
}

void abandonPrograms(const ProgramTable& table) {
    forEachUntilEmpty(table.programs, [](const Program& program) {
        *program.id = 0; // kept: forget-all
        forEachUntilEmpty(program.uniforms, [](const Location& uniform) { *uniform.member = -1; });
        forEachUntilEmpty(program.attributes, [](const Location& attribute) { *attribute.member = -1; });
    });
}

void deletePrograms(const ProgramTable& table) {
    forEachUntilEmpty(table.programs, [](const Program& program) {
        if (*program.id != 0) glDeleteProgram(*program.id);
    });
    abandonPrograms(table);
}

} // namespace tidalume
