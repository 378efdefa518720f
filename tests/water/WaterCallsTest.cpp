#include "effects/water/IntensityMapBuilder.h"
#include "effects/water/NormalMapBuilder.h"
#include "effects/water/ShallowWater.h"
#include "effects/water/ShallowWaterIterative.h"
#include "effects/water/ShallowWaterRenderer.h"
#include "tests/support/GLTest.h"
#include "tests/support/TestPeer.h"

#include <sstream>

/// The sequence of GL calls and labels of every operation of the water effects.
namespace {

/// One line per call, without trailing blanks.
std::string asText(const GLRecorder::Calls& calls) {
    std::string text = "\n";
    for (const std::string& call : calls)
        text += call.substr(0, call.find_last_not_of(' ') + 1) + "\n";
    return text;
}

std::string join(std::initializer_list<std::string> pieces) {
    std::string text;
    for (const std::string& piece : pieces)
        text += piece;
    return text;
}

class WaterCallsTest : public GLTest {
  protected:
    /// @param expected  one call per line; PROGRAM stands for the program's name
    template <typename Action>
    void expectCalls(Action action, std::string expected, GLuint program = 0) {
        const size_t place = expected.find("PROGRAM");
        if (place != std::string::npos) expected.replace(place, 7, std::to_string(program));
        EXPECT_EQ(asText(glRecorder().record(action)), expected);
    }

    /// The look-ups and the labels of an init.
    template <typename Effect>
    std::string lookUps(Effect& effect) {
        GLRecorder::Calls calls;
        for (const std::string& call : glRecorder().record([&] { effect.init(); })) {
            if (call.find("Location") != std::string::npos || call.find("checkGLError create") == 0)
                calls.push_back(call);
        }
        return asText(calls);
    }

    float center[2] = {12.0F, 20.5F};
    float center2[2] = {90.0F, 40.0F};
};

/// The set-up of a texture after its glTexImage2D and label.
const char* const textureParameters = R"(glTexParameteri TEXTURE_2D TEXTURE_MIN_FILTER LINEAR
glTexParameteri TEXTURE_2D TEXTURE_MAG_FILTER LINEAR
glTexParameteri TEXTURE_2D TEXTURE_WRAP_S CLAMP_TO_EDGE
glTexParameteri TEXTURE_2D TEXTURE_WRAP_T CLAMP_TO_EDGE
)";

const char* const clear = R"(glCheckFramebufferStatus
glClearColor 0 0 0 1
glClear COLOR_BUFFER_BIT
glBindFramebuffer FRAMEBUFFER 0
)";

