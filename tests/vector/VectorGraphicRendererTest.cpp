#include "effects/vector/VectorGraphicRenderer.h"

#include "testing/TestPeer.h"
#include "tests/support/GLTest.h"

namespace {

TEST_F(GLTest, UnknownCodesKeepTheRotation) {
    VectorGraphicRenderer graphics;
    graphics.init();
    for (const int code : {1, 6, -1})
        graphics.rotateTexture(code);
    EXPECT_THAT(TestPeer::mRectTexcoords(graphics), testing::ElementsAre(1, 0, 1, 1, 0, 0, 0, 1));
    graphics.init();
    EXPECT_THAT(TestPeer::mRectTexcoords(graphics), testing::ElementsAre(0, 0, 1, 0, 0, 1, 1, 1));
}

} // namespace
