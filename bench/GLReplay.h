#pragma once

#include <functional>
#include <vector>

/// Stands in front of the GL entry points that the effects call while they draw, and can note the calls down.
namespace tidalume::bench {

/// Calls with their arguments; the data of uniforms is copied, vertices stay where they are.
struct GLCalls {
    std::vector<std::function<void()>> calls;
    int transfers = 0; ///< calls that upload, make storage or read back

    /// Makes the calls again, straight one after another.
    void replay() const;
};

/// The calls that an action makes.
GLCalls record(const std::function<void()>& action);

/// Makes the driver take program binaries whatever their announced format.
void acceptProgramBinaries(bool accept);

} // namespace tidalume::bench
