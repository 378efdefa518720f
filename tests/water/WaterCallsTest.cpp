#include "effects/water/IntensityMapBuilder.h"
#include "effects/water/NormalMapBuilder.h"
#include "effects/water/ShallowWater.h"
#include "effects/water/ShallowWaterIterative.h"
#include "effects/water/ShallowWaterRenderer.h"
#include "tests/support/GLTest.h"
#include "tests/support/TestPeer.h"

#include <regex>

/// The sequence of GL calls and labels of every operation of the water effects. In which order a target is made is
/// Metaball2DRenderer's test; here are formats and labels.
namespace {

class WaterCallsTest : public GLTest {
  protected:
    template <typename Action>
    void expectCalls(Action action, const std::string& expected) {
        EXPECT_EQ(glRecorder().sequence(action), calls(expected));
    }

    /// What an effect looks up and the labels of its programs, then what its targets are made of and their labels.
    template <typename Effect>
    void expectSetUp(Effect& effect, const std::string& lookUps, const std::string& targets) {
        const auto names = [](const std::string& text) {
            return std::regex_replace(text, std::regex("glGet\\w+Location |checkGLError "), "");
        };
        const std::string found = glRecorder().sequence([&] { effect.init(); }, {"Location", "checkGLError create"});
        EXPECT_EQ(names(found), calls(lookUps));
        const auto size = [&] { effect.setScreenSize(width, height); };
        EXPECT_EQ(names(glRecorder().sequence(size, {"checkGLError", "TexImage2D"})), calls(targets));
    }

    float center[2] = {12.0F, 20.5F};
    float center2[2] = {90.0F, 40.0F};
};

const std::string stateOff = "glDisable BLEND; glDisable DEPTH_TEST;";
const std::string drawQuad = R"(glVertexAttribPointer vertices 3 FLOAT 0 0; glEnableVertexAttribArray vertices
    glDrawArrays TRIANGLE_STRIP 0 4; glDisableVertexAttribArray vertices
    glFlush; glUseProgram 0; glBindFramebuffer FRAMEBUFFER 0)";

TEST_F(WaterCallsTest, IntensityMapBuilder) {
    IntensityMapBuilder builder;
    expectSetUp(builder, R"(createProgram mProgramDropLine
        matrixMVP; center; center2; radius; strength; preserveWeight; vertices
        createProgram mProgramHorizontalWave
        matrixMVP; center; radius; strength; waveRadius; waveCount; preserveWeight; vertices)",
                R"(glTexImage2D R16F 97 61 RED HALF_FLOAT none; glTexImage2D mTexture; glGenFramebuffers mFBONormal
        glBindFramebuffer mFBONormal; glFramebufferTexture2D mFBONormal mTexture)");
    EXPECT_EQ(TestPeer::mDropLinePreserveWeight(builder), -1) << "looked up, but not there";

    const std::string target = "glViewport 0 0 97 61; glBindFramebuffer FRAMEBUFFER 1;";
    // Found and left: whatever blending and depth test there are.
    expectCalls([&] { builder.addDropLine(center, center2, 10.0F, 0.5F, 0.25F); },
                target + R"(glUseProgram 1; glUniformMatrix4fv matrixMVP 1
        glUniform2fv center 12 20.5; glUniform2fv center2 90 40
        glUniform1f radius 10; glUniform1f strength 0.5; glUniform1f preserveWeight 0.25;)" +
                    drawQuad);
    expectCalls([&] { builder.addHorizontalWave(30.0F, 10.0F, 0.5F, 7.0F, 2.0F, 0.25F); },
                stateOff + target + R"(glUseProgram 2; glUniformMatrix4fv matrixMVP 1
        glUniform1f center 30; glUniform1f radius 10; glUniform1f strength 0.5
        glUniform1f waveRadius 7; glUniform1f waveCount 2; glUniform1f preserveWeight 0.25;)" +
                    drawQuad);
}

