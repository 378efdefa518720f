#include "bench/ProgramSet.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <string>

namespace tidalume::bench {

ProgramSet::ProgramSet(const ProgramTable& table) {
    for (const Program& program : table.programs) {
        if (!program.id) break;
        mIds.emplace_back(program.id, *program.id);
        for (const Location& location : program.uniforms)
            if (location.member) mLocations.emplace_back(location.member, *location.member);
        for (const Location& location : program.attributes)
            if (location.member) mLocations.emplace_back(location.member, *location.member);
    }
}

ProgramTable ProgramSet::built(ProgramTable table, const reference::ProgramForm* begin,
                               const reference::ProgramForm* end) {
    for (Program& program : table.programs) {
        if (!program.id) break;
        const reference::ProgramForm* form = std::find_if(begin, end, [&](const reference::ProgramForm& f) {
            return std::strcmp(f.cacheName, program.cacheName) == 0;
        });
        if (form == end) continue;
        program.vertexSource = form->vertex;
        program.fragmentSource = form->fragment;
    }
    abandonPrograms(table);
    buildPrograms(table);
    for (const Program& program : table.programs) {
        if (program.id && *program.id == 0) throw std::runtime_error(std::string("no program ") + program.cacheName);
    }
    return table;
}

void ProgramSet::putInPlace() const {
    for (const auto& [member, id] : mIds)
        *member = id;
    for (const auto& [member, location] : mLocations)
        *member = location;
}

} // namespace tidalume::bench
