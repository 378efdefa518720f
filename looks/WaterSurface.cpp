#include "looks/WaterSurface.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace tidalume {

namespace {

// Texels of the field: along the longer side, however narrow the screen; and along the shorter side, since rings on
// fewer are no rings.
constexpr float maxTexels = 2048;
constexpr float minTexels = 100;

// In shorter sides: so far away that slopes show as light and shade.
constexpr float skyDepth = 12.6F;

constexpr int skySize = 128;
constexpr float skyTint[3] = {0.88F, 0.98F, 1.02F}; // the water absorbs some of the red

// Light of 0.5 changes nothing.
constexpr float neutral = 0.5F;

// Of the ground where there is no picture.
constexpr float shallow[4] = {0.35F, 0.78F, 0.78F, 1};
constexpr float deep[4] = {0.03F, 0.30F, 0.42F, 1};

constexpr float shininess = 60; // a glint some degrees wide

// The sky's light at a place from 1 in the upper left corner to -1 in the lower right: even in the middle, brighter on
// one side and darker on the other.
float skyLight(float t) {
    return neutral + 0.10F * t + (t > 0 ? 0.22F : 0.14F) * std::pow(t, 3.0F);
}

} // namespace

void WaterSurface::createPrograms() {
    mDepth.init();
    mNormals.init();
    mRefraction.init();
    mReflection.init();
    mGraphics.init();
}

void WaterSurface::abandon() {
    mDepth.GLContextDestroyed();
    mNormals.GLContextDestroyed();
    mRefraction.GLContextDestroyed();
    mReflection.GLContextDestroyed();
    mGraphics.GLContextDestroyed();
    mGround.abandon();
    mSky.abandon();
    mReflected.abandon();
    mColumns = mRows = 0;
    mSkyReflection = -1;
    mPicture = 0;
    mGroundFits = false;
}

void WaterSurface::fitScreen(int width, int height) {
    mWidth = width;
    mHeight = height;
    mRefraction.setScreenSize(width, height);
    mGraphics.setScreenSize(width, height);
    mGround.resize(width, height);
    mGroundFits = false;
    mColumns = mRows = 0;

    // One texel, all of which lies on the crest of an endless wave.
    constexpr float endless = 1e9F;
    mDepth.setScreenSize(1, 1);
    mDepth.addHorizontalWave(0, endless, 1, 0, 1, 0);
}

bool WaterSurface::fitField(float scale) {
    const auto shorter = static_cast<float>(std::min(mWidth, mHeight));
    const auto longer = static_cast<float>(std::max(mWidth, mHeight));
    const float texelsPerPixel = std::min(std::max(scale, minTexels / shorter), maxTexels / longer);
    const auto texels = [texelsPerPixel](int pixels) {
        return std::max(1, static_cast<int>(std::lround(texelsPerPixel * static_cast<float>(pixels))));
    };
    const int columns = texels(mWidth);
    const int rows = texels(mHeight);
    if (columns == mColumns && rows == mRows) return false;
    mColumns = columns;
    mRows = rows;
    mNormals.setScreenSize(columns, rows);
    mReflection.setScreenSize(columns, rows);
    mReflection.setHeightMax(skyDepth * shorterSide());
    mReflected.resize(columns, rows);
    mReflection.setDrawFrameBuffer(mReflected.framebuffer());
    return true;
}

void WaterSurface::setPicture(GLuint texture, int width, int height, PictureTop top) {
    if (texture != 0 && (width < 1 || height < 1)) return;
    mPicture = texture;
    mPictureWidth = width;
    mPictureHeight = height;
    mPictureTop = top;
    mGroundFits = false;
}

float WaterSurface::shorterSide() const {
    return static_cast<float>(std::min(mColumns, mRows));
}

void WaterSurface::draw(GLuint ripples, const Optics& optics, GLuint framebuffer) {
    if (!mGroundFits) drawGround();
    if (mSkyReflection != optics.sky) uploadSky(optics.sky);

    mNormals.setHeightMax(optics.steepness * shorterSide());
    mNormals.build(ripples);
    mRefraction.setTexture(static_cast<int>(mGround.texture()));
    mRefraction.setHeightMax(optics.depth * static_cast<float>(std::min(mWidth, mHeight)));
    mRefraction.setSpecular(optics.light, shininess);
    mRefraction.setDrawFrameBuffer(framebuffer);
    mRefraction.render(mDepth.getTexture(), mNormals.getTexture());
    if (optics.sky == 0) return;

    mReflection.setTexture(static_cast<int>(mSky.texture()));
    mReflection.render(mDepth.getTexture(), mNormals.getTexture());
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    mGraphics.setBlendFunction(GL_DST_COLOR, GL_SRC_COLOR, GL_ZERO, GL_ONE); // twice the product
    mGraphics.renderBitmapRectangle(0, 0, static_cast<float>(mWidth), static_cast<float>(mHeight),
                                    mReflected.texture());
}

// The middle part of the picture, scaled to cover the screen, or a plain ground. A copy has the screen's shape, and the
// filters and the wrapping that refraction sets are not set on somebody else's texture.
void WaterSurface::drawGround() {
    const auto width = static_cast<float>(mWidth);
    const auto height = static_cast<float>(mHeight);
    glBindFramebuffer(GL_FRAMEBUFFER, mGround.framebuffer());
    glClearColor(0, 0, 0, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    mGraphics.setBlendFunction(GL_ONE, GL_ZERO, GL_ZERO, GL_ONE);
    if (mPicture == 0) {
        float begin[4];
        float end[4];
        std::copy_n(shallow, 4, begin);
        std::copy_n(deep, 4, end);
        mGraphics.renderRadialGradient(0.5F * width, 0, 0, begin, 1.1F * std::max(width, height), end);
    } else {
        const auto pictureWidth = static_cast<float>(mPictureWidth);
        const auto pictureHeight = static_cast<float>(mPictureHeight);
        const float scale = std::max(width / pictureWidth, height / pictureHeight);
        const float coveredWidth = scale * pictureWidth;
        const float coveredHeight = scale * pictureHeight;
        const int rotation = mPictureTop == PictureTop::FirstRow ? VectorGraphicRenderer::ROTATION_FLIP_VERTICAL
                                                                 : VectorGraphicRenderer::ROTATION_NONE;
        glBindTexture(GL_TEXTURE_2D, mPicture);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
        mGraphics.renderRotatedBitmapRectangle(0.5F * (width - coveredWidth), 0.5F * (height - coveredHeight),
                                               coveredWidth, coveredHeight, mPicture, rotation);
    }
    mGroundFits = true;
}

// Rows from the bottom, so that row 0 is the darker side.
void WaterSurface::uploadSky(float reflection) {
    std::vector<std::uint8_t> pixels;
    for (int row = 0; row < skySize; ++row) {
        for (int x = 0; x < skySize; ++x) {
            const int y = skySize - 1 - row;
            const float light = skyLight(1 - static_cast<float>(x + y) / (skySize - 1));
            for (const float tint : skyTint) {
                const float channel = neutral + reflection * (tint * light - neutral);
                pixels.push_back(static_cast<std::uint8_t>(std::lround(255 * std::clamp(channel, 0.0F, 1.0F))));
            }
            pixels.push_back(255);
        }
    }
    mSky.resize(skySize, skySize, pixels.data());
    mSkyReflection = reflection;
}

} // namespace tidalume
