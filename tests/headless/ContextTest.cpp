#include "headless/Error.h"
#include "headless/HeadlessContext.h"
#include "headless/Pixels.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <numeric>

namespace tidalume::headless {

namespace {

GLint integer(GLenum name) {
    GLint value = 0;
    glGetIntegerv(name, &value);
    return value;
}

void clear(float red, float green, float blue, float alpha) {
    glClearColor(red, green, blue, alpha);
    glClear(GL_COLOR_BUFFER_BIT);
}

} // namespace

TEST(HeadlessContext, ChangesSizeAndLosesItsNamesOnlyWhenRecreated) {
    EXPECT_THROW(HeadlessContext(0, 10), Error);
    EXPECT_THROW(HeadlessContext(1000000, 10), Error);
    HeadlessContext context(7, 5);
    for (int loss = 0; loss < 2; ++loss) {
        const GLuint texture = makeTexture(GL_R16F, 1, 1, std::vector<float>{1});
        context.resize(33, 17);
        EXPECT_THROW(context.resize(10, 0), Error) << "and stays as it was";
        {
            const HeadlessContext other(2, 2);
            clear(1, 0, 0, 1);
        }
        context.makeCurrent();
        EXPECT_TRUE(glIsTexture(texture));
        clear(0, 1, 0, 1);
        EXPECT_EQ(readFramebuffer(33, 17).at(32, 16)[1], 1.0F);
        context.recreate();
        EXPECT_FALSE(glIsTexture(texture));
        clear(0, 0, 1, 1);
        EXPECT_EQ(readFramebuffer(33, 17).at(32, 16)[2], 1.0F);
    }
}

// Every format, odd sizes, floats and bytes: each texel comes back where it was put, absent channels as 0 and alpha 1.
TEST(Pixels, TexturesComeBackAsTheyWent) {
    const HeadlessContext context(4, 4);
    const GLuint bound = makeTexture(GL_RGBA8, 1, 1, std::vector<float>{0, 0, 0, 0});
    glBindTexture(GL_TEXTURE_2D, bound);
    constexpr int width = 5;
    constexpr int height = 3;
    for (const GLenum format : {GL_R16F, GL_RG16F, GL_RGB16F, GL_RGBA16F, GL_RGBA8}) {
        const int channels = channelCount(format);
        std::vector<std::uint8_t> bytes(static_cast<std::size_t>(width * height * channels));
        std::iota(bytes.begin(), bytes.end(), std::uint8_t{1});
        std::vector<float> floats(bytes.size());
        std::transform(bytes.begin(), bytes.end(), floats.begin(), [](int byte) { return byte / 255.0F; });
        for (const GLuint texture :
             {makeTexture(format, width, height, floats), makeTexture(format, width, height, bytes)}) {
            const PixelArray pixels = readTexture(texture, width, height);
            for (int i = 0; i < width * height * 4; ++i) {
                const int channel = i % 4;
                const float missing = channel == 3 ? 1.0F : 0.0F;
                const float expected =
                    channel < channels ? floats[static_cast<std::size_t>(i / 4 * channels + channel)] : missing;
                // A half float keeps 11 bits; drivers round or truncate.
                EXPECT_NEAR(pixels.rgba[static_cast<std::size_t>(i)], expected, expected / 1024) << format << " " << i;
            }
        }
    }
    EXPECT_THROW(makeTexture(GL_R16F, 2, 1, std::vector<float>(4)), Error);
    EXPECT_THROW(makeTexture(GL_R32F, 2, 2, std::vector<float>(4)), Error);
    EXPECT_THROW(readTexture(12345, 1, 1), Error);
    EXPECT_EQ(integer(GL_TEXTURE_BINDING_2D), static_cast<GLint>(bound));
    EXPECT_EQ(integer(GL_FRAMEBUFFER_BINDING), 0);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST(Pixels, AFramebufferPictureIsUprightAndOpaque) {
    const HeadlessContext context(3, 2);
    clear(0, 0, 1, 0);
    glEnable(GL_SCISSOR_TEST);
    glScissor(2, 0, 1, 1);
    clear(1, 0, 0, 0.25F);
    const Picture picture = framebufferPicture(3, 2);
    const std::vector<std::uint8_t> blueThenRed = {0, 0, 255, 255, 0, 0, 255, 255, 0,   0, 255, 255,
                                                   0, 0, 255, 255, 0, 0, 255, 255, 255, 0, 0,   255};
    EXPECT_EQ(picture.rgba, blueThenRed);
}

} // namespace tidalume::headless
