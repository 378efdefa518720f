#include "headless/Error.h"
#include "headless/HeadlessContext.h"
#include "headless/PictureFile.h"
#include "headless/Pixels.h"
#include "tests/support/Files.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <gmock/gmock.h>
#include <numeric>
#include <unistd.h>
#include <webp/demux.h>

namespace tidalume::headless {

using namespace testing;

long virtualMegabytes() {
    long pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    return (pages * sysconf(_SC_PAGESIZE)) >> 20;
}

TEST(HeadlessContext, ShowsWhatIsDrawnUprightAndOpaqueAtAnySize) {
    EXPECT_THROW(HeadlessContext(0, 10), Error);
    HeadlessContext context(1, 1);
    {
        const HeadlessContext another(3, 3);
        context.makeCurrent();
    }
    EXPECT_THAT(context.driver(), HasSubstr("OpenGL ES 3")) << "it is still current";
    context.resize(1, 2);
    EXPECT_THAT([&] { context.resize(10, 1000000); }, ThrowsMessage<Error>(StartsWith("height 1000000 is above")));
    EXPECT_EQ(std::pair(context.width(), context.height()), std::pair(1, 2)) << "as it was";
    glClearColor(0, 0, 1, 0);
    glClear(GL_COLOR_BUFFER_BIT);
    glEnable(GL_SCISSOR_TEST);
    glScissor(0, 0, 1, 1);
    glClearColor(1, 0, 0, 0.25F);
    glClear(GL_COLOR_BUFFER_BIT);
    EXPECT_THAT(framebufferPicture(1, 2).rgba, ElementsAre(0, 0, 255, 255, 255, 0, 0, 255)) << "red below blue";

    const GLuint texture = makeTexture(GL_R16F, 1, 1, std::vector<float>{1});
    context.recreate();
    EXPECT_THROW(readTexture(texture, 1, 1), Error) << "its name is gone";

    const long before = virtualMegabytes();
    for (int i = 0; i < 20; ++i)
        HeadlessContext(4096, 4096).resize(4096, 4096 - i); // 64 MB each
    EXPECT_LE(virtualMegabytes() - before, 640) << "surfaces that are replaced or closed go";
}

TEST(Picture, IsPremultipliedByEachPixelsAlpha) {
    Picture picture(3, 1);
    picture.rgba = {255, 100, 1, 128, 255, 100, 0, 255, 255, 100, 0, 0};
    premultiply(picture);
    EXPECT_THAT(picture.rgba, ElementsAre(128, 50, 1, 128, 255, 100, 0, 255, 0, 0, 0, 0));
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
    const GLuint clamped = makeTexture(GL_RGBA8, 1, 1, std::vector<float>{-1, 2, NAN, 1});
    EXPECT_THAT(readTexture(clamped, 1, 1).rgba, ElementsAre(0, 1, 0, 1));
    EXPECT_THROW(makeTexture(GL_R16F, 2, 1, std::vector<float>(4)), Error);
    EXPECT_THROW(makeTexture(GL_R32F, 2, 2, std::vector<float>(4)), Error);
    GLint bindings[2];
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &bindings[0]);
    glGetIntegerv(GL_READ_FRAMEBUFFER_BINDING, &bindings[1]);
    EXPECT_THAT(bindings, ElementsAre(0, framebuffer)) << "left as they were";
    EXPECT_EQ(glGetError(), GL_NO_ERROR);
}

/// Opaque, in stripes around a shade.
Picture pattern(int width, int height, int shade = 0) {
    Picture picture(width, height);
    for (std::size_t i = 0; i < picture.rgba.size(); ++i)
        picture.rgba[i] = i % 4 == 3 ? 255 : shade + i % 15;
    return picture;
}

/// Files lie in a folder of the test's own.
class PictureFile : public Test {
  protected:
    ~PictureFile() override { EXPECT_EQ(openFiles(), mOpenFiles) << "a file was left open"; }

  private:
    const WorkingFolder mFolder;
    const std::vector<std::string> mOpenFiles = openFiles();
};

/// 64 x 48 pixels in which red grows to the right and green downwards; EXIF orientation 1, big-endian, at byte 30.
const char jpeg[] = TIDALUME_SOURCE_DIR "/tests/headless/gradient.jpg";

TEST_F(PictureFile, PngKeepsEveryByte) {
    Picture picture = pattern(16384, 3); // as wide as may be
    picture.pixel(3, 2)[3] = 128;
    writePng("a.png", picture);
    EXPECT_EQ(readPicture("a.png").rgba, picture.rgba);
    EXPECT_THAT([&] { writePng("/dev/full", picture); }, ThrowsMessage<Error>("/dev/full: No space left on device"));
}

