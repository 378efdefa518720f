#include "foundation/ProgramBuilder.h"

#include "foundation/Diagnostics.h"
#include "foundation/GlobalProperty.h"
#include "foundation/Log.h"

#include <GLES3/gl3.h>

#include <climits>
#include <cstdlib>
#include <cstring>
#include <sys/stat.h>

namespace {

using tidalume::logTag;

/// The one binary format (GL_Z400_BINARY_AMD) that cache files are loaded as. It is not stored with the file: a driver
/// with another format rejects the binary and the text build follows.
// kept: binary-format
constexpr GLenum cacheBinaryFormat = 0x8740;

using GetParameter = void (*)(GLuint, GLenum, GLint*);
using GetInfoLog = void (*)(GLuint, GLsizei, GLsizei*, GLchar*);

GLint parameter(GetParameter get, GLuint object, GLenum name) {
    GLint value = 0;
    get(object, name, &value);
    return value;
}

/// The info log of a shader or program as a string to free, or null when there is none or no memory for it.
char* infoLog(GetParameter getParameter, GetInfoLog getInfoLog, GLuint object) {
    const GLint length = parameter(getParameter, object, GL_INFO_LOG_LENGTH);
    if (length == 0) return nullptr;
    // Zeroed, so that a driver that announces a log and writes none leaves an empty string.
    auto* log = static_cast<char*>(std::calloc(static_cast<size_t>(length), 1));
    if (log) getInfoLog(object, length, nullptr, log);
    return log;
}

/// Whether a cache file may be opened at the path. Opening a pipe or a socket would block or fail, and a folder can be
/// opened for reading although it holds no binary. A path where nothing is yet may be opened.
bool isOpenable(const char* path) {
    struct stat status = {};
    if (stat(path, &status) != 0) return true;
    return !S_ISDIR(status.st_mode) && !S_ISFIFO(status.st_mode) && !S_ISSOCK(status.st_mode);
}

FILE* openCacheFile(const char* path, const char* mode) {
    return isOpenable(path) ? std::fopen(path, mode) : nullptr;
}

/// Length of an open file in bytes, positioned at its start again; negative when it has none that a GLsizei can hold.
long fileLength(FILE* file) {
    if (std::fseek(file, 0, SEEK_END) != 0) return -1;
    const long length = std::ftell(file);
    if (std::fseek(file, 0, SEEK_SET) != 0 || length > INT_MAX) return -1;
    return length;
}

/// A zeroed buffer for a binary. At least one byte, since an empty request may give null without being out of memory.
void* allocateBinary(long length) {
    return std::calloc(length > 0 ? static_cast<size_t>(length) : 1, 1);
}

char* cachePath(const char* name) { // kept: cache-key
    char* withoutSuffix = appendString(GlobalProperty::ROOT_DIR, name);
    if (!withoutSuffix) return nullptr;
    char* path = appendString(withoutSuffix, ".dat");
    std::free(withoutSuffix);
    return path;
}

/// A program from a cached binary, or 0 when the driver rejects it.
GLuint programFromBinary(const void* binary, GLsizei length) {
    const GLuint program = glCreateProgram();
    glProgramBinary(program, cacheBinaryFormat, binary, length);
    checkGLError("glProgramBinary");
    if (parameter(glGetProgramiv, program, GL_LINK_STATUS) != 0) return program;
    __android_log_print(ANDROID_LOG_ERROR, logTag, "in createProgram() link fail, so createProgram with text again");
    glDeleteProgram(program);
    return 0;
}

/// Outcome of a look into the cache.
struct CacheLookup {
    GLuint program; ///< 0 when no usable binary was found
    bool outOfMemory;
};

CacheLookup loadCachedProgram(const char* path) {
    FILE* file = openCacheFile(path, "rb");
    if (!file) return {0, false};
    const long length = fileLength(file);
    if (length < 0) {
        std::fclose(file);
        return {0, false};
    }
    void* binary = allocateBinary(length);
    if (!binary) {
        __android_log_print(ANDROID_LOG_ERROR, logTag, "in createProgram() malloc fail");
        std::fclose(file);
        return {0, true};
    }
    // A short read leaves zeros at the end, and the driver rejects such a binary.
    [[maybe_unused]] const size_t read = std::fread(binary, 1, static_cast<size_t>(length), file);
    std::fclose(file);
    const GLuint program = programFromBinary(binary, static_cast<GLsizei>(length));
    std::free(binary);
    return {program, false};
}

/// Attaches and links. Takes the two compiled shaders over: a linked program keeps them alive as long as it needs them.
GLuint linkProgram(GLuint vertexShader, GLuint fragmentShader) {
    const GLuint program = glCreateProgram();
    if (program != 0) {
        glAttachShader(program, vertexShader);
        checkGLError("glAttachShader"); // kept: bare-labels
        glAttachShader(program, fragmentShader);
        checkGLError("glAttachShader");
        glLinkProgram(program);
    }
    glDeleteShader(vertexShader);
    glDeleteShader(fragmentShader);
    return program;
}

} // namespace

