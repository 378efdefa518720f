#include "foundation/Diagnostics.h"

#include "tests/support/GLTest.h"

#include <EGL/egl.h>

#include <dlfcn.h>
#include <gmock/gmock.h>
#include <sstream>

/// Where not 0, the driver is made to refuse this attribute, and no two others read the same.
static EGLint refusedAttribute = 0;

extern "C" EGLBoolean eglGetConfigAttrib(EGLDisplay display, EGLConfig config, EGLint attribute, EGLint* value) {
    const auto real = reinterpret_cast<decltype(&eglGetConfigAttrib)>(dlsym(RTLD_NEXT, "eglGetConfigAttrib"));
    if (!real(display, config, attribute == refusedAttribute ? EGL_NONE : attribute, value)) return EGL_FALSE;
    if (refusedAttribute != 0) *value += attribute << 16;
    return EGL_TRUE;
}

namespace {

using namespace testing;

using DiagnosticsTest = GLTest;
using NamedCodes = std::vector<std::pair<EGLint, std::string>>;

NamedCodes namedCodes(std::initializer_list<EGLint> codes, const char* names) {
    NamedCodes all;
    std::istringstream stream(names);
    for (const EGLint code : codes) {
        all.emplace_back(code, "");
        std::getline(stream >> std::ws, all.back().second, ',');
    }
    return all;
}
/// Macros of EGL/egl.h with their names.
#define NAMED(...) namedCodes({__VA_ARGS__}, #__VA_ARGS__)

LogLine error(const std::string& message) {
    return {6, "EGLUtils", message};
}

TEST_F(DiagnosticsTest, CheckGLErrorLogsEveryPendingError) {
    checkGLError("nothing");
    EXPECT_THAT(log.take(), IsEmpty());
    glRecorder().faults.pendingErrors = {0x500, 0x501, 0x502, 0x505, 0x506};
    checkGLError("glTest mName");
    EXPECT_THAT(log.take(), ElementsAre(error("after glTest mName() glError (0x500) GL_INVALID_ENUM\n"),
                                        error("after glTest mName() glError (0x501) GL_INVALID_VALUE\n"),
                                        error("after glTest mName() glError (0x502) GL_INVALID_OPERATION\n"),
                                        error("after glTest mName() glError (0x505) GL_OUT_OF_MEMORY\n"),
                                        error("after glTest mName() glError (0x506)\n")));
    glEnable(GL_TEXTURE_2D);
    checkGLError("the driver's own");
    EXPECT_THAT(log.take(), ElementsAre(error("after the driver's own() glError (0x500) GL_INVALID_ENUM\n")));
}

TEST_F(DiagnosticsTest, CheckEGLErrorLogsTheReturnValueAndTheError) {
    checkEGLError("eglTest", EGL_TRUE);
    EXPECT_THAT(log.take(), IsEmpty());
    checkEGLError("eglTest", EGL_FALSE);
    EXPECT_THAT(log.take(), ElementsAre(error("eglTest() returned 0\n")));
    EGLint value = 0;
    checkEGLError("eglTest", eglGetConfigAttrib(eglGetCurrentDisplay(), nullptr, EGL_RED_SIZE, &value));
    EXPECT_THAT(log.take(), ElementsAre(error("eglTest() returned 0\n"),
                                        error("after eglTest() eglError EGL_BAD_CONFIG (0x3005)\n")));
}

TEST_F(DiagnosticsTest, NamesEGLErrors) {
    const NamedCodes errors =
        NAMED(EGL_SUCCESS, EGL_NOT_INITIALIZED, EGL_BAD_ACCESS, EGL_BAD_ALLOC, EGL_BAD_ATTRIBUTE, EGL_BAD_CONFIG,
              EGL_BAD_CONTEXT, EGL_BAD_CURRENT_SURFACE, EGL_BAD_DISPLAY, EGL_BAD_MATCH, EGL_BAD_NATIVE_PIXMAP,
              EGL_BAD_NATIVE_WINDOW, EGL_BAD_PARAMETER, EGL_BAD_SURFACE, EGL_CONTEXT_LOST);
    for (const auto& [code, name] : errors)
        EXPECT_EQ(stringEGLError(code), name);
    for (const int code : {0x300F, 0x2FFF, 0, -1})
        EXPECT_STREQ(stringEGLError(code), "UNKNOWN");
}

TEST_F(DiagnosticsTest, PrintGLStringLogsTheDriversString) {
    printGLString("Version", GL_VERSION);
    const std::string version = reinterpret_cast<const char*>(glGetString(GL_VERSION));
    EXPECT_THAT(log.take(), ElementsAre(error("GL Version = " + version + "\n")));
}

TEST_F(DiagnosticsTest, PrintsTheReadableAttributesOfAConfigurationInOrder) {
    const NamedCodes attributes =
        NAMED(EGL_BUFFER_SIZE, EGL_ALPHA_SIZE, EGL_BLUE_SIZE, EGL_GREEN_SIZE, EGL_RED_SIZE, EGL_DEPTH_SIZE,
              EGL_STENCIL_SIZE, EGL_CONFIG_CAVEAT, EGL_CONFIG_ID, EGL_LEVEL, EGL_MAX_PBUFFER_HEIGHT,
              EGL_MAX_PBUFFER_PIXELS, EGL_MAX_PBUFFER_WIDTH, EGL_NATIVE_RENDERABLE, EGL_NATIVE_VISUAL_ID,
              EGL_NATIVE_VISUAL_TYPE, EGL_SAMPLES, EGL_SAMPLE_BUFFERS, EGL_SURFACE_TYPE, EGL_TRANSPARENT_TYPE,
              EGL_TRANSPARENT_RED_VALUE, EGL_TRANSPARENT_GREEN_VALUE, EGL_TRANSPARENT_BLUE_VALUE,
              EGL_BIND_TO_TEXTURE_RGB, EGL_BIND_TO_TEXTURE_RGBA, EGL_MIN_SWAP_INTERVAL, EGL_MAX_SWAP_INTERVAL,
              EGL_LUMINANCE_SIZE, EGL_ALPHA_MASK_SIZE, EGL_COLOR_BUFFER_TYPE, EGL_RENDERABLE_TYPE, EGL_CONFORMANT);
    const EGLDisplay display = eglGetCurrentDisplay();
    EGLConfig config = nullptr;
    EGLint found = 0;
    ASSERT_TRUE(eglGetConfigs(display, &config, 1, &found));
    for (const EGLint refused : {EGL_NONE, EGL_ALPHA_SIZE, EGL_CONFORMANT}) {
        refusedAttribute = refused;
        std::ostringstream expected;
        for (const auto& [code, name] : attributes) {
            EGLint value = 0;
            if (!eglGetConfigAttrib(display, config, code, &value)) continue;
            expected << " " << name << ": " << std::dec << value << " (0x" << std::hex << value << ")";
        }
        internal::CaptureStdout();
        eglGetError();
        printEGLConfiguration(display, config);
        printEGLConfiguration(display, nullptr);
        EXPECT_EQ(internal::GetCapturedStdout(), expected.str() + "\n\n") << "nothing is read of no config";
        EXPECT_EQ(eglGetError(), EGL_SUCCESS);
    }
    refusedAttribute = 0;
}

} // namespace
