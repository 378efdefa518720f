#include "foundation/Diagnostics.h"

#include "tests/support/GLTest.h"

#include <EGL/egl.h>

#include <algorithm>
#include <gmock/gmock.h>
#include <sstream>

namespace {

using namespace testing;

using DiagnosticsTest = GLTest;

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
}

TEST_F(DiagnosticsTest, CheckEGLErrorLogsTheReturnValueAndTheError) {
    checkEGLError("eglTest", EGL_TRUE);
    EXPECT_THAT(log.take(), IsEmpty());
    EGLint value = 0;
    checkEGLError("eglTest", eglGetConfigAttrib(eglGetCurrentDisplay(), nullptr, EGL_RED_SIZE, &value));
    EXPECT_THAT(log.take(), ElementsAre(error("eglTest() returned 0\n"),
                                        error("after eglTest() eglError EGL_BAD_CONFIG (0x3005)\n")));
    for (const auto& [code, name] : {std::pair{EGL_SUCCESS, "EGL_SUCCESS"},
                                     {EGL_BAD_MATCH, "EGL_BAD_MATCH"},
                                     {EGL_CONTEXT_LOST, "EGL_CONTEXT_LOST"},
                                     {0x300F, "UNKNOWN"},
                                     {0x2FFF, "UNKNOWN"}})
        EXPECT_STREQ(stringEGLError(code), name);
}

TEST_F(DiagnosticsTest, PrintGLStringLogsTheDriversString) {
    printGLString("Version", GL_VERSION);
    const std::string version = reinterpret_cast<const char*>(glGetString(GL_VERSION));
    EXPECT_THAT(log.take(), ElementsAre(error("GL Version = " + version + "\n")));
}

TEST_F(DiagnosticsTest, PrintsTheReadableAttributesOfAConfigurationInOrder) {
    const EGLDisplay display = eglGetCurrentDisplay();
    EGLConfig config = nullptr;
    EGLint found = 0;
    ASSERT_TRUE(eglGetConfigs(display, &config, 1, &found));
    const auto printed = [&](EGLint attribute, const std::string& name) {
        std::ostringstream text;
        EGLint value = 0;
        eglGetConfigAttrib(display, config, attribute, &value);
        text << " EGL_" << name << ": " << std::dec << value << " (0x" << std::hex << value << ")";
        return text.str();
    };
    internal::CaptureStdout();
    printEGLConfiguration(display, config);
    printEGLConfiguration(display, nullptr);
    const std::string output = internal::GetCapturedStdout();
    EXPECT_THAT(output, StartsWith(printed(EGL_BUFFER_SIZE, "BUFFER_SIZE") + printed(EGL_ALPHA_SIZE, "ALPHA_SIZE")));
    EXPECT_THAT(output, HasSubstr(printed(EGL_MAX_PBUFFER_HEIGHT, "MAX_PBUFFER_HEIGHT") +
                                  printed(EGL_MAX_PBUFFER_PIXELS, "MAX_PBUFFER_PIXELS")));
    EXPECT_THAT(output, EndsWith(printed(EGL_CONFORMANT, "CONFORMANT") + "\n\n")) << "nothing is read of no config";
    EXPECT_EQ(std::count(output.begin(), output.end(), ':'), 32);
    EXPECT_EQ(eglGetError(), EGL_SUCCESS);
}

} // namespace