// A soft light moves to the right over a dark ground and leaves no trail.
TEST_F(PictureFile, AnimationHoldsItsFramesAndTimes) {
    constexpr int frames = 60, ground = 20;
    WebPAnimation animation(160, 48);
    EXPECT_THROW(animation.add(pattern(63, 48), 16), Error);
    for (int light = 0; light < 2 * frames; light += 2) {
        Picture picture = pattern(160, 48);
        for (int i = 0; i < 160 * 48; ++i) {
            const double away = std::hypot(i % 160 - light, i / 160 - 24);
            picture.rgba[4 * i] = static_cast<std::uint8_t>(ground + 200 * std::exp(-away / 6));
            picture.rgba[4 * i + 1] = picture.rgba[4 * i + 2] = ground;
        }
        animation.add(picture, 16 + light);
    }
    animation.write("a.webp");
    const std::string bytes = fileContent("a.webp");
    EXPECT_EQ(bytes.substr(bytes.find("ANIM") + 12, 2), std::string(2, '\0')) << "it plays for ever";
    const WebPData data = {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()};
    WebPAnimDecoder* decoder = WebPAnimDecoderNew(&data, nullptr);
    std::uint8_t* frame = nullptr;
    int light = 0, expectedEnd = 0, largest = 0;
    for (int end = 0; WebPAnimDecoderGetNext(decoder, &frame, &end); light += 2) {
        EXPECT_EQ(end, expectedEnd += 16 + light);
        EXPECT_GT(frame[(24 * 160 + light) * 4], 160) << light;
        for (int i = 0; i < 160 * 48; ++i) {
            if (i % 160 < light - 30) largest = std::max(largest, std::abs(frame[4 * i] - ground));
        }
    }
    WebPAnimDecoderDelete(decoder);
    EXPECT_EQ(light, 2 * frames);
    EXPECT_LE(largest, 6);
}

/// EXIF orientations 1 to 8 in both byte orders: the corner of the stored picture (left or right, top or bottom) that
/// ends up top left.
TEST_F(PictureFile, JpegIsTurnedUpright) {
    const char* const topLeft[] = {"", "LT", "RT", "RB", "LB", "LT", "LB", "RB", "RT"};
    const std::string orders[] = {fileContent(jpeg).substr(12, 20), {"II*\0\x8\0\0\0\1\0\x12\1\3\0\1\0\0\0\1\0", 20}};
    for (int i = 0; i < 16; ++i) {
        const int orientation = 1 + i / 2;
        const std::string& block = orders[i % 2];
        writeFile("turned", fileContent(jpeg).replace(12, 20, block).replace(31 - i % 2, 1, 1, char(orientation)));
        const Picture read = readPicture("turned");
        EXPECT_EQ(read.width, orientation < 5 ? 64 : 48) << i;
        EXPECT_NEAR(read.rgba[0], topLeft[orientation][0] == 'R' ? 255 : 0, 16) << i;
        EXPECT_NEAR(read.rgba[1], topLeft[orientation][1] == 'B' ? 255 : 0, 16) << i;
    }
}

TEST_F(PictureFile, DamagedFilesAreRefusedOrRead) {
    writePng("a.png", pattern(64, 48));
    WebPAnimation animation(64, 48);
    animation.add(pattern(64, 48), 40);
    animation.write("a.webp");
    for (const std::string name : {"a.png", "a.webp", jpeg}) {
        EXPECT_EQ(readPicture(name).width, 64);
        const std::string sample = fileContent(name);
        writeFile("cut", sample.substr(0, sample.size() / 2));
        EXPECT_THROW(readPicture("cut"), Error) << name;
        for (std::size_t i = 0; i < sample.size(); i += 8) {
            std::string damaged = sample;
            damaged[i] ^= 0xFF;
            std::filesystem::remove("damaged"); // some file systems wait for the disk when a file is overwritten
            writeFile("damaged", damaged);
            try {
                readPicture("damaged");
            } catch (const Error&) { // is as good as a picture
            }
        }
    }
    writeFile("empty", "");
    writeFile("gif", "GIF89a");
    EXPECT_THAT([&] { readPicture("empty"); }, ThrowsMessage<Error>("empty: the file is empty"));
    EXPECT_THAT([&] { readPicture("gif"); }, ThrowsMessage<Error>("gif: is neither PNG nor JPEG nor WebP"));
    EXPECT_THAT([&] { readPicture("/dev/zero"); }, ThrowsMessage<Error>("/dev/zero: is not a regular file"));
}

} // namespace tidalume::headless