TEST_F(WaterCallsTest, IntensityMapBuilder) {
    IntensityMapBuilder builder;
    EXPECT_EQ(lookUps(builder), R"(
checkGLError createProgram mProgramDropLine
glGetUniformLocation matrixMVP
glGetUniformLocation center
glGetUniformLocation center2
glGetUniformLocation radius
glGetUniformLocation strength
glGetUniformLocation preserveWeight
glGetAttribLocation vertices
checkGLError createProgram mProgramHorizontalWave
glGetUniformLocation matrixMVP
glGetUniformLocation center
glGetUniformLocation radius
glGetUniformLocation strength
glGetUniformLocation waveRadius
glGetUniformLocation waveCount
glGetUniformLocation preserveWeight
glGetAttribLocation vertices
)");
    EXPECT_EQ(TestPeer::mDropLinePreserveWeight(builder), -1) << "looked up, but not there";

    expectCalls([&] { builder.setScreenSize(width, height); }, join({R"(
glGetIntegerv MAX_TEXTURE_SIZE
glGenTextures 1
glBindTexture TEXTURE_2D 1
glTexImage2D R16F 97 61 RED HALF_FLOAT none
checkGLError glTexImage2D mTexture
)",
                                                                     textureParameters, R"(glGenFramebuffers 1
checkGLError glGenFramebuffers mFBONormal
glBindFramebuffer FRAMEBUFFER 1
checkGLError glBindFramebuffer mFBONormal
glFramebufferTexture2D 1
checkGLError glFramebufferTexture2D mFBONormal mTexture
)",
                                                                     clear}));

    // Found and left: whatever blending and depth test there are.
    expectCalls([&] { builder.addDropLine(center, center2, 10.0F, 0.5F, 0.25F); }, R"(
glViewport 0 0 97 61
glBindFramebuffer FRAMEBUFFER 1
glUseProgram PROGRAM
glUniformMatrix4fv matrixMVP 1
glUniform2fv center 12 20.5
glUniform2fv center2 90 40
glUniform1f radius 10
glUniform1f strength 0.5
glUniform1f preserveWeight 0.25
glVertexAttribPointer vertices 3 FLOAT 0 0
glEnableVertexAttribArray vertices
glDrawArrays TRIANGLE_STRIP 0 4
glDisableVertexAttribArray vertices
glFlush
glUseProgram 0
glBindFramebuffer FRAMEBUFFER 0
)",
                TestPeer::mProgramDropLine(builder));

    expectCalls([&] { builder.addHorizontalWave(30.0F, 10.0F, 0.5F, 7.0F, 2.0F, 0.25F); }, R"(
glDisable BLEND
glDisable DEPTH_TEST
glViewport 0 0 97 61
glBindFramebuffer FRAMEBUFFER 1
glUseProgram PROGRAM
glUniformMatrix4fv matrixMVP 1
glUniform1f center 30
glUniform1f radius 10
glUniform1f strength 0.5
glUniform1f waveRadius 7
glUniform1f waveCount 2
glUniform1f preserveWeight 0.25
glVertexAttribPointer vertices 3 FLOAT 0 0
glEnableVertexAttribArray vertices
glDrawArrays TRIANGLE_STRIP 0 4
glDisableVertexAttribArray vertices
glFlush
glUseProgram 0
glBindFramebuffer FRAMEBUFFER 0
)",
                TestPeer::mProgramHorizontalWave(builder));
}

TEST_F(WaterCallsTest, NormalMapBuilder) {
    NormalMapBuilder builder;
    EXPECT_EQ(lookUps(builder), R"(
checkGLError createProgram mProgram
glGetUniformLocation matrixMVP
glGetUniformLocation heightMax
glGetUniformLocation textureHeight
glGetAttribLocation vertices
)");
    expectCalls([&] { builder.setScreenSize(width, height); }, join({R"(
glGetIntegerv MAX_TEXTURE_SIZE
glGenTextures 1
glBindTexture TEXTURE_2D 1
glTexImage2D RGB16F 97 61 RGB HALF_FLOAT none
checkGLError glTexImage2D mTextureNormal
)",
                                                                     textureParameters, R"(glGenFramebuffers 1
checkGLError glGenFramebuffers mFBONormal
glBindFramebuffer FRAMEBUFFER 1
checkGLError glBindFramebuffer mFBONormal
glFramebufferTexture2D 1
checkGLError glFramebufferTexture2D mFBONormal mTextureNormal
)",
                                                                     clear}));
    expectCalls([&] { builder.build(7); }, R"(
glDisable BLEND
glDisable DEPTH_TEST
glViewport 0 0 97 61
glBindFramebuffer FRAMEBUFFER 1
glUseProgram PROGRAM
glUniform1i textureHeight 0
glActiveTexture TEXTURE0
glBindTexture TEXTURE_2D 7
glUniform1f heightMax 100
glUniformMatrix4fv matrixMVP 1
glVertexAttribPointer vertices 3 FLOAT 0 0
glEnableVertexAttribArray vertices
glDrawArrays TRIANGLE_STRIP 0 4
glDisableVertexAttribArray vertices
glFlush
glUseProgram 0
glBindFramebuffer FRAMEBUFFER 0
)",
                TestPeer::mProgram(builder));
}

