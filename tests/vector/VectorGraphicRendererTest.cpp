#include "effects/vector/VectorGraphicRenderer.h"

#include "testing/TestPeer.h"
#include "tests/support/GLTest.h"

namespace {

class VectorGraphicRendererTest : public GLTest {
  protected:
    VectorGraphicRendererTest() { graphics.init(); }

    VectorGraphicRenderer graphics;
};

TEST_F(VectorGraphicRendererTest, RotatedRectanglesMakeTheSameCalls) {
    graphics.setScreenSize(width, height);
    EXPECT_CALLS(graphics.renderRotatedBitmapRectangle(1, 2, 30, 40, 0, 3),
                 glRecorder().record([&] { graphics.renderBitmapRectangle(1, 2, 30, 40, 0); }));
    EXPECT_CALLS(graphics.renderRotatedAlphaMaskedBitmapRectangle(1, 2, 30, 40, 0, 5, 0),
                 glRecorder().record([&] { graphics.renderAlphaMaskedBitmapRectangle(1, 2, 30, 40, 0, 0); }));
}

TEST_F(VectorGraphicRendererTest, BlendStateIsSetWhereItDraws) {
    float color[4] = {1.0F, 0.5F, 0.25F, 1.0F};
    EXPECT_CALLS(graphics.setBlendEquation(GL_MAX), "");
    EXPECT_CALLS(graphics.setBlendFunction(GL_ONE, GL_SRC_COLOR, GL_DST_COLOR, GL_ZERO), "");
    EXPECT_CALLS(graphics.setBlendColor(0.125F, 0.25F, 0.5F, 0.75F), "");
    EXPECT_CALLS(graphics.rotateTexture(2), "");
    graphics.setScreenSize(width, height);
    EXPECT_CALLS(graphics.renderCircle(40, 30, 12, color), R"(glBlendEquation 0x8008
        glBlendFuncSeparate 1 SRC_COLOR DST_COLOR 0; glBlendColor 0.125 0.25 0.5 0.75)",
                 "glBlend");
}

TEST_F(VectorGraphicRendererTest, UnknownCodesKeepTheRotation) {
    for (const int code : {1, 6, -1})
        graphics.rotateTexture(code);
    EXPECT_THAT(TestPeer::mRectTexcoords(graphics), testing::ElementsAre(1, 0, 1, 1, 0, 0, 0, 1));
    graphics.init();
    EXPECT_THAT(TestPeer::mRectTexcoords(graphics), testing::ElementsAre(0, 0, 1, 0, 0, 1, 1, 1));
}

} // namespace
