#include "foundation/Diagnostics.h"

#include "tests/support/GLTest.h"

#include <EGL/egl.h>

#include <algorithm>
#include <gmock/gmock.h>
#include <sstream>

namespace {

using testing::ElementsAre;

LogLine error(const std::string& message) {
    return {6, "EGLUtils", message};
}

class DiagnosticsTest : public GLTest {};

TEST_F(DiagnosticsTest, CheckGLErrorLogsEveryPendingError) {
    checkGLError("nothing");
    EXPECT_THAT(log.take(), ElementsAre());

    glRecorder().faults.pendingErrors = {GL_INVALID_ENUM, GL_INVALID_VALUE, GL_INVALID_OPERATION, GL_OUT_OF_MEMORY,
                                         GL_INVALID_FRAMEBUFFER_OPERATION};
    checkGLError("glTest mName");
    EXPECT_THAT(log.take(), ElementsAre(error("after glTest mName() glError (0x500) GL_INVALID_ENUM\n"),
                                        error("after glTest mName() glError (0x501) GL_INVALID_VALUE\n"),
                                        error("after glTest mName() glError (0x502) GL_INVALID_OPERATION\n"),
                                        error("after glTest mName() glError (0x505) GL_OUT_OF_MEMORY\n"),
                                        error("after glTest mName() glError (0x506)\n")));
    glEnable(GL_TEXTURE_2D);
    checkGLError("the driver's own");
    EXPECT_THAT(log.take(), ElementsAre(error("after the driver's own() glError (0x500) GL_INVALID_ENUM\n")));
    EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
}

TEST_F(DiagnosticsTest, CheckEGLErrorLogsTheReturnValueAndTheError) {
    checkEGLError("eglTest", EGL_TRUE);
    EXPECT_THAT(log.take(), ElementsAre());
    checkEGLError("eglTest", EGL_FALSE);
    EXPECT_THAT(log.take(), ElementsAre(error("eglTest() returned 0\n")));

    EGLint value = 0;
    const EGLBoolean read = eglGetConfigAttrib(eglGetCurrentDisplay(), nullptr, EGL_RED_SIZE, &value);
    checkEGLError("eglGetConfigAttrib", read);
    EXPECT_THAT(log.take(), ElementsAre(error("eglGetConfigAttrib() returned 0\n"),
                                        error("after eglGetConfigAttrib() eglError EGL_BAD_CONFIG (0x3005)\n")));
}

TEST_F(DiagnosticsTest, NamesEGLErrors) {
    EXPECT_STREQ(stringEGLError(0x3000), "EGL_SUCCESS");
    EXPECT_STREQ(stringEGLError(0x300A), "EGL_BAD_NATIVE_PIXMAP");
    EXPECT_STREQ(stringEGLError(0x300E), "EGL_CONTEXT_LOST");
    for (const int code : {0x300F, 0x2FFF, 0, -1})
        EXPECT_STREQ(stringEGLError(code), "UNKNOWN");
}

TEST_F(DiagnosticsTest, PrintGLStringLogsTheDriversString) {
    printGLString("Version", GL_VERSION);
    const std::string version = reinterpret_cast<const char*>(glGetString(GL_VERSION));
    EXPECT_THAT(log.take(), ElementsAre(error("GL Version = " + version + "\n")));
}

TEST_F(DiagnosticsTest, PrintsTheReadableAttributesOfAConfigurationInOrder) {
    EGLDisplay display = eglGetCurrentDisplay();
    EGLint id = 0;
    eglQueryContext(display, eglGetCurrentContext(), EGL_CONFIG_ID, &id);
    const EGLint wanted[] = {EGL_CONFIG_ID, id, EGL_NONE};
    EGLConfig config = nullptr;
    EGLint found = 0;
    ASSERT_TRUE(eglChooseConfig(display, wanted, &config, 1, &found));

    testing::internal::CaptureStdout();
    printEGLConfiguration(display, config);
    const std::string line = testing::internal::GetCapturedStdout();

    EXPECT_EQ(line.find(" EGL_BUFFER_SIZE: 32 (0x20) EGL_ALPHA_SIZE: 8 (0x8) EGL_BLUE_SIZE: 8 (0x8)"), 0U) << line;
    EXPECT_THAT(line, testing::HasSubstr(" EGL_CONFIG_ID: " + std::to_string(id) + " (0x"));
    EXPECT_THAT(line,
                testing::ContainsRegex("EGL_TRANSPARENT_RED_VALUE.*EGL_TRANSPARENT_GREEN_VALUE.*EGL_TRANSPARENT_"
                                       "BLUE_VALUE.*EGL_BIND_TO_TEXTURE_RGB.*EGL_CONFORMANT: [0-9]+ .0x[0-9a-f]+.\n$"));
    EXPECT_EQ(std::count(line.begin(), line.end(), '\n'), 1);
    EXPECT_EQ(std::count(line.begin(), line.end(), ':'), 32);

    testing::internal::CaptureStdout();
    printEGLConfiguration(display, nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "\n") << "attributes that cannot be read are left out";
    EXPECT_EQ(eglGetError(), EGL_SUCCESS);
}

} // namespace