TEST_F(WaterCallsTest, ShallowWaterIterativeSetUp) {
    ShallowWaterIterative water;
    EXPECT_EQ(lookUps(water), R"(
checkGLError createProgram mProgramDrop
glGetUniformLocation matrixMVP
glGetUniformLocation center
glGetUniformLocation radius
glGetUniformLocation strength
glGetUniformLocation preserveWeight
glGetAttribLocation vertices
checkGLError createProgram mProgramDropLine
glGetUniformLocation matrixMVP
glGetUniformLocation center
glGetUniformLocation center2
glGetUniformLocation radius
glGetUniformLocation strength
glGetUniformLocation preserveWeight
glGetAttribLocation vertices
checkGLError createProgram mProgramHorizontalWave
glGetUniformLocation matrixMVP
glGetUniformLocation center
glGetUniformLocation radius
glGetUniformLocation strength
glGetUniformLocation waveRadius
glGetUniformLocation waveCount
glGetUniformLocation preserveWeight
glGetAttribLocation vertices
checkGLError createProgram mProgramUpdate
glGetUniformLocation matrixMVP
glGetUniformLocation textureWater
glGetAttribLocation vertices
)");
    expectCalls([&] { water.setScreenSize(width, height); }, join({R"(
glGetIntegerv MAX_TEXTURE_SIZE
glGenTextures 2
glBindTexture TEXTURE_2D 1
glTexImage2D RG16F 97 61 RG HALF_FLOAT none
checkGLError glTexImage2D mTexturesWater[0]
)",
                                                                   textureParameters, R"(glBindTexture TEXTURE_2D 2
glTexImage2D RG16F 97 61 RG HALF_FLOAT none
checkGLError glTexImage2D mTexturesWater[1]
)",
                                                                   textureParameters, R"(glGenFramebuffers 2
checkGLError glGenFramebuffers mFBOsWater[0]
glBindFramebuffer FRAMEBUFFER 1
checkGLError glBindFramebuffer mFBOsWater[0]
glFramebufferTexture2D 1
checkGLError glFramebufferTexture2D mFBOsWater[0] mTexturesWater[0]
)",
                                                                   clear, R"(glBindFramebuffer FRAMEBUFFER 2
checkGLError glBindFramebuffer mFBOWater[1]
glFramebufferTexture2D 2
checkGLError glFramebufferTexture2D mFBOsWater[1] mTexturesWater[1]
)",
                                                                   clear}));
}

/// The three disturbances set their uniforms in three different orders.
TEST_F(WaterCallsTest, ShallowWaterIterativeDisturbances) {
    ShallowWaterIterative water;
    water.init();
    water.setScreenSize(width, height);
    const std::string drawing = R"(glVertexAttribPointer vertices 3 FLOAT 0 0
glEnableVertexAttribArray vertices
glDrawArrays TRIANGLE_STRIP 0 4
glDisableVertexAttribArray vertices
glFlush
glUseProgram 0
glBindFramebuffer FRAMEBUFFER 0
)";
    expectCalls([&] { water.addDrop(center, 10.0F, 0.5F, 0.25F); },
                join({R"(
glViewport 0 0 97 61
glBindFramebuffer FRAMEBUFFER 1
glUseProgram PROGRAM
glGetUniformLocation textureWater
glUniform1i textureWater 0
glActiveTexture TEXTURE0
glBindTexture TEXTURE_2D 2
glUniform2fv center 12 20.5
glUniform1f radius 10
glUniform1f strength 0.5
glUniform1f preserveWeight 0.25
glUniformMatrix4fv matrixMVP 1
)",
                      drawing}),
                TestPeer::mProgramDrop(water));
    expectCalls([&] { water.addDropLine(center, center2, 10.0F, 0.5F, 0.25F); },
                join({R"(
glViewport 0 0 97 61
glBindFramebuffer FRAMEBUFFER 2
glUseProgram PROGRAM
glGetUniformLocation textureWater
glUniform1i textureWater 0
glActiveTexture TEXTURE0
glBindTexture TEXTURE_2D 1
glUniform2fv center 12 20.5
glUniform2fv center2 90 40
glUniform1f radius 10
glUniform1f strength 0.5
glUniformMatrix4fv matrixMVP 1
glUniform1f preserveWeight 0.25
)",
                      drawing}),
                TestPeer::mProgramDropLine(water));
    expectCalls([&] { water.addHorizontalWave(30.0F, 10.0F, 0.5F, 7.0F, 2.0F, 0.25F); },
                join({R"(
glViewport 0 0 97 61
glBindFramebuffer FRAMEBUFFER 1
glUseProgram PROGRAM
glGetUniformLocation textureWater
glUniform1i textureWater 0
glActiveTexture TEXTURE0
glBindTexture TEXTURE_2D 2
glUniform1f center 30
glUniform1f radius 10
glUniform1f strength 0.5
glUniform1f waveRadius 7
glUniform1f waveCount 2
glUniform1f preserveWeight 0.25
glUniformMatrix4fv matrixMVP 1
checkGLError glUniformMatrix4fv matrixMVP
)",
                      drawing}),
                TestPeer::mProgramHorizontalWave(water));
}

