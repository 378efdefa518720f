#include "headless/PictureFile.h"

#include "headless/Error.h"
#include "headless/JpegReader.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <png.h>
#include <webp/demux.h>
#include <webp/encode.h>
#include <webp/mux.h>

namespace tidalume::headless {

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t largestFile = std::size_t{512} << 20;

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

std::string reasonOf(int error) {
    return std::strerror(error);
}

// Runs a body whose errors are about a file, which they will name.
template <typename Body>
auto about(const std::string& path, Body body) -> decltype(body()) {
    try {
        return body();
    } catch (const Error& error) {
        throw Error(path + ": " + error.what());
    }
}

Bytes readFile(const std::string& path) {
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (status.type() == std::filesystem::file_type::not_found) throw Error("there is no such file");
    if (error) throw Error(error.message());
    if (status.type() != std::filesystem::file_type::regular) throw Error("is not a regular file");
    const auto size = std::filesystem::file_size(path, error);
    if (error) throw Error(error.message());
    if (size > largestFile) throw Error("the file is larger than 512 MB");

    const File file(std::fopen(path.c_str(), "rb"));
    if (!file) throw Error(reasonOf(errno));
    Bytes bytes(size);
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file.get()));
    if (std::ferror(file.get())) throw Error(reasonOf(errno));
    return bytes;
}

void writeFile(const std::string& path, const std::uint8_t* bytes, std::size_t size) {
    File file(std::fopen(path.c_str(), "wb"));
    if (!file) throw Error(reasonOf(errno));
    const bool written = std::fwrite(bytes, 1, size, file.get()) == size;
    const int writeError = errno;
    if (!written) throw Error(reasonOf(writeError));
    if (std::fclose(file.release()) != 0) throw Error(reasonOf(errno));
}

bool startsWith(const Bytes& bytes, std::size_t offset, const char* text) {
    const std::size_t length = std::strlen(text);
    return bytes.size() >= offset + length && std::memcmp(bytes.data() + offset, text, length) == 0;
}

Picture readPng(const Bytes& bytes) {
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    const std::unique_ptr<png_image, void (*)(png_image*)> cleanup(&image, png_image_free);
    if (!png_image_begin_read_from_memory(&image, bytes.data(), bytes.size())) {
        throw Error(std::string("broken PNG: ") + image.message);
    }
    checkPictureSize(image.width, image.height);
    image.format = PNG_FORMAT_RGBA;
    Picture picture(static_cast<int>(image.width), static_cast<int>(image.height));
    if (!png_image_finish_read(&image, nullptr, picture.rgba.data(), 0, nullptr)) {
        throw Error(std::string("broken PNG: ") + image.message);
    }
    return picture;
}

Picture readWebP(const Bytes& bytes) {
    WebPBitstreamFeatures features;
    if (WebPGetFeatures(bytes.data(), bytes.size(), &features) != VP8_STATUS_OK) {
        throw Error("broken WebP: the header cannot be read");
    }
    checkPictureSize(static_cast<std::uint32_t>(features.width), static_cast<std::uint32_t>(features.height));

    const WebPData data = {bytes.data(), bytes.size()};
    const std::unique_ptr<WebPAnimDecoder, void (*)(WebPAnimDecoder*)> decoder(WebPAnimDecoderNew(&data, nullptr),
                                                                               WebPAnimDecoderDelete);
    std::uint8_t* frame = nullptr;
    int timestamp = 0;
    if (!decoder || !WebPAnimDecoderGetNext(decoder.get(), &frame, &timestamp)) {
        throw Error("broken WebP: the data are damaged or end too early");
    }
    Picture picture(features.width, features.height);
    std::copy_n(frame, picture.rgba.size(), picture.rgba.data());
    return picture;
}

Picture decode(const Bytes& bytes) {
    if (startsWith(bytes, 0, "\x89PNG")) return readPng(bytes);
    if (startsWith(bytes, 0, "\xFF\xD8\xFF")) return readJpeg(bytes);
    if (startsWith(bytes, 0, "RIFF") && startsWith(bytes, 8, "WEBP")) return readWebP(bytes);
    throw Error(bytes.empty() ? "the file is empty" : "is neither PNG nor JPEG nor WebP");
}

