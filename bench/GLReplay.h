#pragma once

#include <GLES3/gl3.h>

#include <functional>
#include <map>
#include <vector>

/// Stands in front of the GL entry points that the effects call, and can note the calls down.
namespace tidalume::bench {

/// What a texture of half floats holds: its format, GL_RG for instance, and its size in texels.
struct Storage {
    GLenum format;
    int width;
    int height;
};

/// What an action did. The data of uniforms and vertices is copied.
struct GLCalls {
    std::vector<std::function<void()>> calls; ///< those that draw, with their arguments
    std::map<GLuint, Storage> storages;       ///< by texture
    int transfers = 0;                        ///< calls that upload, make storage or read back

    /// Makes the calls again, straight one after another.
    void replay() const;
};

/// The calls that an action makes.
GLCalls record(const std::function<void()>& action);

/// Makes the driver take program binaries whatever their announced format.
void acceptProgramBinaries(bool accept);

} // namespace tidalume::bench