TEST_F(WaterCallsTest, ShallowWaterIterativeUpdate) {
    ShallowWaterIterative water;
    water.init();
    water.setScreenSize(width, height);
    water.setIterationCount(1);
    expectCalls([&] { water.update(); }, R"(
glViewport 0 0 97 61
glBindFramebuffer FRAMEBUFFER 1
checkGLError glBindFramebuffer mFBOsWater[0]
glFramebufferTexture2D 1
checkGLError glFramebufferTexture2D mFBOsWater[0] mTexturesWater[0]
glUseProgram PROGRAM
glUniform1i textureWater 0
glActiveTexture TEXTURE0
glBindTexture TEXTURE_2D 2
checkGLError glBindTexture mProgramUpdate
glUniformMatrix4fv matrixMVP 1
checkGLError glUniformMatrix4fv matrixMVP
glVertexAttribPointer vertices 3 FLOAT 0 0
glEnableVertexAttribArray vertices
glDrawArrays TRIANGLE_STRIP 0 4
glDisableVertexAttribArray vertices
glFlush
glUseProgram 0
glBindFramebuffer FRAMEBUFFER 0
)",
                TestPeer::mProgramUpdate(water));
}

TEST_F(WaterCallsTest, ShallowWaterRenderer) {
    ShallowWaterRenderer renderer;
    EXPECT_EQ(lookUps(renderer), R"(
checkGLError createProgram mProgram
glGetUniformLocation textureNormal
glGetUniformLocation textureHeight
glGetUniformLocation textureBG
glGetUniformLocation matrixMVP
glGetUniformLocation heightMax
glGetUniformLocation light
glGetUniformLocation materialSpecular
glGetUniformLocation materialShininess
glGetUniformLocation screenWidth
glGetUniformLocation screenHeight
glGetUniformLocation textureFlip
glGetAttribLocation vertices
glGetAttribLocation texcoords
)");
    expectCalls([&] { renderer.setScreenSize(width, height); }, "\n");
    GLuint framebuffer = 0;
    glGenFramebuffers(1, &framebuffer);
    renderer.setDrawFrameBuffer(framebuffer);
    renderer.setTexture(9);
    renderer.setBGFlip(true);
    renderer.setHeightMax(70.0F);
    expectCalls([&] { renderer.render(7, 8); }, R"(
glDisable BLEND
glDisable DEPTH_TEST
glViewport 0 0 97 61
glBindFramebuffer FRAMEBUFFER 1
glUseProgram PROGRAM
glUniform1f heightMax 70
checkGLError glUniform1f maxHeight
glUniform3fv light -0.271607 0.724286 0.63375
checkGLError glUniform3fv light
glUniform1f materialSpecular 0
checkGLError glUniform1f materialSpecular
glUniform1f materialShininess 50
checkGLError glUniform1f materialShininess
glUniformMatrix4fv matrixMVP 1
checkGLError glUniformMatrix4fv matrixMVP
glUniform1f screenWidth 97
checkGLError glUniform1f screenWidth
glUniform1f screenHeight 61
checkGLError glUniform1f screenHeight
glUniform1f textureFlip 1
checkGLError glUniform1b mBGFlip
glUniform1i textureNormal 0
glUniform1i textureHeight 1
glUniform1i textureBG 2
glActiveTexture TEXTURE0
glBindTexture TEXTURE_2D 8
glActiveTexture TEXTURE1
glBindTexture TEXTURE_2D 7
glActiveTexture TEXTURE2
glBindTexture TEXTURE_2D 9
glTexParameteri TEXTURE_2D TEXTURE_MIN_FILTER LINEAR
glTexParameteri TEXTURE_2D TEXTURE_MAG_FILTER LINEAR
glTexParameteri TEXTURE_2D TEXTURE_WRAP_S MIRRORED_REPEAT
glTexParameteri TEXTURE_2D TEXTURE_WRAP_T MIRRORED_REPEAT
glVertexAttribPointer vertices 3 FLOAT 0 0
glEnableVertexAttribArray vertices
glVertexAttribPointer texcoords 2 FLOAT 0 0
glEnableVertexAttribArray texcoords
glDrawArrays TRIANGLE_STRIP 0 4
glDisableVertexAttribArray texcoords
glDisableVertexAttribArray vertices
glActiveTexture TEXTURE2
glBindTexture TEXTURE_2D 0
glActiveTexture TEXTURE1
glBindTexture TEXTURE_2D 0
glActiveTexture TEXTURE0
glBindTexture TEXTURE_2D 0
glUseProgram 0
glBindFramebuffer FRAMEBUFFER 0
)",
                TestPeer::mProgram(renderer));
    while (glGetError() != GL_NO_ERROR) {
    } // a framebuffer without an attachment cannot be drawn into
    glDeleteFramebuffers(1, &framebuffer);
}

