#include "headless/PictureFile.h"

#include "headless/Error.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <sstream>
#include <unistd.h>
#include <webp/demux.h>

namespace tidalume::headless {

using namespace std::string_literals;

// A picture without symmetry: red grows to the right, green downwards.
Picture gradient(int width, int height, int blue = 0) {
    Picture picture(width, height);
    for (int i = 0; i < width * height; ++i) {
        const int x = i % width;
        const int y = i / width;
        const int rgba[] = {x * 255 / (width - 1), y * 255 / (height - 1), blue, 255};
        std::copy_n(rgba, 4, picture.pixel(x, y));
    }
    return picture;
}

class PictureFile : public testing::Test {
  protected:
    PictureFile() { std::filesystem::create_directories(mFolder); }
    ~PictureFile() override { std::filesystem::remove_all(mFolder); }

    std::string path(const std::string& name) const { return (mFolder / name).string(); }

    static std::string load(const std::string& path) {
        std::ostringstream bytes;
        bytes << std::ifstream(path, std::ios::binary).rdbuf();
        return bytes.str();
    }

    std::string store(const std::string& bytes) const {
        std::filesystem::remove(path("stored")); // some file systems wait for the disk when a file is overwritten
        std::ofstream(path("stored"), std::ios::binary) << bytes;
        return path("stored");
    }

    /// What readPicture says of a file that it refuses.
    static std::string reason(const std::string& path) {
        try {
            readPicture(path);
        } catch (const Error& error) {
            return error.what();
        }
        return "was read";
    }

    /// 64 x 48 pixels of the gradient.
    const std::string jpeg = load(TIDALUME_SOURCE_DIR "/tests/headless/gradient.jpg");

  private:
    const std::filesystem::path mFolder = testing::TempDir() + "tidalume-pictures-" + std::to_string(::getpid());
};

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
    const std::string bytes = load(path("a.webp"));
    const WebPData data = {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()};
    WebPAnimDecoder* decoder = WebPAnimDecoderNew(&data, nullptr);
    std::vector<int> ends;
    std::uint8_t* frame = nullptr;
    for (int end = 0; WebPAnimDecoderGetNext(decoder, &frame, &end); ends.push_back(end))
        EXPECT_NEAR(frame[(24 * 64 + 32) * 4 + 2], ends.size() * 120, 12);
    EXPECT_THAT(ends, testing::ElementsAre(16, 33, 51));
    WebPAnimDecoderDelete(decoder);
}

// EXIF orientations 1 to 8: which of the stored picture's corners (left or right, top or bottom) ends up top left, and
// which top right.
TEST_F(PictureFile, JpegIsTurnedUpright) {
    const char* const upright[8][2] = {{"LT", "RT"}, {"RT", "LT"}, {"RB", "LB"}, {"LB", "RB"},
                                       {"LT", "LB"}, {"LB", "LT"}, {"RB", "RT"}, {"RT", "RB"}};
    for (char orientation = 1; orientation <= 8; ++orientation) {
        // A big-endian EXIF block whose one directory holds the tag Orientation (0x0112, SHORT, count 1).
        const std::string exif = "\xFF\xE1\0\x22"
                                 "Exif\0\0MM\0*\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0"s +
                                 orientation + "\0\0\0\0\0\0"s;
        const Picture read = readPicture(store(std::string(jpeg).insert(2, exif)));
        ASSERT_EQ(read.width, orientation < 5 ? 64 : 48) << int{orientation};
        for (int right = 0; right < 2; ++right) {
            const std::uint8_t* pixel = read.pixel(right * (read.width - 1), 0);
            const char* corner = upright[orientation - 1][right];
            EXPECT_NEAR(pixel[0], corner[0] == 'R' ? 255 : 0, 16) << int{orientation};
            EXPECT_NEAR(pixel[1], corner[1] == 'B' ? 255 : 0, 16) << int{orientation};
        }
    }
}

TEST_F(PictureFile, DamagedFilesAreRefusedOrRead) {
    writePng(path("a.png"), gradient(64, 48));
    WebPAnimation animation(64, 48);
    animation.add(gradient(64, 48), 40);
    animation.write(path("a.webp"));
    for (const std::string& sample : {load(path("a.png")), load(path("a.webp")), jpeg}) {
        EXPECT_EQ(readPicture(store(sample)).width, 64);
        EXPECT_NE(reason(store(sample.substr(0, sample.size() / 2))), "was read") << sample[1] << " cut";
        for (std::size_t i = 0; i < sample.size(); i += 7) {
            std::string damaged = sample;
            damaged[i] ^= 0xFF;
            EXPECT_NE(reason(store(damaged)), "") << sample[1] << " damaged at " << i;
        }
    }
    EXPECT_EQ(reason(path("absent")), "there is no such file");
    EXPECT_EQ(reason("/dev/zero"), "is not a regular file");
    EXPECT_EQ(reason(store("")), "the file is empty");
    EXPECT_EQ(reason(store("GIF89a")), "is neither PNG nor JPEG nor WebP");
}

} // namespace tidalume::headless