TEST_F(WaterCallsTest, NormalMapBuilder) {
    NormalMapBuilder builder;
    expectSetUp(
        builder, R"(createProgram mProgram; matrixMVP; heightMax; textureHeight; vertices)",
        R"(glTexImage2D RGB16F 97 61 RGB HALF_FLOAT none; glTexImage2D mTextureNormal; glGenFramebuffers mFBONormal
        glBindFramebuffer mFBONormal; glFramebufferTexture2D mFBONormal mTextureNormal)");
    expectCalls([&] { builder.build(7); }, stateOff +
                                               R"(glViewport 0 0 97 61; glBindFramebuffer FRAMEBUFFER 1; glUseProgram 1
        glUniform1i textureHeight 0; glActiveTexture TEXTURE0; glBindTexture TEXTURE_2D 7
        glUniform1f heightMax 100; glUniformMatrix4fv matrixMVP 1;)" +
                                               drawQuad);
}

/// The three disturbances set their uniforms in three different orders.
TEST_F(WaterCallsTest, ShallowWaterIterative) {
    ShallowWaterIterative water;
    expectSetUp(water, R"(createProgram mProgramDrop; matrixMVP; center; radius; strength; preserveWeight; vertices
        createProgram mProgramDropLine
        matrixMVP; center; center2; radius; strength; preserveWeight; vertices
        createProgram mProgramHorizontalWave
        matrixMVP; center; radius; strength; waveRadius; waveCount; preserveWeight; vertices
        createProgram mProgramUpdate; matrixMVP; textureWater; vertices)",
                R"(glTexImage2D RG16F 97 61 RG HALF_FLOAT none; glTexImage2D mTexturesWater[0]
        glTexImage2D RG16F 97 61 RG HALF_FLOAT none; glTexImage2D mTexturesWater[1]
        glGenFramebuffers mFBOsWater[0]
        glBindFramebuffer mFBOsWater[0]; glFramebufferTexture2D mFBOsWater[0] mTexturesWater[0]
        glBindFramebuffer mFBOWater[1]; glFramebufferTexture2D mFBOsWater[1] mTexturesWater[1])");

    const auto reading = [](const char* program, const char* target, const char* source) {
        return std::string("glViewport 0 0 97 61; glBindFramebuffer FRAMEBUFFER ") + target + "; glUseProgram " +
               program + "; glGetUniformLocation textureWater; glUniform1i textureWater 0; glActiveTexture TEXTURE0;" +
               "glBindTexture TEXTURE_2D " + source + ";";
    };
    expectCalls([&] { water.addDrop(center, 10.0F, 0.5F, 0.25F); },
                reading("1", "1", "2") + R"(glUniform2fv center 12 20.5; glUniform1f radius 10; glUniform1f strength 0.5
        glUniform1f preserveWeight 0.25; glUniformMatrix4fv matrixMVP 1;)" +
                    drawQuad);
    expectCalls([&] { water.addDropLine(center, center2, 10.0F, 0.5F, 0.25F); },
                reading("2", "2", "1") + R"(glUniform2fv center 12 20.5; glUniform2fv center2 90 40
        glUniform1f radius 10; glUniform1f strength 0.5
        glUniformMatrix4fv matrixMVP 1; glUniform1f preserveWeight 0.25;)" +
                    drawQuad);
    expectCalls([&] { water.addHorizontalWave(30.0F, 10.0F, 0.5F, 7.0F, 2.0F, 0.25F); },
                reading("3", "1", "2") + R"(glUniform1f center 30; glUniform1f radius 10; glUniform1f strength 0.5
        glUniform1f waveRadius 7; glUniform1f waveCount 2; glUniform1f preserveWeight 0.25
        glUniformMatrix4fv matrixMVP 1; checkGLError glUniformMatrix4fv matrixMVP;)" +
                    drawQuad);
    water.setIterationCount(1);
    expectCalls([&] { water.update(); }, R"(glViewport 0 0 97 61
        glBindFramebuffer FRAMEBUFFER 2; checkGLError glBindFramebuffer mFBOsWater[0]
        glFramebufferTexture2D 2; checkGLError glFramebufferTexture2D mFBOsWater[0] mTexturesWater[0]
        glUseProgram 4; glUniform1i textureWater 0; glActiveTexture TEXTURE0
        glBindTexture TEXTURE_2D 1; checkGLError glBindTexture mProgramUpdate
        glUniformMatrix4fv matrixMVP 1; checkGLError glUniformMatrix4fv matrixMVP;)" +
                                             drawQuad);
}

