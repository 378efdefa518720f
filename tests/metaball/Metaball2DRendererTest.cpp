#include "effects/metaball/Metaball2DRenderer.h"

#include "tests/support/GLTest.h"
#include "tests/support/TestPeer.h"

#include <gmock/gmock.h>
#include <limits>

namespace {

class Metaball2DRendererTest : public GLTest {
  protected:
    Metaball2DRenderer metaballs;
    float balls[12] = {48.0F, 30.0F, 20.0F, 0.0F, 0.0F, 0.0F, 10.0F, 10.0F, 5.0F};
    float color[4] = {1.0F, 0.5F, 0.25F, 1.0F};

    void expectCalls(const std::function<void()>& action, const std::string& expected) {
        EXPECT_EQ(glRecorder().sequence(action), calls(expected));
    }
};

TEST_F(Metaball2DRendererTest, AnotherQualityReplacesTheFieldAtTheNextSize) {
    metaballs.init(1.0F);
    metaballs.setScreenSize(width, height);
    const GLuint first = metaballs.getTexture();
    metaballs.init(2.0F);
    EXPECT_EQ(metaballs.getTexture(), first);
    metaballs.setScreenSize(width, height);
    EXPECT_EQ(TestPeer::mTextureWidth(metaballs), 169) << "halves away from 0";
    EXPECT_EQ(TestPeer::mTextureHeight(metaballs), 151);
    metaballs.addMetaballs(balls, 1);
    EXPECT_NEAR(tidalume::headless::readTexture(metaballs.getTexture(), 169, 151).at(84, 75)[0], 1.0F, 0.01F);
    metaballs.addMetaballs(balls, 0);
    metaballs.render(color);
    EXPECT_THAT(tidalume::headless::readFramebuffer(width, height).rgba, testing::Each(0.0F))
        << "no balls paint nothing";
    for (const float impossible : {0.0F, -1.0F, std::numeric_limits<float>::quiet_NaN(), 1e-30F, 1e30F}) {
        metaballs.init(impossible);
        metaballs.setScreenSize(width, height);
        EXPECT_EQ(metaballs.getTexture(), 0U) << impossible;
        expectCalls([&] { metaballs.addMetaballs(balls, 1); }, "");
    }
}

TEST_F(Metaball2DRendererTest, CallsInOrder) {
    EXPECT_EQ(glRecorder().sequence([&] { metaballs.init(1.0F); }, {"Location", "checkGLError create"}),
              calls(R"(glGetUniformLocation qualityMultiplyFactor; glGetUniformLocation radiusMultiplyFactor
        glGetUniformLocation matrixMVP; glGetAttribLocation metaballs; glGetUniformLocation color
        glGetUniformLocation cut; glGetUniformLocation matrixMVP; glGetUniformLocation textureField
        glGetAttribLocation vertices; glGetAttribLocation texcoords)"));
    // The format becomes wider until the framebuffer is complete.
    glRecorder().faults.notRenderable = {GL_R16F, GL_RG16F};
    expectCalls([&] { metaballs.setScreenSize(width, height); }, R"(
        glGetIntegerv MAX_TEXTURE_SIZE; glGenTextures 1; glBindTexture TEXTURE_2D 1
        glTexImage2D R16F 337 301 RED HALF_FLOAT none; checkGLError glTexImage2D mTexture
        glTexParameteri TEXTURE_2D TEXTURE_MIN_FILTER LINEAR; glTexParameteri TEXTURE_2D TEXTURE_MAG_FILTER LINEAR
        glTexParameteri TEXTURE_2D TEXTURE_WRAP_S CLAMP_TO_EDGE; glTexParameteri TEXTURE_2D TEXTURE_WRAP_T CLAMP_TO_EDGE
        glGenFramebuffers 1; checkGLError glGenFramebuffers mFBONormal
        glBindFramebuffer FRAMEBUFFER 1; checkGLError glBindFramebuffer mFBONormal
        glFramebufferTexture2D 1; checkGLError glFramebufferTexture2D mFBONormal mTexture; glCheckFramebufferStatus
        glBindTexture TEXTURE_2D 1; glTexImage2D RG16F 337 301 RG HALF_FLOAT none
        checkGLError glTexImage2D mTexture; glBindTexture TEXTURE_2D 1; glCheckFramebufferStatus
        glBindTexture TEXTURE_2D 1; glTexImage2D RGBA16F 337 301 RGBA HALF_FLOAT none
        checkGLError glTexImage2D mTexture; glBindTexture TEXTURE_2D 1; glCheckFramebufferStatus
        glClearColor 0 0 0 1; glClear COLOR_BUFFER_BIT; glBindFramebuffer FRAMEBUFFER 0)");
    expectCalls([&] { metaballs.addMetaballs(balls, 2); }, R"(
        glBindFramebuffer FRAMEBUFFER 1; glFramebufferTexture2D 1; glViewport 0 0 337 301; glClearColor 0 0 0 1
        glClear COLOR_BUFFER_BIT; glEnable BLEND; glBlendEquation FUNC_ADD; glBlendFunc 0x1 0x1; glUseProgram 1
        glUniform1f radiusMultiplyFactor 1.20933; glUniform1f qualityMultiplyFactor 1; glUniformMatrix4fv matrixMVP 1
        glEnableVertexAttribArray metaballs; glVertexAttribPointer metaballs 4 FLOAT 0 24; glDrawArrays POINTS 0 2
        glFlush; glDisableVertexAttribArray metaballs; glUseProgram 0; glDisable BLEND
        glBindFramebuffer FRAMEBUFFER 0)");
    expectCalls([&] { metaballs.render(color); }, R"(
        glViewport 0 0 97 61; glDisable DEPTH_TEST; glEnable BLEND; glBlendEquation FUNC_ADD
        glBlendFuncSeparate SRC_ALPHA ONE_MINUS_SRC_ALPHA 0x1 ONE_MINUS_SRC_ALPHA
        glUseProgram 2; glUniform4fv color 1 0.5 0.25 1; glUniform1f cut 0.1; glUniformMatrix4fv matrixMVP 1
        glUniform1i textureField 0; glActiveTexture TEXTURE0; glBindTexture TEXTURE_2D 1
        glEnableVertexAttribArray vertices; glVertexAttribPointer vertices 3 FLOAT 0 0
        glEnableVertexAttribArray texcoords; glVertexAttribPointer texcoords 2 FLOAT 0 0
        glDrawArrays TRIANGLE_STRIP 0 4; glDisableVertexAttribArray texcoords; glDisableVertexAttribArray vertices
        glBindTexture TEXTURE_2D 0; glUseProgram 0; glDisable BLEND)");
    metaballs.GLContextDestroyed();
    EXPECT_EQ(TestPeer::mUniformMetaballMatrixMVP(metaballs), -1);
    EXPECT_EQ(TestPeer::mAttribDrawTexcoords(metaballs), -1);
    context.recreate();
}

} // namespace
