#pragma once

#include "effects/vector/VectorGraphicRenderer.h"
#include "gallery/PictureTexture.h"

#include <SDL_ttf.h>
#include <memory>
#include <string>

namespace tidalume::gallery {

/// Text on dark panels over what framebuffer 0 holds. Made anew for another size and for another GL context, in which
/// all calls are made.
class Overlay {
  public:
    /// @param width, height  of framebuffer 0 in pixels
    /// @param scale          pixels for each of the desktop's
    ///
    /// Throws Error where the font cannot be opened.
    Overlay(int width, int height, float scale);
    ~Overlay() = default;
    Overlay(const Overlay&) = delete;
    Overlay& operator=(const Overlay&) = delete;

    /// Draws lines in the upper left corner and a line in the lower one, smaller where they would not fit; nothing for
    /// an empty text.
    void draw(const std::string& help, const std::string& note);

    /// The GL context is gone: abandons every GL name without a GL call.
    void contextLost();

  private:
    struct Panel {
        std::string text;
        PictureTexture texture;
        int width = 0;
        int height = 0;
    };

    void fit(Panel& panel, const std::string& text);
    /// @param isAbove  in the upper corner
    void draw(const Panel& panel, bool isAbove);

    std::unique_ptr<TTF_Font, void (*)(TTF_Font*)> mFont;
    VectorGraphicRenderer mGraphics;
    Panel mHelp;
    Panel mNote;
    int mWidth;
    int mHeight;
    float mScale;
};

} // namespace tidalume::gallery
