#pragma once

#include "foundation/GlobalProperty.h"
#include "headless/HeadlessContext.h"
#include "testing/GLRecorder.h"
#include "tests/support/LogCapture.h"

#include <cstring>
#include <gmock/gmock.h>
#include <vector>

/// A test with a GL context current, the recorder reset, the log captured and the settings at their defaults. Fails
/// afterwards where a GL error is pending or a line was left in the log that the test did not take.
class GLTest : public testing::Test {
  protected:
    static constexpr int width = 97;
    static constexpr int height = 61;

    GLTest() : context(width, height) {
        glClear(GL_COLOR_BUFFER_BIT); // a new framebuffer 0 holds anything
        glRecorder().reset();
        GlobalProperty::DEBUG_LOG = false;
        GlobalProperty::BINARY_SHADER = false;
        GlobalProperty::ROOT_DIR[0] = '\0';
    }

    void TearDown() override {
        glRecorder().faults = {};
        EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
        EXPECT_EQ(log.take(), std::vector<std::string>{});
    }

    /// To the bit, a NaN too.
    static void expectSame(const float* made, const float* expected, size_t count) {
        for (size_t i = 0; i < count; ++i)
            ASSERT_EQ(std::memcmp(made + i, expected + i, sizeof(float)), 0)
                << i << ": " << made[i] << " instead of " << expected[i];
    }

    tidalume::headless::HeadlessContext context;
    LogCapture log;
};
