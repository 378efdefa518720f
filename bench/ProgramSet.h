#pragma once

#include "foundation/ProgramTable.h"
#include "reference/Shaders.h"
#include "testing/Peek.h"

#include <utility>
#include <vector>

/// The benchmark's look into the effects, whose friend it is.
struct TestPeer {
    TIDALUME_PEEK(mFBONormal)
    TIDALUME_PEEK(mMaterialSpecular)
    TIDALUME_PEEK(mPrograms)
    TIDALUME_PEEK(mTexturesWater)

    template <typename Effect>
    static tidalume::ProgramTable ownPrograms(Effect& effect) {
        return effect.programs();
    }
    template <typename Effect>
    static void step(Effect& effect) {
        effect.step();
    }
};

namespace tidalume::bench {

/// One set of an effect's programs, which can be put in the place of another: the effect's own code then draws with
/// other shaders.
class ProgramSet {
  public:
    /// Takes the programs and locations that the effect has now.
    explicit ProgramSet(const ProgramTable& table);

    /// Builds the effect's programs, in other forms where there are some. They are then in place.
    template <size_t count>
    ProgramSet(const ProgramTable& table, const reference::ProgramForm (&forms)[count])
        : ProgramSet(built(table, forms, forms + count)) {}

    void putInPlace() const;

  private:
    static ProgramTable built(ProgramTable table, const reference::ProgramForm* begin,
                              const reference::ProgramForm* end);

    std::vector<std::pair<GLuint*, GLuint>> mIds;
    std::vector<std::pair<GLint*, GLint>> mLocations;
};

} // namespace tidalume::bench
