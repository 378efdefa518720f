#include "headless/JpegReader.h"

#include "headless/Error.h"

#include <csetjmp>
#include <cstdio>
#include <cstring>
#include <jerror.h>
#include <jpeglib.h>
#include <string>

namespace tidalume::headless {

namespace {

struct ErrorManager {
    jpeg_error_mgr base;
    std::jmp_buf jump;
    char message[JMSG_LENGTH_MAX];
};

void leave(j_common_ptr info) {
    auto* manager = reinterpret_cast<ErrorManager*>(info->err);
    info->err->format_message(info, manager->message);
    std::longjmp(manager->jump, 1);
}

// libjpeg only warns of damaged or missing data and paints them grey. Stray bytes between segments harm nothing; many
// cameras write them.
void onMessage(j_common_ptr info, int level) {
    if (level < 0 && info->err->msg_code != JWRN_EXTRANEOUS_DATA) leave(info);
}

// A JPEG decoder that reports errors by its return value. No object with a destructor lives in the functions that
// libjpeg's errors jump over.
class Decoder {
  public:
    Decoder() {
        mInfo.err = jpeg_std_error(&mError.base);
        mError.base.error_exit = leave;
        mError.base.emit_message = onMessage;
        mError.message[0] = '\0';
        jpeg_create_decompress(&mInfo);
    }
    ~Decoder() { jpeg_destroy_decompress(&mInfo); }
    Decoder(const Decoder&) = delete;
    Decoder& operator=(const Decoder&) = delete;

    bool readHeader(const std::uint8_t* bytes, unsigned long size) {
        if (setjmp(mError.jump) != 0) return false;
        jpeg_mem_src(&mInfo, bytes, size);
        jpeg_save_markers(&mInfo, JPEG_APP0 + 1, 0xFFFF);
        jpeg_read_header(&mInfo, TRUE);
        return true;
    }

    bool readPixels(std::uint8_t* rgba) {
        if (setjmp(mError.jump) != 0) return false;
        mInfo.out_color_space = JCS_EXT_RGBA;
        jpeg_start_decompress(&mInfo);
        while (mInfo.output_scanline < mInfo.output_height) {
            JSAMPROW row = rgba + std::size_t{mInfo.output_scanline} * mInfo.output_width * 4;
            jpeg_read_scanlines(&mInfo, &row, 1);
        }
        jpeg_finish_decompress(&mInfo);
        return true;
    }

    const jpeg_decompress_struct& info() const { return mInfo; }
    const char* message() const { return mError.message; }

  private:
    jpeg_decompress_struct mInfo = {};
    ErrorManager mError = {};
};

// EXIF numbers are stored in the byte order that the block names.
class ExifBlock {
  public:
    ExifBlock(const std::uint8_t* bytes, std::size_t size)
        : mBytes(bytes), mSize(size), mBigEndian(size > 0 && bytes[0] == 'M') {}

    unsigned number(std::size_t offset, std::size_t length) const {
        if (offset > mSize || mSize - offset < length) return 0;
        unsigned value = 0;
        for (std::size_t i = 0; i < length; ++i) {
            value = value << 8 | mBytes[offset + (mBigEndian ? i : length - 1 - i)];
        }
        return value;
    }

  private:
    const std::uint8_t* mBytes;
    std::size_t mSize;
    bool mBigEndian;
};

// The EXIF tag Orientation (0x0112) of the first directory: 1 to 8; 1, upright, where there is none.
unsigned orientationOf(const jpeg_decompress_struct& info) {
    constexpr std::size_t header = 6; // "Exif", 0, 0
    constexpr unsigned orientation = 0x0112;
    for (jpeg_saved_marker_ptr marker = info.marker_list; marker != nullptr; marker = marker->next) {
        if (marker->data_length < header || std::memcmp(marker->data, "Exif\0", header) != 0) continue;
        const ExifBlock exif(marker->data + header, marker->data_length - header);
        const std::size_t directory = exif.number(4, 4);
        const unsigned entries = exif.number(directory, 2);
        for (unsigned i = 0; i < entries; ++i) {
            const std::size_t entry = directory + 2 + std::size_t{i} * 12;
            if (exif.number(entry, 2) == orientation) return exif.number(entry + 8, 2);
        }
    }
    return 1;
}

// Orientations 5 to 8 exchange rows and columns; then the picture is mirrored along x, y, both or neither.
Picture turnedUpright(const Picture& stored, unsigned orientation) {
    if (orientation < 2 || orientation > 8) return stored;
    const bool exchanged = orientation >= 5;
    const bool mirroredX = orientation == 2 || orientation == 3 || orientation == 6 || orientation == 7;
    const bool mirroredY = orientation == 3 || orientation == 4 || orientation == 7 || orientation == 8;
    Picture upright = exchanged ? Picture(stored.height, stored.width) : Picture(stored.width, stored.height);
    for (int y = 0; y < upright.height; ++y) {
        for (int x = 0; x < upright.width; ++x) {
            const int fromX = mirroredX ? upright.width - 1 - x : x;
            const int fromY = mirroredY ? upright.height - 1 - y : y;
            const std::uint8_t* from = exchanged ? stored.pixel(fromY, fromX) : stored.pixel(fromX, fromY);
            std::memcpy(upright.pixel(x, y), from, 4);
        }
    }
    return upright;
}

} // namespace

Picture readJpeg(const std::vector<std::uint8_t>& bytes) {
    Decoder decoder;
    if (!decoder.readHeader(bytes.data(), bytes.size())) throw Error(std::string("broken JPEG: ") + decoder.message());
    checkPictureSize(decoder.info().image_width, decoder.info().image_height);
    if (decoder.info().num_components == 4) throw Error("JPEG pictures in CMYK are not supported");

    const unsigned orientation = orientationOf(decoder.info());
    Picture picture(static_cast<int>(decoder.info().image_width), static_cast<int>(decoder.info().image_height));
    if (!decoder.readPixels(picture.rgba.data())) throw Error(std::string("broken JPEG: ") + decoder.message());
    return turnedUpright(picture, orientation);
}

} // namespace tidalume::headless