Bytes encodePng(const Picture& picture) {
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.width);
    image.height = static_cast<png_uint_32>(picture.height);
    image.format = PNG_FORMAT_RGBA;
    image.flags = PNG_IMAGE_FLAG_FAST;
    Bytes bytes(PNG_IMAGE_PNG_SIZE_MAX(image));
    png_alloc_size_t size = bytes.size();
    if (!png_image_write_to_memory(&image, bytes.data(), &size, 0, picture.rgba.data(), 0, nullptr)) {
        throw Error(image.message);
    }
    bytes.resize(size);
    return bytes;
}

} // namespace

void checkPictureSize(std::uint32_t width, std::uint32_t height) {
    constexpr std::uint32_t largestSide = 16384;
    constexpr std::uint64_t mostPixels = std::uint64_t{128} << 20;
    if (width > largestSide || height > largestSide || std::uint64_t{width} * height > mostPixels) {
        throw Error("a picture of " + std::to_string(width) + "x" + std::to_string(height) +
                    " pixels is too large: at most 16384 on a side and 128 megapixels");
    }
}

Picture readPicture(const std::string& path) {
    return about(path, [&] { return decode(readFile(path)); });
}

void writePng(const std::string& path, const Picture& picture) {
    about(path, [&] {
        const Bytes bytes = encodePng(picture);
        writeFile(path, bytes.data(), bytes.size());
    });
}

struct WebPAnimation::Encoder {
    Encoder(int width, int height) : width(width), height(height) {
        if (!WebPAnimEncoderOptionsInit(&options) || !WebPConfigPreset(&config, WEBP_PRESET_PICTURE, 80)) {
            throw Error("libwebp is another version than the headers that this was built with");
        }
        // Key frames only: whatever a frame leaves out keeps the errors of those before, which moving things trail.
        options.kmin = 0;
        options.kmax = 1;
        config.method = 2; // of 0, fast, to 6, small
        const bool possible = std::min(width, height) >= 1 && std::max(width, height) <= WEBP_MAX_DIMENSION;
        encoder = possible ? WebPAnimEncoderNew(width, height, &options) : nullptr;
        if (encoder == nullptr) {
            throw Error("an animation of " + std::to_string(width) + "x" + std::to_string(height) +
                        " is not possible: 1 to " + std::to_string(WEBP_MAX_DIMENSION) + " pixels a side");
        }
    }
    ~Encoder() { WebPAnimEncoderDelete(encoder); }
    Encoder(const Encoder&) = delete;
    Encoder& operator=(const Encoder&) = delete;

    void checkDone(int done) const {
        if (!done) throw Error(std::string("WebP encoding failed: ") + WebPAnimEncoderGetError(encoder));
    }

    int width;
    int height;
    int time = 0; // of the next frame's start, in milliseconds
    WebPAnimEncoderOptions options = {};
    WebPConfig config = {};
    WebPAnimEncoder* encoder;
};

WebPAnimation::WebPAnimation(int width, int height) : mEncoder(std::make_unique<Encoder>(width, height)) {}

WebPAnimation::~WebPAnimation() = default;

void WebPAnimation::add(const Picture& picture, int milliseconds) {
    if (picture.width != mEncoder->width || picture.height != mEncoder->height) {
        throw Error("the frame's size differs from the animation's");
    }
    WebPPicture frame;
    if (!WebPPictureInit(&frame)) throw Error("libwebp is another version than the headers that this was built with");
    const std::unique_ptr<WebPPicture, void (*)(WebPPicture*)> cleanup(&frame, WebPPictureFree);
    frame.use_argb = 1;
    frame.width = picture.width;
    frame.height = picture.height;
    mEncoder->checkDone(WebPPictureImportRGBA(&frame, picture.rgba.data(), picture.width * 4));
    mEncoder->checkDone(WebPAnimEncoderAdd(mEncoder->encoder, &frame, mEncoder->time, &mEncoder->config));
    mEncoder->time += milliseconds;
}

void WebPAnimation::write(const std::string& path) {
    about(path, [&] {
        mEncoder->checkDone(WebPAnimEncoderAdd(mEncoder->encoder, nullptr, mEncoder->time, nullptr));
        WebPData data;
        WebPDataInit(&data);
        const std::unique_ptr<WebPData, void (*)(WebPData*)> cleanup(&data, WebPDataClear);
        mEncoder->checkDone(WebPAnimEncoderAssemble(mEncoder->encoder, &data));
        writeFile(path, data.bytes, data.size);
    });
}

} // namespace tidalume::headless
