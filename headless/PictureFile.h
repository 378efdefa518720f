#pragma once

#include "headless/Picture.h"

#include <memory>
#include <string>

namespace tidalume::headless {

/// Reads a PNG, JPEG or WebP file, which is told by its content, not by its name. JPEG pictures are turned upright by
/// their EXIF orientation; of an animation the first frame is taken.
///
/// Throws Error with the path and the reason for a file that cannot be read, is of another kind, is broken or
/// ends too early, or holds a picture of more than 16,384 pixels on a side or 128 megapixels in all.
Picture readPicture(const std::string& path);

/// Writes a PNG file, replacing one that is there. Throws Error with the path and the reason.
void writePng(const std::string& path, const Picture& picture);

/// An animated WebP file in the making, which repeats for ever when shown.
class WebPAnimation {
  public:
    /// For frames of width x height pixels, up to 16,383 each. Throws Error where the encoder refuses.
    WebPAnimation(int width, int height);
    ~WebPAnimation();
    WebPAnimation(const WebPAnimation&) = delete;
    WebPAnimation& operator=(const WebPAnimation&) = delete;

    /// Adds a frame that is shown for that many milliseconds. Throws Error for a picture of another size.
    void add(const Picture& picture, int milliseconds);

    /// Writes the file, replacing one that is there. Throws Error with the path and the reason, also when there is no
    /// frame.
    void write(const std::string& path);

  private:
    struct Encoder;
    std::unique_ptr<Encoder> mEncoder;
};

} // namespace tidalume::headless
