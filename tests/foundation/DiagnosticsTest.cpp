#include "foundation/Diagnostics.h"

#include "tests/support/GLTest.h"

#include <EGL/egl.h>

#include <gmock/gmock.h>

namespace {

using namespace testing;

using DiagnosticsTest = GLTest;

TEST_F(DiagnosticsTest, LogsToTheLetter) {
    checkGLError("nothing");
    glRecorder().faults.pendingErrors = {0x500, 0x501, 0x502, 0x505, 0x506};
    checkGLError("glTest mName");
    checkEGLError("nothing", EGL_TRUE);
    EGLint value = 0;
    checkEGLError("eglTest", eglGetConfigAttrib(eglGetCurrentDisplay(), nullptr, EGL_RED_SIZE, &value));
    printGLString("Version", GL_VERSION);
    const std::string version = reinterpret_cast<const char*>(glGetString(GL_VERSION));
    std::string lines;
    for (const LogLine& line : log.take())
        lines += testing::PrintToString(line);
    EXPECT_EQ(lines, R"(6 EGLUtils: after glTest mName() glError (0x500) GL_INVALID_ENUM
6 EGLUtils: after glTest mName() glError (0x501) GL_INVALID_VALUE
6 EGLUtils: after glTest mName() glError (0x502) GL_INVALID_OPERATION
6 EGLUtils: after glTest mName() glError (0x505) GL_OUT_OF_MEMORY
6 EGLUtils: after glTest mName() glError (0x506)
6 EGLUtils: eglTest() returned 0
6 EGLUtils: after eglTest() eglError EGL_BAD_CONFIG (0x3005)
6 EGLUtils: GL Version = )" +
                         version + "\n");
}

TEST_F(DiagnosticsTest, NamesEGLErrors) {
    EXPECT_STREQ(stringEGLError(EGL_SUCCESS - 1), "UNKNOWN");
    EXPECT_STREQ(stringEGLError(EGL_SUCCESS), "EGL_SUCCESS");
    EXPECT_STREQ(stringEGLError(EGL_BAD_MATCH), "EGL_BAD_MATCH");
    EXPECT_STREQ(stringEGLError(EGL_CONTEXT_LOST), "EGL_CONTEXT_LOST");
    EXPECT_STREQ(stringEGLError(EGL_CONTEXT_LOST + 1), "UNKNOWN");
}

TEST_F(DiagnosticsTest, PrintsTheReadableAttributesOfAConfigurationInOrder) {
    const EGLDisplay display = eglGetCurrentDisplay();
    const EGLint wanted[] = {EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_BUFFER_SIZE, 32, EGL_ALPHA_SIZE, 8, EGL_NONE};
    EGLConfig config = nullptr;
    EGLint found = 0;
    eglChooseConfig(display, wanted, &config, 1, &found);
    internal::CaptureStdout();
    printEGLConfiguration(display, config);
    printEGLConfiguration(display, nullptr);
    const std::string output = internal::GetCapturedStdout();
    EXPECT_THAT(output, MatchesRegex("( EGL_[A-Z_]+: -?[0-9]+ \\(0x[0-9a-f]+\\)){32}\n\n")) << "none of no config";
    EXPECT_THAT(output, StartsWith(" EGL_BUFFER_SIZE: 32 (0x20) EGL_ALPHA_SIZE: 8 (0x8) EGL_BLUE_SIZE: 8 (0x8)"));
    EXPECT_THAT(output,
                ContainsRegex("EGL_MAX_PBUFFER_HEIGHT: [^:]+ EGL_MAX_PBUFFER_PIXELS: .* EGL_CONFORMANT: [^:]+$"));
    EXPECT_EQ(eglGetError(), EGL_SUCCESS);
}

} // namespace
