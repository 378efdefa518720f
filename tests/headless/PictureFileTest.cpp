#include "headless/PictureFile.h"

#include "headless/Error.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <jpeglib.h>
#include <webp/demux.h>

namespace tidalume::headless {

namespace {

using Bytes = std::vector<std::uint8_t>;

// A picture without symmetry: red grows to the right, green downwards.
Picture gradient(int width, int height, std::uint8_t blue = 0) {
    Picture picture(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            std::uint8_t* pixel = picture.pixel(x, y);
            pixel[0] = static_cast<std::uint8_t>(x * 255 / (width - 1));
            pixel[1] = static_cast<std::uint8_t>(y * 255 / (height - 1));
            pixel[2] = blue;
            pixel[3] = 255;
        }
    }
    return picture;
}

Bytes jpegOf(const Picture& picture, std::uint8_t orientation) {
    jpeg_error_mgr errors;
    jpeg_compress_struct info;
    info.err = jpeg_std_error(&errors);
    jpeg_create_compress(&info);
    unsigned char* data = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&info, &data, &size);
    info.image_width = static_cast<JDIMENSION>(picture.width);
    info.image_height = static_cast<JDIMENSION>(picture.height);
    info.input_components = 4;
    info.in_color_space = JCS_EXT_RGBA;
    jpeg_set_defaults(&info);
    jpeg_set_quality(&info, 100, TRUE);
    jpeg_start_compress(&info, TRUE);
    // A big-endian EXIF block whose one directory holds the tag Orientation (0x0112, SHORT, count 1).
    const Bytes exif = {'E', 'x',  'i', 'f', 0, 0, 'M', 'M', 0, 42,          0, 0, 0, 8, 0, 1,
                        1,   0x12, 0,   3,   0, 0, 0,   1,   0, orientation, 0, 0, 0, 0, 0, 0};
    jpeg_write_marker(&info, JPEG_APP0 + 1, exif.data(), static_cast<unsigned>(exif.size()));
    while (info.next_scanline < info.image_height) {
        auto* row = const_cast<JSAMPROW>(picture.pixel(0, static_cast<int>(info.next_scanline)));
        jpeg_write_scanlines(&info, &row, 1);
    }
    jpeg_finish_compress(&info);
    jpeg_destroy_compress(&info);
    Bytes bytes(data, data + size);
    std::free(data);
    return bytes;
}

class PictureFile : public testing::Test {
  protected:
    PictureFile() { std::filesystem::create_directories(mFolder); }
    ~PictureFile() override { std::filesystem::remove_all(mFolder); }

    std::string path(const std::string& name) const { return (mFolder / name).string(); }

    Bytes load(const std::string& name) const {
        std::ifstream file(path(name), std::ios::binary);
        return Bytes(std::istreambuf_iterator<char>(file), {});
    }

    std::string store(const Bytes& bytes) const {
        std::ofstream file(path("stored"), std::ios::binary);
        file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        return path("stored");
    }

  private:
    std::filesystem::path mFolder =
        std::filesystem::path(testing::TempDir()) / ("tidalume-pictures-" + std::to_string(::getpid()));
};

} // namespace

TEST_F(PictureFile, PngKeepsEveryByte) {
    Picture picture = gradient(37, 21, 99);
    picture.pixel(3, 2)[3] = 128;
    writePng(path("a.png"), picture);
    const Picture read = readPicture(path("a.png"));
    EXPECT_EQ(read.width, 37);
    EXPECT_EQ(read.rgba, picture.rgba);
}

