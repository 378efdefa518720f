#include "headless/Error.h"
#include "headless/HeadlessContext.h"
#include "headless/Pixels.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <iterator>
#include <numeric>

namespace tidalume::headless {

using namespace testing;

void clear(float red, float green, float blue, float alpha) {
    glClearColor(red, green, blue, alpha);
    glClear(GL_COLOR_BUFFER_BIT);
}

TEST(HeadlessContext, ShowsWhatIsDrawnUprightAndOpaqueAtAnySize) {
    EXPECT_THROW(HeadlessContext(0, 10), Error);
    HeadlessContext context(1, 1);
    context.resize(2, 2);
    EXPECT_THROW(context.resize(1000000, 10), Error) << "and stays as it was";
    HeadlessContext(3, 3).makeCurrent();
    context.makeCurrent();
    clear(0, 0, 1, 0);
    glEnable(GL_SCISSOR_TEST);
    glScissor(1, 0, 1, 1);
    clear(1, 0, 0, 0.25F);
    const int redBelowRight[] = {0, 0, 255, 255, 0, 0, 255, 255, 0, 0, 255, 255, 255, 0, 0, 255};
    EXPECT_THAT(framebufferPicture(2, 2).rgba, ElementsAreArray(redBelowRight));

    const GLuint texture = makeTexture(GL_R16F, 1, 1, std::vector<float>{1});
    EXPECT_TRUE(glIsTexture(texture));
    context.recreate();
    EXPECT_FALSE(glIsTexture(texture));
}

// Every format, odd sizes, floats and bytes: each texel comes back where it was put, absent channels as 0 and alpha 1.
TEST(Pixels, TexturesComeBackAsTheyWent) {
    const HeadlessContext context(4, 4);
    GLuint framebuffer = 0;
    glGenFramebuffers(1, &framebuffer);
    glBindFramebuffer(GL_READ_FRAMEBUFFER, framebuffer);
    for (const GLenum format : {GL_R16F, GL_RG16F, GL_RGB16F, GL_RGBA16F, GL_RGBA8}) {
        const int channels = channelCount(format);
        std::vector<std::uint8_t> bytes(5 * 3 * channels);
        std::iota(bytes.begin(), bytes.end(), 1);
        std::vector<float> floats;
        std::transform(bytes.begin(), bytes.end(), std::back_inserter(floats), [](int byte) { return byte / 255.0F; });
        for (const GLuint texture : {makeTexture(format, 5, 3, floats), makeTexture(format, 5, 3, bytes)}) {
            const PixelArray pixels = readTexture(texture, 5, 3);
            for (int i = 0; i < 5 * 3 * 4; ++i) {
                const int channel = i % 4;
                const float expected = channel < channels ? floats[i / 4 * channels + channel] : channel == 3;
                // A half float keeps 11 bits; drivers round or truncate.
                EXPECT_NEAR(pixels.rgba[i], expected, expected / 1024) << format << " " << i;
            }
        }
    }
    EXPECT_THROW(makeTexture(GL_R16F, 2, 1, std::vector<float>(4)), Error);
    EXPECT_THROW(makeTexture(GL_R32F, 2, 2, std::vector<float>(4)), Error);
    EXPECT_THROW(readTexture(12345, 1, 1), Error);
    GLint bindings[2];
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &bindings[0]);
    glGetIntegerv(GL_READ_FRAMEBUFFER_BINDING, &bindings[1]);
    EXPECT_THAT(bindings, ElementsAre(0, framebuffer)) << "left as they were";
    EXPECT_EQ(glGetError(), GL_NO_ERROR);
}

} // namespace tidalume::headless
