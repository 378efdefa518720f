#pragma once

#include <GLES3/gl3.h>

#include <cstddef>
#include <set>

/// The GL names from first up to end that are an object's, by glIsTexture or its like. A driver counts its names up:
/// those of a long session lie above. Names that were made but never bound are no objects.
inline std::set<GLuint> liveNames(GLboolean (*isObject)(GLuint), GLuint first = 1, GLuint end = 1000) {
    std::set<GLuint> names;
    for (GLuint name = first; name < end; ++name)
        if (isObject(name)) names.insert(name);
    return names;
}

/// How many objects of all kinds there are under such names.
inline std::size_t liveObjects(GLuint first = 1, GLuint end = 1000) {
    std::size_t count = 0;
    for (const auto isObject : {glIsTexture, glIsFramebuffer, glIsRenderbuffer, glIsProgram, glIsShader, glIsBuffer,
                                glIsVertexArray, glIsSampler})
        count += liveNames(isObject, first, end).size();
    return count;
}
