#include "effects/vector/VectorGraphicRenderer.h"

#include "tests/support/GLTest.h"
#include "tests/support/TestPeer.h"

#include <gmock/gmock.h>
#include <regex>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class VectorGraphicRendererTest : public GLTest {
  protected:
    VectorGraphicRenderer graphics;
    float color[4] = {1.0F, 0.5F, 0.25F, 1.0F};
    float other[4] = {0.0F, 0.5F, 0.0F, 0.5F};

    const std::function<void()> drawingCalls[7] = {
        [&] { graphics.renderRadialGradient(40.0F, 30.0F, 5.0F, color, 25.5F, other); },
        [&] { graphics.renderCircle(40.0F, 30.0F, 12.0F, color); },
        [&] { graphics.renderBitmapCircle(40.0F, 30.0F, 12.0F, color, 7); },
        [&] { graphics.renderBitmapRectangle(1.0F, 2.0F, 30.0F, 40.0F, 7); },
        [&] { graphics.renderRotatedBitmapRectangle(1.0F, 2.0F, 30.0F, 40.0F, 7, 3); },
        [&] { graphics.renderAlphaMaskedBitmapRectangle(1.0F, 2.0F, 30.0F, 40.0F, 7, 8); },
        [&] { graphics.renderRotatedAlphaMaskedBitmapRectangle(1.0F, 2.0F, 30.0F, 40.0F, 7, 5, 8); }};
};

TEST_F(VectorGraphicRendererTest, DrawsInOrderWithTheBlendStateThatIsSet) {
    const std::string found = glRecorder().sequence([&] { graphics.init(); }, {"Location", "checkGLError create"});
    EXPECT_EQ(std::regex_replace(found, std::regex("glGet\\w+Location |checkGLError "), ""),
              calls(R"(createProgram mProgramGradientFill
        matrixMVP; referencePosition; gradientBegin; gradientBeginColor; gradientEnd; gradientEndColor; vertices
        createProgram mProgramBitmap; matrixMVP; textureBitmap; vertices; texcoords
        createProgram mProgramAlphaMaskedBitmap; matrixMVP; textureBitmap; textureMask; vertices; texcoords
        createProgram mProgramCircle; color; vertices
        createProgram mProgramBitmapCircle; bitmap; color; size; vertices)"));

    const std::string gradient = R"(glUseProgram 1; glUniformMatrix4fv matrixMVP 1; glUniform2f referencePosition 40 30
        glUniform1f gradientBegin 5; glUniform4fv gradientBeginColor 1 0.5 0.25 1
        glUniform1f gradientEnd 25.5; glUniform4fv gradientEndColor 0 0.5 0 0.5
        glVertexAttribPointer vertices 3 FLOAT 0 0; glEnableVertexAttribArray vertices
        glDrawArrays TRIANGLE_STRIP 0 4; glDisableVertexAttribArray vertices;)";
    const std::string point = R"(glEnableVertexAttribArray vertices; glVertexAttribPointer vertices 3 FLOAT 0 12
        glDrawArrays POINTS 0 1;)";
    const std::string circle =
        "glUseProgram 4; glUniform4fv color 1 0.5 0.25 1;" + point + "glBindBuffer ARRAY_BUFFER 0;";
    const std::string bitmapCircle = R"(glUseProgram 5; glUniform4fv color 1 0.5 0.25 1; glUniform2f size 97 61
        glUniform1i bitmap 0; glActiveTexture TEXTURE0; glBindTexture TEXTURE_2D 7;)" +
                                     point + "glBindTexture TEXTURE_2D 0; glBindBuffer ARRAY_BUFFER 0;";
    const std::string bitmap = R"(glUniformMatrix4fv matrixMVP 1; glUniform1i textureBitmap 0
        glActiveTexture TEXTURE0; glBindTexture TEXTURE_2D 7;)";
    const std::string quad = R"(glVertexAttribPointer vertices 3 FLOAT 0 0; glVertexAttribPointer texcoords 2 FLOAT 0 0
        glEnableVertexAttribArray vertices; glEnableVertexAttribArray texcoords; glDrawArrays TRIANGLE_STRIP 0 4
        glDisableVertexAttribArray texcoords; glDisableVertexAttribArray vertices;)";
    const std::string rectangle = "glUseProgram 2;" + bitmap + quad;
    const std::string masked = "glUseProgram 3;" + bitmap + R"(
        glUniform1i textureMask 1; glActiveTexture TEXTURE1; glBindTexture TEXTURE_2D 8;)" +
                               quad + R"(
        glBindTexture TEXTURE_2D 0; glActiveTexture TEXTURE0; glBindTexture TEXTURE_2D 0;)";
    const std::string steps[7] = {gradient, circle, bitmapCircle, rectangle, rectangle, masked, masked};
    const auto expectDraws = [&](const std::string& blend) {
        for (size_t i = 0; i < 7; ++i) {
            EXPECT_EQ(glRecorder().sequence(drawingCalls[i]), calls("glViewport 0 0 97 61; glEnable BLEND;" + blend +
                                                                    steps[i] + "glUseProgram 0; glDisable BLEND"));
        }
    };
    graphics.setScreenSize(width, height);
    expectDraws(R"(glBlendEquation FUNC_ADD
        glBlendFuncSeparate SRC_ALPHA ONE_MINUS_SRC_ALPHA SRC_ALPHA ONE_MINUS_SRC_ALPHA
        glBlendColor 0 0 0 1; glDisable DEPTH_TEST;)");
    EXPECT_THAT(glRecorder().record([&] {
        graphics.setBlendEquation(GL_MAX);
        graphics.setBlendFunction(GL_ONE, GL_SRC_COLOR, GL_DST_COLOR, GL_ZERO);
        graphics.setBlendColor(0.125F, 0.25F, 0.5F, 0.75F);
        graphics.setScreenSize(width, height);
        graphics.rotateTexture(2);
    }),
                IsEmpty());
    const std::string blend = R"(glBlendEquation 0x8008; glBlendFuncSeparate 0x1 SRC_COLOR DST_COLOR 0x0
        glBlendColor 0.125 0.25 0.5 0.75; glDisable DEPTH_TEST;)";
    expectDraws(blend);
    EXPECT_EQ(glRecorder().sequence([&] { graphics.setBlend(); }), calls(blend));
}