TEST_F(WaterCallsTest, ShallowWaterSetUp) {
    ShallowWater water;
    EXPECT_EQ(lookUps(water), R"(
checkGLError createProgram mProgramDrop
checkGLError createProgram mProgramDropLine
checkGLError createProgram mProgramUpdate
)") << "locations are looked up at each use";
    const auto texture = [](const char* i, const char* name) {
        return std::string("glBindTexture TEXTURE_2D ") + name +
               "\nglTexImage2D R16F 97 61 RED HALF_FLOAT none\ncheckGLError glTexImage2D mTexturesWater[" + i + "]\n" +
               textureParameters;
    };
    expectCalls([&] { water.setScreenSize(width, height); },
                join({R"(
glGetIntegerv MAX_TEXTURE_SIZE
glGenTextures 3
checkGLError glGenTextures mTexturesWater
)",
                      texture("0", "1"), texture("1", "2"), texture("2", "3"), R"(glGenFramebuffers 3
checkGLError glGenFramebuffers mFBOsWater[0]
glBindFramebuffer FRAMEBUFFER 1
checkGLError glBindFramebuffer mFBOsWater[0]
glFramebufferTexture2D 1
checkGLError glFramebufferTexture2D mFBOsWater[0] mTexturesWater[0]
)",
                      clear, R"(glBindFramebuffer FRAMEBUFFER 2
checkGLError glBindFramebuffer mFBOWater[1]
glFramebufferTexture2D 2
checkGLError glFramebufferTexture2D mFBOsWater[1] mTexturesWater[1]
)",
                      clear, R"(glBindFramebuffer FRAMEBUFFER 3
checkGLError glBindFramebuffer mFBOWater[2]
glFramebufferTexture2D 3
checkGLError glFramebufferTexture2D mFBOsWater[2] mTexturesWater[2]
)",
                      clear}));
}