TEST_F(WaterCallsTest, ShallowWaterRenderer) {
    ShallowWaterRenderer renderer;
    expectSetUp(renderer,
                R"(createProgram mProgram; textureNormal; textureHeight; textureBG; matrixMVP; heightMax; light
        materialSpecular; materialShininess; screenWidth; screenHeight; textureFlip; vertices; texcoords)",
                R"()");
    GLuint framebuffer = 0;
    glGenFramebuffers(1, &framebuffer);
    renderer.setDrawFrameBuffer(framebuffer);
    renderer.setTexture(9);
    renderer.setBGFlip(true);
    renderer.setHeightMax(70.0F);
    expectCalls([&] { renderer.render(7, 8); },
                stateOff + R"(glViewport 0 0 97 61; glBindFramebuffer FRAMEBUFFER 1; glUseProgram 1
        glUniform1f heightMax 70; checkGLError glUniform1f maxHeight
        glUniform3fv light -0.271607 0.724286 0.63375; checkGLError glUniform3fv light
        glUniform1f materialSpecular 0; checkGLError glUniform1f materialSpecular
        glUniform1f materialShininess 50; checkGLError glUniform1f materialShininess
        glUniformMatrix4fv matrixMVP 1; checkGLError glUniformMatrix4fv matrixMVP
        glUniform1f screenWidth 97; checkGLError glUniform1f screenWidth
        glUniform1f screenHeight 61; checkGLError glUniform1f screenHeight
        glUniform1f textureFlip 1; checkGLError glUniform1b mBGFlip
        glUniform1i textureNormal 0; glUniform1i textureHeight 1; glUniform1i textureBG 2
        glActiveTexture TEXTURE0; glBindTexture TEXTURE_2D 8; glActiveTexture TEXTURE1; glBindTexture TEXTURE_2D 7
        glActiveTexture TEXTURE2; glBindTexture TEXTURE_2D 9
        glTexParameteri TEXTURE_2D TEXTURE_MIN_FILTER LINEAR; glTexParameteri TEXTURE_2D TEXTURE_MAG_FILTER LINEAR
        glTexParameteri TEXTURE_2D TEXTURE_WRAP_S MIRRORED_REPEAT
        glTexParameteri TEXTURE_2D TEXTURE_WRAP_T MIRRORED_REPEAT
        glVertexAttribPointer vertices 3 FLOAT 0 0; glEnableVertexAttribArray vertices
        glVertexAttribPointer texcoords 2 FLOAT 0 0; glEnableVertexAttribArray texcoords
        glDrawArrays TRIANGLE_STRIP 0 4; glDisableVertexAttribArray texcoords; glDisableVertexAttribArray vertices
        glActiveTexture TEXTURE2; glBindTexture TEXTURE_2D 0; glActiveTexture TEXTURE1; glBindTexture TEXTURE_2D 0
        glActiveTexture TEXTURE0; glBindTexture TEXTURE_2D 0; glUseProgram 0; glBindFramebuffer FRAMEBUFFER 0)");
    while (glGetError() != GL_NO_ERROR) {
    } // a framebuffer without an attachment cannot be drawn into
    glDeleteFramebuffers(1, &framebuffer);
}

