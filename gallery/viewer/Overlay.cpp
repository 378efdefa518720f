#include "gallery/viewer/Overlay.h"

#include "headless/Error.h"

#include <algorithm>

namespace tidalume::gallery {

namespace {

using Surface = std::unique_ptr<SDL_Surface, void (*)(SDL_Surface*)>;

// In pixels of the desktop.
constexpr float textSize = 14;
constexpr float lineLength = 500;
constexpr float margin = 10;

TTF_Font* openFont(int size) {
    if (TTF_Init() != 0) throw headless::Error(std::string("no text: ") + TTF_GetError());
    TTF_Font* const font = TTF_OpenFont(TIDALUME_FONT, size);
    if (font == nullptr) throw headless::Error(TIDALUME_FONT + std::string(": ") + TTF_GetError());
    return font;
}

void closeFont(TTF_Font* font) {
    TTF_CloseFont(font);
    TTF_Quit();
}

// White on black that lets the scene through. Over black, what SDL blends is premultiplied.
Picture panelPicture(TTF_Font* font, const std::string& text, int lineLength, int margin) {
    constexpr std::uint8_t darkness = 176;
    const Surface letters(
        TTF_RenderUTF8_Blended_Wrapped(font, text.c_str(), {255, 255, 255, 255}, static_cast<Uint32>(lineLength)),
        SDL_FreeSurface);
    if (!letters) throw headless::Error(std::string("no text: ") + TTF_GetError());
    const int width = letters->w + 2 * margin;
    const int height = letters->h + 2 * margin;
    const Surface panel(SDL_CreateRGBSurfaceWithFormat(0, width, height, 32, SDL_PIXELFORMAT_RGBA32), SDL_FreeSurface);
    if (!panel) throw headless::Error(std::string("no text: ") + SDL_GetError());
    SDL_FillRect(panel.get(), nullptr, SDL_MapRGBA(panel->format, 0, 0, 0, darkness));
    SDL_Rect place = {margin, margin, 0, 0};
    SDL_BlitSurface(letters.get(), nullptr, panel.get(), &place);

    Picture picture(width, height);
    for (int y = 0; y < height; ++y) {
        const auto* const row = static_cast<const std::uint8_t*>(panel->pixels) + y * panel->pitch;
        std::copy_n(row, 4 * width, picture.pixel(0, y));
    }
    return picture;
}

} // namespace

Overlay::Overlay(int width, int height, float scale)
    : mFont(openFont(static_cast<int>(textSize * scale)), closeFont), mWidth(width), mHeight(height), mScale(scale) {
    mGraphics.init();
    mGraphics.setScreenSize(width, height);
    mGraphics.setBlendFunction(GL_ONE, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
}

void Overlay::draw(const std::string& help, const std::string& note) {
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
    fit(mHelp, help);
    fit(mNote, note);
    if (!help.empty()) draw(mHelp, true);
    if (!note.empty()) draw(mNote, false);
}

void Overlay::contextLost() {
    mGraphics.GLContextDestroyed();
    for (Panel* panel : {&mHelp, &mNote})
        panel->texture.contextLost();
}

void Overlay::fit(Panel& panel, const std::string& text) {
    if (text.empty() || text == panel.text) return;
    const Picture picture =
        panelPicture(mFont.get(), text, static_cast<int>(lineLength * mScale), static_cast<int>(margin * mScale));
    panel.texture.load(picture);
    panel.text = text;
    panel.width = picture.width;
    panel.height = picture.height;
}

void Overlay::draw(const Panel& panel, bool isAbove) {
    const auto width = static_cast<float>(panel.width);
    const auto height = static_cast<float>(panel.height);
    const auto room = static_cast<float>(mHeight);
    const float scale = std::min({1.0F, static_cast<float>(mWidth) / width, room / height});
    mGraphics.renderBitmapRectangle(0, isAbove ? 0 : room - scale * height, scale * width, scale * height,
                                    panel.texture.name());
}

} // namespace tidalume::gallery