TEST_F(VectorGraphicRendererTest, DrawsNothingWithoutASize) {
    graphics.init();
    for (const auto& [w, h] : {std::pair{0, 61}, {97, 0}, {-97, -61}, {97, 61}}) {
        for (const auto& draw : drawingCalls)
            EXPECT_THAT(glRecorder().record(draw), IsEmpty());
        graphics.setScreenSize(w, h);
    }
    graphics.GLContextDestroyed();
    context.recreate();
    graphics.init();
    EXPECT_FALSE(glRecorder().record(drawingCalls[0]).empty()) << "the size outlives the context";
}

TEST_F(VectorGraphicRendererTest, RotationLastsForOneDraw) {
    const auto unrotated = ElementsAre(0, 0, 1, 0, 0, 1, 1, 1);
    const auto& texcoords = TestPeer::mRectTexcoords(graphics);
    EXPECT_THAT(texcoords, unrotated) << "from the start";
    for (const int code : {1, 6, -1})
        graphics.rotateTexture(code);
    EXPECT_THAT(texcoords, ElementsAre(1, 0, 1, 1, 0, 0, 0, 1)) << "unknown codes keep it";
    graphics.init();
    EXPECT_THAT(texcoords, unrotated);
}

/// The quotient is in single precision: one in double precision gives other bits at these points.
TEST_F(VectorGraphicRendererTest, PlacesDiscsToTheBit) {
    graphics.init();
    graphics.setScreenSize(1080, 1920);
    graphics.renderCircle(540.3F, 960.7F, 25.25F, color);
    EXPECT_THAT(TestPeer::mPointVertex(graphics), ElementsAre(0x1.234p-11F, -0x1.7e5p-11F, 50.5F));
    graphics.renderBitmapCircle(611.1F, 1234.5F, 25.25F, color, 0);
    EXPECT_THAT(TestPeer::mPointVertex(graphics), ElementsAre(0x1.0da74p-3F, -0x1.24ccdp-2F, 25.25F));
}

} // namespace
