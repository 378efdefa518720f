#include "effects/vector/VectorGraphicRenderer.h"

#include "testing/TestPeer.h"
#include "tests/support/GLTest.h"

#include <array>

namespace {

class VectorGraphicRendererTest : public GLTest {
  protected:
    VectorGraphicRendererTest() { graphics.init(); }

    VectorGraphicRenderer graphics;
    float color[4] = {1.0F, 0.5F, 0.25F, 1.0F};
    float other[4] = {0.0F, 0.5F, 0.0F, 0.5F};
};

TEST_F(VectorGraphicRendererTest, DrawsInOrderWithTheBlendStateThatIsSet) {
    const std::string quad = R"(glVertexAttribPointer vertices 3 FLOAT 0 0; glEnableVertexAttribArray vertices
        glDrawArrays TRIANGLE_STRIP 0 4; glDisableVertexAttribArray vertices;)";
    const std::string gradient = R"(glUseProgram mProgramGradientFill; matrixMVP = ...; referencePosition = 40 30
        gradientBegin = 5; gradientBeginColor = 1 0.5 0.25 1; gradientEnd = 25.5; gradientEndColor = 0 0.5 0 0.5;)";
    const std::string point = R"(; glEnableVertexAttribArray vertices; glVertexAttribPointer vertices 3 FLOAT 0 12
        glDrawArrays POINTS 0 1;)";
    const std::string circle =
        "glUseProgram mProgramCircle; color = 1 0.5 0.25 1" + point + "glBindBuffer ARRAY_BUFFER 0;";
    const std::string bitmapCircle =
        R"(glUseProgram mProgramBitmapCircle; color = 1 0.5 0.25 1; size = 97 61; bitmap = 0
        glActiveTexture TEXTURE0; glBindTexture 7)" +
        point + "glBindTexture 0; glBindBuffer ARRAY_BUFFER 0;";
    const std::string bitmap = "matrixMVP = ...; textureBitmap = 0; glActiveTexture TEXTURE0; glBindTexture 7;";
    const std::string corners =
        R"(glVertexAttribPointer vertices 3 FLOAT 0 0; glVertexAttribPointer texcoords 2 FLOAT 0 0
        glEnableVertexAttribArray vertices; glEnableVertexAttribArray texcoords; glDrawArrays TRIANGLE_STRIP 0 4
        glDisableVertexAttribArray texcoords; glDisableVertexAttribArray vertices;)";
    const std::string rectangle = "glUseProgram mProgramBitmap;" + bitmap + corners;
    const std::string masked = "glUseProgram mProgramAlphaMaskedBitmap;" + bitmap +
                               "textureMask = 1; glActiveTexture TEXTURE1; glBindTexture 8;" + corners +
                               "glBindTexture 0; glActiveTexture TEXTURE0; glBindTexture 0;";
    std::string blend = R"(glBlendEquation FUNC_ADD
        glBlendFuncSeparate SRC_ALPHA ONE_MINUS_SRC_ALPHA SRC_ALPHA ONE_MINUS_SRC_ALPHA
        glBlendColor 0 0 0 1; glDisable DEPTH_TEST;)";
    const auto drawn = [&](const std::string& steps) {
        return "glViewport 0 0 97 61; glEnable BLEND;" + blend + steps + "glUseProgram 0; glDisable BLEND";
    };
    graphics.setScreenSize(width, height);
    EXPECT_CALLS(graphics.renderRadialGradient(40, 30, 5, color, 25.5F, other), drawn(gradient + quad));
    EXPECT_CALLS(graphics.renderCircle(40, 30, 12, color), drawn(circle));
    EXPECT_CALLS(graphics.renderBitmapCircle(40, 30, 12, color, 7), drawn(bitmapCircle));
    EXPECT_CALLS(graphics.renderBitmapRectangle(1, 2, 30, 40, 7), drawn(rectangle));
    EXPECT_CALLS(graphics.renderRotatedBitmapRectangle(1, 2, 30, 40, 7, 3), drawn(rectangle));
    EXPECT_CALLS(graphics.renderAlphaMaskedBitmapRectangle(1, 2, 30, 40, 7, 8), drawn(masked));
    EXPECT_CALLS(graphics.renderRotatedAlphaMaskedBitmapRectangle(1, 2, 30, 40, 7, 5, 8), drawn(masked));
    EXPECT_CALLS(graphics.setBlendEquation(GL_MAX), "");
    EXPECT_CALLS(graphics.setBlendFunction(GL_ONE, GL_SRC_COLOR, GL_DST_COLOR, GL_ZERO), "");
    EXPECT_CALLS(graphics.setBlendColor(0.125F, 0.25F, 0.5F, 0.75F), "");
    EXPECT_CALLS(graphics.rotateTexture(2), "");
    graphics.setScreenSize(width, height);
    blend = R"(glBlendEquation 0x8008; glBlendFuncSeparate 1 SRC_COLOR DST_COLOR 0
        glBlendColor 0.125 0.25 0.5 0.75; glDisable DEPTH_TEST;)";
    EXPECT_CALLS(graphics.renderCircle(40, 30, 12, color), drawn(circle));
    glDeleteTextures(2, std::array{7U, 8U}.data());
}

TEST_F(VectorGraphicRendererTest, UnknownCodesKeepTheRotation) {
    for (const int code : {1, 6, -1})
        graphics.rotateTexture(code);
    EXPECT_THAT(TestPeer::mRectTexcoords(graphics), testing::ElementsAre(1, 0, 1, 1, 0, 0, 0, 1));
    graphics.init();
    EXPECT_THAT(TestPeer::mRectTexcoords(graphics), testing::ElementsAre(0, 0, 1, 0, 0, 1, 1, 1));
}

} // namespace
