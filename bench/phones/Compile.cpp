#include "bench/phones/Figures.h"
#include "foundation/GlobalProperty.h"
#include "foundation/ProgramBuilder.h"
#include "headless/HeadlessContext.h"
#include "headless/Pixels.h"
#include "reference/Shaders.h"
#include "testing/Effects.h"
#include "testing/Looks.h"

#include <EGL/egl.h>

#include <GLES2/gl2ext.h>
#include <cstring>
#include <iostream>
#include <map>
#include <stdexcept>

namespace tidalume::phones {
namespace {

bool plainForms = false;
std::map<GLuint, std::string> programNames;

void GL_APIENTRY printMessage(GLenum, GLenum, GLuint, GLenum, GLsizei, const GLchar* message, const void*) {
    std::cout << "message " << message << std::endl;
}

void printMessages() {
    const auto setCallback =
        reinterpret_cast<PFNGLDEBUGMESSAGECALLBACKKHRPROC>(eglGetProcAddress("glDebugMessageCallbackKHR"));
    if (!setCallback) throw std::runtime_error("the driver has no messages (GL_KHR_debug)");
    glEnable(GL_DEBUG_OUTPUT_KHR);
    glEnable(GL_DEBUG_OUTPUT_SYNCHRONOUS_KHR);
    setCallback(printMessage, nullptr);
}

bool canDrawInto(GLenum internalFormat) {
    GLuint texture = 0;
    GLuint framebuffer = 0;
    glGenTextures(1, &texture);
    glGenFramebuffers(1, &framebuffer);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexStorage2D(GL_TEXTURE_2D, 1, internalFormat, 16, 16);
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, texture, 0);
    const bool complete = glCheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE;
    glDeleteFramebuffers(1, &framebuffer);
    glDeleteTextures(1, &texture);
    return complete;
}

void printLimits() {
    const std::pair<const char*, GLenum> formats[] = {
        {"R16F", GL_R16F}, {"RG16F", GL_RG16F}, {"RGB16F", GL_RGB16F}, {"RGBA16F", GL_RGBA16F}};
    GLint textureSize = 0;
    GLfloat pointSizes[2] = {};
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &textureSize);
    glGetFloatv(GL_ALIASED_POINT_SIZE_RANGE, pointSizes);
    std::cout << "limit texture size=" << textureSize << "\nlimit point size=" << pointSizes[1] << "\n";
    for (const auto& [name, format] : formats)
        std::cout << "limit drawn into " << name << "=" << (canDrawInto(format) ? "yes" : "no") << "\n";
}

/// What the driver says from here on is about this program.
void begin(const std::string& program) {
    std::cout << "program " << program << std::endl;
}

/// The texts of a form.
reference::ProgramForm form(const char* vertex, const char* fragment, const char* name) {
    if (plainForms)
        for (const reference::ProgramForm& plain : reference::plain::programs)
            if (std::strcmp(plain.cacheName, name) == 0) return plain;
    return {name, vertex, fragment};
}

} // namespace

void printCompilation(bool plain) {
    plainForms = plain;
    GlobalProperty::BINARY_SHADER = true; // then programs are built by name
    const int width = AnyEffect::width;
    const int height = AnyEffect::height;
    const headless::HeadlessContext context(width, height);
    std::cout << "driver " << context.driver() << "\n";
    printLimits();
    printMessages();

    std::map<std::string, AnyEffect> effects;
    for (const EffectCase& effectCase : effectCases())
        effects[effectCase.name] = effectCase.make().prepare();
    begin("");
    const Inputs inputs = {
        width, height, effects["ShallowWaterIterative"].texture(), effects["NormalMapBuilder"].texture(),
        headless::makeTexture(GL_RGBA8, width, height, std::vector<std::uint8_t>(4 * width * height, 255))};
    std::map<std::string, std::function<void()>> operations;
    for (const auto& [name, effect] : effects) {
        for (const Operation& operation : effect.operations(inputs)) {
            operation.run();
            operations[operation.name] = operation.run;
        }
    }
    for (const LookCase& lookCase : lookCases) {
        const std::unique_ptr<Look> look = lookCase.make();
        look->contextCreated();
        look->setSize(width, height);
        look->touch(0, 0.5F * width, 0.5F * height, TouchPhase::Down);
        for (int frame = 0; frame < 8; ++frame)
            look->draw(frame / 60.0);
    }
    begin("");
    printCalls(operations, width, height);
}

} // namespace tidalume::phones

// The linker sends the library's calls through here (--wrap).
// NOLINTBEGIN(bugprone-reserved-identifier): the names that it asks for
extern "C" {

unsigned int __wrap__Z13createProgramPKcS0_S0_(const char* vertex, const char* fragment, const char* name) {
    using namespace tidalume::phones;
    begin(name);
    const auto texts = form(vertex, fragment, name);
    const unsigned int program = createProgram(texts.vertex, texts.fragment);
    programNames[program] = name;
    return program;
}

/// Drivers compile some variants in their own threads, or when they are first drawn with.
void __real_glUseProgram(GLuint program);
void __wrap_glUseProgram(GLuint program) {
    using namespace tidalume::phones;
    glFinish();
    begin(program == 0 ? "" : programNames.at(program));
    __real_glUseProgram(program);
}
}
// NOLINTEND(bugprone-reserved-identifier)