/// Locations are looked up at each use.
TEST_F(WaterCallsTest, ShallowWater) {
    ShallowWater water;
    expectSetUp(water, R"(createProgram mProgramDrop; createProgram mProgramDropLine; createProgram mProgramUpdate)",
                R"(glGenTextures mTexturesWater
        glTexImage2D R16F 97 61 RED HALF_FLOAT none; glTexImage2D mTexturesWater[0]
        glTexImage2D R16F 97 61 RED HALF_FLOAT none; glTexImage2D mTexturesWater[1]
        glTexImage2D R16F 97 61 RED HALF_FLOAT none; glTexImage2D mTexturesWater[2]
        glGenFramebuffers mFBOsWater[0]
        glBindFramebuffer mFBOsWater[0]; glFramebufferTexture2D mFBOsWater[0] mTexturesWater[0]
        glBindFramebuffer mFBOWater[1]; glFramebufferTexture2D mFBOsWater[1] mTexturesWater[1]
        glBindFramebuffer mFBOWater[2]; glFramebufferTexture2D mFBOsWater[2] mTexturesWater[2])");

    const std::string matrix = R"(glGetUniformLocation mvpMatrix; glUniformMatrix4fv mvpMatrix 1
        checkGLError glUniformMatrix4fv mvpMatrix;)";
    const std::string drawing = R"(glViewport 0 0 97 61
        glGetAttribLocation quadCoord; glVertexAttribPointer quadCoord 3 FLOAT 0 0
        checkGLError glVertexAttribPointer program; glGetAttribLocation quadCoord; glEnableVertexAttribArray quadCoord
        checkGLError glEnableVertexAttribArray program; glDrawArrays TRIANGLE_STRIP 0 4
        checkGLError glDrawArrays DropletPsudoRenderer::program; glGetAttribLocation quadCoord
        glDisableVertexAttribArray quadCoord; checkGLError glDisableVertexAttribArray program; glFlush;)";
    expectCalls([&] { water.addDrop(center, 10.0F, 0.5F); },
                R"(glBindFramebuffer FRAMEBUFFER 1
        glEnable BLEND; glBlendEquation FUNC_ADD; glBlendFunc SRC_COLOR DST_COLOR; glUseProgram 1
        glGetUniformLocation center; glUniform2fv center 12 20.5; glGetUniformLocation radius; glUniform1f radius 5
        glGetUniformLocation strength; glUniform1f strength 0.5;)" +
                    matrix + drawing + "glUseProgram 0; glDisable BLEND; glBindFramebuffer FRAMEBUFFER 0");
    expectCalls([&] { water.addDropLine(center, center2, 10.0F, 0.5F); },
                R"(glBindFramebuffer FRAMEBUFFER 1; glUseProgram 2
        glGetUniformLocation textureWater; glUniform1i textureWater 0; glActiveTexture TEXTURE0
        glBindTexture TEXTURE_2D 3; glGetUniformLocation center; glUniform2fv center 12 20.5
        glGetUniformLocation center2; glUniform2fv center2 90 40; glGetUniformLocation radius; glUniform1f radius 5
        glGetUniformLocation strength; glUniform1f strength 0.5;)" +
                    matrix + drawing + "glUseProgram 0; glBindFramebuffer FRAMEBUFFER 0");
    expectCalls([&] { water.update(); },
                R"(glBindFramebuffer FRAMEBUFFER 2
        checkGLError glBindFramebuffer mFBOsWater[mCurrentBufferIndex]; glFramebufferTexture2D 2
        checkGLError glFramebufferTexture2D mFBOsWater[mCurrentBufferIndex] mTexturesWater[mCurrentBufferIndex]
        glUseProgram 3; glGetUniformLocation texture1; glUniform1i texture1 0
        glActiveTexture TEXTURE0; glBindTexture TEXTURE_2D 1
        glGetUniformLocation texture2; glUniform1i texture2 1; glActiveTexture TEXTURE1; glBindTexture TEXTURE_2D 3;)" +
                    matrix +
                    "glGetUniformLocation Term; glUniform3fv Term 0.308996 -0.993521 0.421131; checkGLError "
                    "glUniform3fv Term;" +
                    drawing + R"(glBindTexture TEXTURE_2D 0; glActiveTexture TEXTURE0; glBindTexture TEXTURE_2D 0
        glUseProgram 0; glBindFramebuffer FRAMEBUFFER 0)");
    expectCalls([&] { water.update(); }, ""); // no step is due
    const std::vector<LogLine> line = {
        {2, "ShallowWater", "addDrop center[12.000000,20.500000] radius[10.000000] strength[0.500000]"}};
    EXPECT_EQ(log.take(), line);
}

} // namespace