TEST_F(PictureFile, AnimationHoldsItsFramesAndTimes) {
    WebPAnimation animation(64, 48);
    for (int i = 0; i < 3; ++i)
        animation.add(gradient(64, 48, static_cast<std::uint8_t>(i * 120)), 16 + i);
    animation.write(path("a.webp"));
    const Bytes bytes = load("a.webp");
    const WebPData data = {bytes.data(), bytes.size()};
    WebPAnimDecoder* decoder = WebPAnimDecoderNew(&data, nullptr);
    ASSERT_NE(decoder, nullptr);
    std::vector<int> ends;
    std::uint8_t* frame = nullptr;
    for (int end = 0; WebPAnimDecoderGetNext(decoder, &frame, &end); ends.push_back(end))
        EXPECT_NEAR(frame[(24 * 64 + 32) * 4 + 2], static_cast<int>(ends.size()) * 120, 12);
    EXPECT_EQ(ends, (std::vector<int>{16, 33, 51}));
    WebPAnimDecoderDelete(decoder);
    EXPECT_THROW(animation.add(gradient(63, 48), 16), Error);
}

// EXIF orientations 1 to 8: which of the stored picture's corners (left or right, top or bottom) ends up top left, and
// which top right.
TEST_F(PictureFile, JpegIsTurnedUpright) {
    const char* const upright[8][2] = {{"LT", "RT"}, {"RT", "LT"}, {"RB", "LB"}, {"LB", "RB"},
                                       {"LT", "LB"}, {"LB", "LT"}, {"RB", "RT"}, {"RT", "RB"}};
    for (std::uint8_t orientation = 1; orientation <= 8; ++orientation) {
        const Picture read = readPicture(store(jpegOf(gradient(64, 48), orientation)));
        ASSERT_EQ(read.width, orientation < 5 ? 64 : 48) << int{orientation};
        for (int right = 0; right < 2; ++right) {
            const std::uint8_t* pixel = read.pixel(right * (read.width - 1), 0);
            const char* corner = upright[orientation - 1][right];
            EXPECT_NEAR(pixel[0], corner[0] == 'R' ? 255 : 0, 16) << int{orientation};
            EXPECT_NEAR(pixel[1], corner[1] == 'B' ? 255 : 0, 16) << int{orientation};
        }
    }
}

TEST_F(PictureFile, TruncatedAndDamagedFilesAreRefusedOrRead) {
    const Picture picture = gradient(64, 48);
    writePng(path("sample.png"), picture);
    WebPAnimation animation(64, 48);
    animation.add(picture, 40);
    animation.write(path("sample.webp"));
    for (const Bytes& sample : {load("sample.png"), load("sample.webp"), jpegOf(picture, 1)}) {
        ASSERT_EQ(readPicture(store(sample)).width, 64);
        // The last 16 bytes may hold nothing but an end mark.
        for (std::size_t length = 0; length + 16 < sample.size(); length += length < 64 ? 1 : 13) {
            EXPECT_THROW(readPicture(store(Bytes(sample.begin(), sample.begin() + static_cast<long>(length)))), Error)
                << sample[1] << " cut to " << length << " bytes";
        }
        for (std::size_t i = 0; i < sample.size(); i += 5) {
            Bytes damaged = sample;
            damaged[i] ^= 0xFF;
            try {
                const Picture read = readPicture(store(damaged));
                EXPECT_EQ(read.rgba.size(),
                          static_cast<std::size_t>(read.width) * static_cast<std::size_t>(read.height) * 4);
            } catch (const Error& error) {
                EXPECT_STRNE(error.what(), "");
            }
        }
    }
}

TEST_F(PictureFile, WhatIsNoPictureIsNamed) {
    const auto reason = [](const std::string& file) -> std::string {
        try {
            readPicture(file);
        } catch (const Error& error) {
            return error.what();
        }
        return "was read";
    };
    EXPECT_EQ(reason(path("absent")), "there is no such file");
    EXPECT_EQ(reason(path("")), "is not a regular file");
    EXPECT_EQ(reason("/dev/zero"), "is not a regular file");
    EXPECT_EQ(reason(store({})), "the file is empty");
    EXPECT_EQ(reason(store({'G', 'I', 'F', '8', '9', 'a'})), "is neither PNG nor JPEG nor WebP");

    EXPECT_THROW(writePng(path("absent/a.png"), gradient(4, 4)), Error);
    EXPECT_THROW(writePng("/dev/full", gradient(64, 48)), Error);
}

} // namespace tidalume::headless