unsigned int loadShader(unsigned int shaderType, const char* source) {
    const GLuint shader = glCreateShader(shaderType);
    if (shader == 0) return 0;
    glShaderSource(shader, 1, &source, nullptr);
    glCompileShader(shader);
    if (parameter(glGetShaderiv, shader, GL_COMPILE_STATUS) != 0) return shader;

    if (char* log = infoLog(glGetShaderiv, glGetShaderInfoLog, shader)) {
        // kept: shader-number
        __android_log_print(ANDROID_LOG_ERROR, logTag, "Could not compile shader %d:\n%s\n",
                            static_cast<int>(shaderType), log);
        std::free(log);
    }
    glDeleteShader(shader);
    return 0;
}

unsigned int createProgram(const char* vertexSource, const char* fragmentSource) {
    const GLuint vertexShader = loadShader(GL_VERTEX_SHADER, vertexSource);
    if (vertexShader == 0) return 0;
    const GLuint fragmentShader = loadShader(GL_FRAGMENT_SHADER, fragmentSource);
    if (fragmentShader == 0) {
        glDeleteShader(vertexShader);
        return 0;
    }
    const GLuint program = linkProgram(vertexShader, fragmentShader);
    if (program == 0) return 0;
    if (parameter(glGetProgramiv, program, GL_LINK_STATUS) == GL_TRUE) return program;

    if (char* log = infoLog(glGetProgramiv, glGetProgramInfoLog, program)) {
        __android_log_print(ANDROID_LOG_ERROR, logTag, "Could not link program:\n%s\n", log);
        std::free(log);
    }
    glDeleteProgram(program);
    return 0;
}

unsigned int createProgram(const char* vertexSource, const char* fragmentSource, const char* name) {
    char* path = name ? cachePath(name) : nullptr;
    if (!path) return createProgram(vertexSource, fragmentSource);

    const CacheLookup cached = loadCachedProgram(path);
    if (cached.program != 0 || cached.outOfMemory) { // kept: no-text
        std::free(path);
        return cached.program;
    }
    const GLuint program = createProgram(vertexSource, fragmentSource);
    if (program == 0) {
        std::free(path);
        return 0;
    }
    saveProgram(program, path, nullptr);
    return program;
}

// kept: save-file
unsigned int saveProgram(unsigned int program, const char* path, FILE* /*file*/) {
    auto* ownedPath = const_cast<char*>(path); // kept: save-path
    GLenum format = cacheBinaryFormat;
    const GLint length = parameter(glGetProgramiv, program, GL_PROGRAM_BINARY_LENGTH);
    checkGLError("glGetProgramiv");

    void* binary = allocateBinary(length);
    if (!binary) {
        std::free(ownedPath); // kept: malloc-label
        __android_log_print(ANDROID_LOG_ERROR, logTag, "in createProgram() malloc fail");
        return 0;
    }
    glGetProgramBinary(program, length, nullptr, &format, binary);
    checkGLError("glGetProgramBinary");

    FILE* file = openCacheFile(path, "wb"); // kept: in-place
    std::free(ownedPath);
    if (!file) {
        // kept: fopen
        __android_log_print(ANDROID_LOG_ERROR, logTag, "in saveProgram() FILENAME fopen error");
        std::free(binary);
        return 0;
    }
    const size_t written = std::fwrite(binary, 1, static_cast<size_t>(length), file);
    const bool closed = std::fclose(file) == 0;
    std::free(binary);
    return closed && written == static_cast<size_t>(length) ? program : 0;
}

char* appendString(const char* first, const char* second) {
    const size_t firstLength = std::strlen(first);
    const size_t secondLength = std::strlen(second);
    auto* joined = static_cast<char*>(std::malloc(firstLength + secondLength + 1));
    if (!joined) {
        // kept: newline
        __android_log_print(ANDROID_LOG_ERROR, logTag, "Null string error in appendString\n");
        return nullptr;
    }
    std::memcpy(joined, first, firstLength); // NOLINT(bugprone-not-null-terminated-result): the next line ends it
    std::memcpy(joined + firstLength, second, secondLength + 1);
    return joined;
}
