#include "effects/vector/VectorGraphicRenderer.h"

#include "testing/TestPeer.h"
#include "tests/support/CallsTest.h"

namespace {

class VectorGraphicRendererTest : public CallsTest {
  protected:
    VectorGraphicRendererTest() { graphics.init(); }

    VectorGraphicRenderer graphics;
    float color[4] = {1.0F, 0.5F, 0.25F, 1.0F};
    float other[4] = {0.0F, 0.5F, 0.0F, 0.5F};

    const std::function<void()> draws[7] = {
        [&] { graphics.renderRadialGradient(40.0F, 30.0F, 5.0F, color, 25.5F, other); },
        [&] { graphics.renderCircle(40.0F, 30.0F, 12.0F, color); },
        [&] { graphics.renderBitmapCircle(40.0F, 30.0F, 12.0F, color, 7); },
        [&] { graphics.renderBitmapRectangle(1.0F, 2.0F, 30.0F, 40.0F, 7); },
        [&] { graphics.renderRotatedBitmapRectangle(1.0F, 2.0F, 30.0F, 40.0F, 7, 3); },
        [&] { graphics.renderAlphaMaskedBitmapRectangle(1.0F, 2.0F, 30.0F, 40.0F, 7, 8); },
        [&] { graphics.renderRotatedAlphaMaskedBitmapRectangle(1.0F, 2.0F, 30.0F, 40.0F, 7, 5, 8); }};
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
    const std::string steps[7] = {gradient + quad, circle, bitmapCircle, rectangle, rectangle, masked, masked};
    const auto expectDraws = [&](const std::string& blend) {
        for (size_t i = 0; i < 7; ++i) {
            expectCalls(draws[i],
                        "glViewport 0 0 97 61; glEnable BLEND;" + blend + steps[i] + "glUseProgram 0; glDisable BLEND");
        }
    };
    graphics.setScreenSize(width, height);
    expectDraws(R"(glBlendEquation FUNC_ADD
        glBlendFuncSeparate SRC_ALPHA ONE_MINUS_SRC_ALPHA SRC_ALPHA ONE_MINUS_SRC_ALPHA
        glBlendColor 0 0 0 1; glDisable DEPTH_TEST;)");
    expectCalls(
        [&] {
            graphics.setBlendEquation(GL_MAX);
            graphics.setBlendFunction(GL_ONE, GL_SRC_COLOR, GL_DST_COLOR, GL_ZERO);
            graphics.setBlendColor(0.125F, 0.25F, 0.5F, 0.75F);
            graphics.setScreenSize(width, height);
            graphics.rotateTexture(2);
        },
        "");
    expectDraws(R"(glBlendEquation 0x8008; glBlendFuncSeparate 1 SRC_COLOR DST_COLOR 0
        glBlendColor 0.125 0.25 0.5 0.75; glDisable DEPTH_TEST;)");
}

TEST_F(VectorGraphicRendererTest, UnknownCodesKeepTheRotation) {
    for (const int code : {1, 6, -1})
        graphics.rotateTexture(code);
    EXPECT_THAT(TestPeer::mRectTexcoords(graphics), testing::ElementsAre(1, 0, 1, 1, 0, 0, 0, 1));
    graphics.init();
    EXPECT_THAT(TestPeer::mRectTexcoords(graphics), testing::ElementsAre(0, 0, 1, 0, 0, 1, 1, 1));
}

} // namespace
