#include "effects/metaball/Metaball2DRenderer.h"
#include "headless/Pixels.h"
#include "looks/BlobsLook.h"
#include "looks/FieldPainter.h"
#include "tests/support/GLTest.h"

#include <algorithm>
#include <cmath>

namespace {

using namespace tidalume;

class BlobsTest : public GLTest {
  protected:
    /// A ball in the middle of the screen, painted over what is there.
    headless::PixelArray paint(float radius, const FieldPainter::Colors& colors) {
        float ball[6] = {0.5F * width, 0.5F * height, radius};
        FieldScreen screen(height);
        screen.fit(width, height);
        screen.fitQuality(1, radius);
        Metaball2DRenderer metaballs;
        metaballs.init(screen.quality());
        metaballs.setScreenSize(screen.width(), screen.height());
        metaballs.addMetaballs(ball, 1);
        FieldPainter painter;
        painter.createPrograms();
        glViewport(0, 0, width, height);
        painter.paint(metaballs.getTexture(), screen, colors);
        return headless::readFramebuffer(width, height);
    }
};

// The change of the field from pixel to pixel is taken along both axes, so an outline is wider where it is oblique.
TEST_F(BlobsTest, OutlineIsAPixelWide) {
    constexpr float radius = 20.3F;
    constexpr Color color = {0.8F, 0.4F, 0.2F, 0.5F};
    glClearColor(0, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT);
    const headless::PixelArray picture = paint(radius, {color, color, color});
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const float across = static_cast<float>(x) + 0.5F - 0.5F * width;
            const float up = static_cast<float>(y) + 0.5F - 0.5F * height;
            const float distance = std::hypot(across, up);
            const float breadth = (std::fabs(across) + std::fabs(up)) / std::max(distance, 1.0F);
            const float alpha = 0.5F * std::clamp((radius - distance) / breadth + 0.5F, 0.0F, 1.0F);
            const float* pixel = picture.at(x, y);
            ASSERT_NEAR(pixel[3], alpha, 0.03) << x << " " << y;
            for (int channel = 0; channel < 3; ++channel)
                ASSERT_NEAR(pixel[channel], (&color.red)[channel] * pixel[3], 0.005) << "premultiplied";
        }
    }
}

TEST_F(BlobsTest, ColorsRunFromTheBottomToTheTop) {
    glClearColor(0, 0, 1, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    const headless::PixelArray picture = paint(100, {{1, 0, 0, 0.5F}, {0, 1, 0, 1}, {1, 1, 1, 1}});
    const auto expectColor = [&](int row, Color color) {
        for (int channel = 0; channel < 4; ++channel)
            EXPECT_NEAR(picture.at(48, row)[channel], (&color.red)[channel], 0.03) << row << " " << channel;
    };
    expectColor(0, {0.5F, 0, 0.5F, 1});
    expectColor(15, {0.25F, 0.5F, 0.25F, 1});
    expectColor(30, {0, 1, 0, 1});
    expectColor(60, {1, 1, 1, 1});
}

TEST_F(BlobsTest, BallsOfTheCallersStandAmongTheOthers) {
    BlobsLook blobs;
    blobs.contextCreated();
    blobs.setSize(width, height);
    blobs.setDrops(0);
    blobs.setPools(0);
    blobs.setPalette(BlobsLook::INK);
    const auto alphaAt = [&](int x, int y) { // from the top
        glClearColor(0, 0, 0, 0);
        glClear(GL_COLOR_BUFFER_BIT);
        blobs.draw(0);
        return headless::readFramebuffer(width, height).at(x, height - 1 - y)[3];
    };
    const BlobsLook::Ball balls[] = {{NAN, 5, 5}, {70.5F, 20.5F, 10}, {30, 30, INFINITY}, {30, 40, -1}};
    blobs.setBalls(balls, 4);
    EXPECT_GT(alphaAt(79, 20), 0.9F);
    EXPECT_EQ(alphaAt(84, 20), 0.0F);
    EXPECT_EQ(alphaAt(30, 35), 0.0F);
}

} // namespace