TEST_F(WaterCallsTest, ShallowWater) {
    ShallowWater water;
    water.init();
    water.setScreenSize(width, height);
    const std::string drawing = R"(glViewport 0 0 97 61
glGetAttribLocation quadCoord
glVertexAttribPointer quadCoord 3 FLOAT 0 0
checkGLError glVertexAttribPointer program
glGetAttribLocation quadCoord
glEnableVertexAttribArray quadCoord
checkGLError glEnableVertexAttribArray program
glDrawArrays TRIANGLE_STRIP 0 4
checkGLError glDrawArrays DropletPsudoRenderer::program
glGetAttribLocation quadCoord
glDisableVertexAttribArray quadCoord
checkGLError glDisableVertexAttribArray program
glFlush
)";
    expectCalls([&] { water.addDrop(center, 10.0F, 0.5F); },
                join({R"(
glBindFramebuffer FRAMEBUFFER 1
glEnable BLEND
glBlendEquation FUNC_ADD
glBlendFunc SRC_COLOR DST_COLOR
glUseProgram PROGRAM
glGetUniformLocation center
glUniform2fv center 12 20.5
glGetUniformLocation radius
glUniform1f radius 5
glGetUniformLocation strength
glUniform1f strength 0.5
glGetUniformLocation mvpMatrix
glUniformMatrix4fv mvpMatrix 1
checkGLError glUniformMatrix4fv mvpMatrix
)",
                      drawing, R"(glUseProgram 0
glDisable BLEND
glBindFramebuffer FRAMEBUFFER 0
)"}),
                TestPeer::mProgramDrop(water));
    expectCalls([&] { water.addDropLine(center, center2, 10.0F, 0.5F); },
                join({R"(
glBindFramebuffer FRAMEBUFFER 1
glUseProgram PROGRAM
glGetUniformLocation textureWater
glUniform1i textureWater 0
glActiveTexture TEXTURE0
glBindTexture TEXTURE_2D 3
glGetUniformLocation center
glUniform2fv center 12 20.5
glGetUniformLocation center2
glUniform2fv center2 90 40
glGetUniformLocation radius
glUniform1f radius 5
glGetUniformLocation strength
glUniform1f strength 0.5
glGetUniformLocation mvpMatrix
glUniformMatrix4fv mvpMatrix 1
checkGLError glUniformMatrix4fv mvpMatrix
)",
                      drawing, R"(glUseProgram 0
glBindFramebuffer FRAMEBUFFER 0
)"}),
                TestPeer::mProgramDropLine(water));
    expectCalls([&] { water.update(); },
                join({R"(
glBindFramebuffer FRAMEBUFFER 2
checkGLError glBindFramebuffer mFBOsWater[mCurrentBufferIndex]
glFramebufferTexture2D 2
checkGLError glFramebufferTexture2D mFBOsWater[mCurrentBufferIndex] mTexturesWater[mCurrentBufferIndex]
glUseProgram PROGRAM
glGetUniformLocation texture1
glUniform1i texture1 0
glActiveTexture TEXTURE0
glBindTexture TEXTURE_2D 1
glGetUniformLocation texture2
glUniform1i texture2 1
glActiveTexture TEXTURE1
glBindTexture TEXTURE_2D 3
glGetUniformLocation mvpMatrix
glUniformMatrix4fv mvpMatrix 1
checkGLError glUniformMatrix4fv mvpMatrix
glGetUniformLocation Term
glUniform3fv Term 0.308996 -0.993521 0.421131
checkGLError glUniform3fv Term
)",
                      drawing, R"(glBindTexture TEXTURE_2D 0
glActiveTexture TEXTURE0
glBindTexture TEXTURE_2D 0
glUseProgram 0
glBindFramebuffer FRAMEBUFFER 0
)"}),
                TestPeer::mProgramUpdate(water));
    expectCalls([&] { water.update(); }, "\n"); // no step is due
    const std::vector<LogLine> line = {
        {2, "ShallowWater", "addDrop center[12.000000,20.500000] radius[10.000000] strength[0.500000]"}};
    EXPECT_EQ(log.take(), line);
}

} // namespace
