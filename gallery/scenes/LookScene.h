#pragma once

#include "effects/vector/VectorGraphicRenderer.h"
#include "gallery/PictureTexture.h"
#include "gallery/Scene.h"
#include "looks/WaterLook.h"
#include "looks/WavesLook.h"

#include <cstdlib>
#include <type_traits>

namespace tidalume::gallery {

/// A look with the background below it.
template <typename AnyLook>
class LookScene final : public Scene {
  public:
    LookScene() { mLook.setSeed(static_cast<std::uint32_t>(lrand48())); }

    void setUp(int width, int height, const Picture& background) override {
        mWidth = width;
        mHeight = height;
        mBackground.load(background);
        mGraphics.init();
        mGraphics.setScreenSize(width, height);
        mGraphics.setBlendFunction(GL_ONE, GL_ZERO, GL_ONE, GL_ZERO);
        mLook.contextCreated();
        mLook.setSize(width, height);
        if constexpr (showsPicture) mLook.setPicture(mBackground.name(), width, height, PictureTop::LastRow);
    }

    void contextLost() override {
        mLook.contextLost();
        mGraphics.GLContextDestroyed();
        mBackground.contextLost();
    }

    void touch(const Touch& touch) override { mLook.touch(touch.pointer, touch.x, touch.y, touch.phase); }

    void drawFrame() override {
        ++mFrame;
        redraw();
    }

    // A look takes no step where no time has passed.
    void redraw() override {
        if (!showsPicture) drawBackground();
        mLook.draw(mFrame / 60.0);
    }

    Span<Parameter> parameters() const override { return mLook.parameters(); }
    bool set(const char* parameter, float value) override { return mLook.set(parameter, value); }
    float get(int parameter) const override { return mLook.get(parameter); }
    Span<Preset> presets() const override { return mLook.presets(); }
    bool usePreset(const char* name) override { return mLook.usePreset(name); }

  private:
    /// Others are drawn over what is there.
    static constexpr bool showsPicture = std::is_same_v<AnyLook, WaterLook> || std::is_same_v<AnyLook, WavesLook>;

    void drawBackground() {
        glBindFramebuffer(GL_FRAMEBUFFER, 0);
        mGraphics.renderBitmapRectangle(0, 0, static_cast<float>(mWidth), static_cast<float>(mHeight),
                                        mBackground.name());
    }

    AnyLook mLook;
    PictureTexture mBackground;
    VectorGraphicRenderer mGraphics;
    int mWidth = 1;
    int mHeight = 1;
    int mFrame = 0;
};

} // namespace tidalume::gallery
