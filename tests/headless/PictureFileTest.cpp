#include "headless/PictureFile.h"

#include "headless/Error.h"
#include "tests/gallery/ProgramTest.h"

#include <algorithm>
#include <webp/demux.h>

namespace tidalume::headless {

using namespace std::string_literals;
using testing::ThrowsMessage;

/// Red grows to the right, green downwards.
Picture gradient(int width, int height, int blue = 0) {
    Picture picture(width, height);
    for (int i = 0; i < width * height; ++i) {
        const int rgba[] = {i % width * 4, i / width * 5, blue, 255};
        std::copy_n(rgba, 4, &picture.rgba[4 * i]);
    }
    return picture;
}

using PictureFile = gallery::ProgramTest;

/// 64 x 48 pixels of the gradient.
const char jpeg[] = TIDALUME_SOURCE_DIR "/tests/headless/gradient.jpg";

TEST_F(PictureFile, PngKeepsEveryByte) {
    Picture picture = gradient(37, 21, 99);
    picture.pixel(3, 2)[3] = 128;
    writePng(path("a.png"), picture);
    EXPECT_EQ(readPicture(path("a.png")).rgba, picture.rgba);
    EXPECT_THROW(writePng(path("absent/a.png"), picture), Error);
    EXPECT_THROW(writePng("/dev/full", picture), Error);
}

TEST_F(PictureFile, AnimationHoldsItsFramesAndTimes) {
    WebPAnimation animation(64, 48);
    for (int i = 0; i < 3; ++i)
        animation.add(gradient(64, 48, i * 120), 16 + i);
    EXPECT_THROW(animation.add(gradient(63, 48), 16), Error);
    animation.write(path("a.webp"));
    const std::string bytes = load("a.webp");
    const WebPData data = {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()};
    WebPAnimDecoder* decoder = WebPAnimDecoderNew(&data, nullptr);
    std::vector<int> ends;
    std::uint8_t* frame = nullptr;
    for (int end = 0; WebPAnimDecoderGetNext(decoder, &frame, &end); ends.push_back(end))
        EXPECT_NEAR(frame[(24 * 64 + 32) * 4 + 2], ends.size() * 120, 12);
    EXPECT_THAT(ends, testing::ElementsAre(16, 33, 51));
    WebPAnimDecoderDelete(decoder);
}

/// EXIF orientations 1 to 8: the corner of the stored picture (left or right, top or bottom) that ends up top left.
TEST_F(PictureFile, JpegIsTurnedUpright) {
    const char* const topLeft[] = {"", "LT", "RT", "RB", "LB", "LT", "LB", "RB", "RT"};
    for (int orientation = 1; orientation <= 8; ++orientation) {
        // A big-endian EXIF block whose one directory holds the tag Orientation (0x0112, SHORT, count 1).
        const std::string exif = "\xFF\xE1\0\x22"
                                 "Exif\0\0MM\0*\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0"s +
                                 static_cast<char>(orientation) + "\0\0\0\0\0\0"s;
        write("turned", load(jpeg).insert(2, exif));
        const Picture read = readPicture(path("turned"));
        EXPECT_EQ(read.width, orientation < 5 ? 64 : 48) << orientation;
        EXPECT_NEAR(read.rgba[0], topLeft[orientation][0] == 'R' ? 255 : 0, 16) << orientation;
        EXPECT_NEAR(read.rgba[1], topLeft[orientation][1] == 'B' ? 255 : 0, 16) << orientation;
    }
}

TEST_F(PictureFile, DamagedFilesAreRefusedOrRead) {
    writePng(path("a.png"), gradient(64, 48));
    WebPAnimation animation(64, 48);
    animation.add(gradient(64, 48), 40);
    animation.write(path("a.webp"));
    for (const std::string name : {"a.png", "a.webp", jpeg}) {
        EXPECT_EQ(picture(name).width, 64);
        const std::string sample = load(name);
        write("cut", sample.substr(0, sample.size() / 2));
        EXPECT_THROW(picture("cut"), Error) << name;
        for (std::size_t i = 0; i < sample.size(); i += 7) {
            std::string damaged = sample;
            damaged[i] ^= 0xFF;
            std::filesystem::remove(path("damaged")); // some file systems wait for the disk when a file is overwritten
            write("damaged", damaged);
            try {
                picture("damaged");
            } catch (const Error&) { // is as good as a picture
            }
        }
    }
    write("empty", "");
    write("gif", "GIF89a");
    EXPECT_THAT([&] { picture("empty"); }, ThrowsMessage<Error>("the file is empty"));
    EXPECT_THAT([&] { picture("gif"); }, ThrowsMessage<Error>("is neither PNG nor JPEG nor WebP"));
    EXPECT_THAT([&] { picture("/dev/zero"); }, ThrowsMessage<Error>("is not a regular file"));
}

} // namespace tidalume::headless
