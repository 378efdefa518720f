// Cache files of any content, before a driver that accepts or rejects what is in them.

#include "foundation/GlobalProperty.h"
#include "foundation/ProgramBuilder.h"
#include "headless/HeadlessContext.h"
#include "testing/DriversOwn.h"
#include "tests/support/Files.h"
#include "tests/support/LiveNames.h"

#include <GLES3/gl3.h>
#include <android/log.h>

#include <cassert>
#include <cstring>
#include <fuzzer/FuzzedDataProvider.h>
#include <string>

namespace {

constexpr char vertexSource[] = "#version 300 es\nvoid main() { gl_Position = vec4(0.0); }";
constexpr char fragmentSource[] = "#version 300 es\nvoid main() {}";

bool accepts;           ///< what the stand-in of glProgramBinary does
GLuint accepted;        ///< the program that counts as linked
std::string handedOver; ///< the binary that it got, read whole

} // namespace

extern "C" {
void glProgramBinary(GLuint program, GLenum /*format*/, const void* binary, GLsizei length) {
    handedOver.assign(static_cast<const char*>(binary), static_cast<size_t>(length));
    if (accepts) accepted = program;
}

void glGetProgramiv(GLuint program, GLenum name, GLint* value) {
    static const auto real = DRIVERS_OWN(glGetProgramiv);
    real(program, name, value);
    if (name == GL_LINK_STATUS && program != 0 && program == accepted) *value = GL_TRUE;
}

int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    std::strcpy(GlobalProperty::ROOT_DIR, "./"); // the fuzzer works in a folder of its own
    __android_log_set_logger([](const __android_logger_data*, const char*) {});
    static const tidalume::headless::HeadlessContext context(8, 8);
    return 0;
}

/// One byte tells what the driver does, the others are the file.
int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzedDataProvider bytes(data, size);
    accepts = bytes.ConsumeBool();
    accepted = 0;
    handedOver.clear();
    const std::string content = bytes.ConsumeRemainingBytesAsString();
    writeFile("Program.dat", content);

    const GLuint program = createProgram(vertexSource, fragmentSource, "Program");
    GLint isLinked = 0;
    glGetProgramiv(program, GL_LINK_STATUS, &isLinked);
    assert(isLinked == GL_TRUE && "a program whatever the file holds");
    assert(handedOver == content && "the driver gets the whole file and nothing else");
    assert((accepted == (accepts ? program : 0)) && "an accepted binary is used");

    const std::string after = fileContent("Program.dat");
    GLint length = 0;
    glGetProgramiv(program, GL_PROGRAM_BINARY_LENGTH, &length);
    assert((accepts ? after == content : after.size() == static_cast<size_t>(length)) &&
           "an accepted file stays, a rejected one is replaced by the new binary");
    glDeleteProgram(program);
    // An input makes two programs and two shaders at most.
    assert(liveObjects(program < 9 ? 1 : program - 8, program + 1) == 0 && "nothing that was made is left");
    return 0;
}
}
