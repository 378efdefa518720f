#include "looks/BlobsLook.h"

#include "effects/metaball/Metaball2DRenderer.h"
#include "looks/BlobsTables.h"
#include "looks/FieldPainter.h"
#include "looks/FieldParameters.h"
#include "looks/FieldScreen.h"
#include "looks/LookImplementation.h"
#include "looks/TouchBall.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace tidalume {

using namespace blobs;

namespace {

constexpr const char* paletteNames[] = {"lava", "mercury", "ink"};

constexpr Parameter parameters[] = {
    {"palette", "Colours", "", 0, 2, BlobsLook::LAVA, "Lava glows, mercury shines, ink is dark and flat.",
     paletteNames},
    outlines,
    hue,
    opacity,
    {"dropSize", "Size of drops and pools", "", 0.5F, 1.5F, 1, "Drops are larger and pools deeper.", {}},
    {"drops", "Drops", "", 0, 1, 1, "More drops rise and sink.", {}},
    {"pools", "Pools at both ends", "", 0, 1, 1, "Pools are deeper.", {}},
    {"speed", "Speed of the drops", "shorter sides a second", 0, 1, 0.18F, "Drops move and pools roll faster.", {}},
    {"touchRadius", "Radius of a finger's blob", "shorter sides", 0.02F, 0.3F, 0.15F, "A finger's blob is larger.", {}},
};

constexpr Setting mercury[] = {
    {"palette", BlobsLook::MERCURY}, {"dropSize", 0.9F}, {"speed", 0.12F}, {"pools", 0.9F}, {"touchRadius", 0.13F}};
constexpr Setting ink[] = {
    {"palette", BlobsLook::INK}, {"dropSize", 0.95F}, {"speed", 0.07F}, {"drops", 0.7F}, {"touchRadius", 0.18F}};
constexpr Setting dew[] = {{"palette", BlobsLook::MERCURY},
                           {"dropSize", 0.7F},
                           {"drops", 0.75F},
                           {"pools", 0},
                           {"speed", 0},
                           {"touchRadius", 0.1F}};

constexpr Preset presets[] = {
    {"lava", "Lava", {}},
    {"mercury", "Mercury", mercury},
    {"ink", "Ink", ink},
    {"dew", "Dew", dew},
};

constexpr float stepTime = 1.0F / 60;
constexpr float twoPi = 6.2831853F;

// Within whose margin all balls of the look have their centres: 120 pixels are an eighth of it and more.
constexpr int fieldSide = 900;

class Blobs final : public LookImplementation {
  public:
    Blobs();

    void createPrograms() override;
    void abandon() override;
    void fitSurface() override;
    void touch(int finger, float x, float y, TouchPhase phase) override;
    void step() override;
    void draw(GLuint framebuffer) override;
    bool isMoving() const override;

    void setBalls(const BlobsLook::Ball* balls, int count);

  private:
    // The record that the renderer reads.
    struct Ball {
        float x, y, radius;
        float unused[3];
    };

    struct Path {
        float phase;     // of its waves, 0 to 1
        float unlike;    // -1 to 1
        double progress; // of its drops, in spacings: a number that grows for as long as the look lives
    };

    void makePaths();
    void fitField();
    void placeBalls();
    void placeStream(const Stream& stream, const Path& path, int tile, float breadth);
    float shareShown(int drop, const Path& path) const;
    void placePools();
    void drawLayer(const Layer& layer, GLuint framebuffer);

    Metaball2DRenderer mRenderer;
    FieldScreen mScreen{fieldSide};
    FieldPainter mPainter;
    std::array<Path, streamCount> mPaths = {};
    bool mHasPaths = false;
    float mRoll = 0; // of the pools' surfaces, 0 to 1
    std::array<TouchBall, Look::FINGERS> mFingers;
    std::vector<BlobsLook::Ball> mGiven;
    float mLargestGiven = 0; // in pixels
    std::vector<BlobsLook::Ball> mBalls;
    std::vector<Ball> mLayer;
};

Blobs::Blobs() : LookImplementation(parameters, presets) {
    constexpr std::size_t usual = 256;
    mBalls.reserve(usual);
    mLayer.reserve(usual);
}

void Blobs::createPrograms() {
    mRenderer.init(1);
    mPainter.createPrograms();
}

void Blobs::abandon() {
    mRenderer.GLContextDestroyed();
    mPainter.abandon();
    for (TouchBall& finger : mFingers)
        finger.isDown = false;
}

void Blobs::fitSurface() {
    if (!mHasPaths) makePaths();
    mScreen.fit(width(), height());
    fitField();
}

void Blobs::makePaths() {
    for (Path& path : mPaths)
        path = {random().between(0, 1), random().between(-1, 1), static_cast<double>(random().between(0, 1))};
    mHasPaths = true;
}

void Blobs::fitField() {
    const float own =
        std::max(largestDrop * value(BlobsLook::DROP_SIZE), value(BlobsLook::TOUCH_RADIUS)) * shorterSide();
    const float largest = std::max(own, std::min(mLargestGiven, shorterSide())) * largestScale * mScreen.perPixel();
    if (!mScreen.fitQuality(value(BlobsLook::FIELD_SCALE), largest)) return;
    mRenderer.init(mScreen.quality());
    mRenderer.setScreenSize(mScreen.width(), mScreen.height());
}

void Blobs::touch(int finger, float x, float y, TouchPhase phase) {
    mFingers[static_cast<std::size_t>(finger)].touch(x, y, phase);
}

void Blobs::setBalls(const BlobsLook::Ball* balls, int count) {
    mGiven.clear();
    mLargestGiven = 0;
    for (int i = 0; i < count; ++i) {
        const BlobsLook::Ball& ball = balls[i];
        if (!std::isfinite(ball.x) || !std::isfinite(ball.y) || !std::isfinite(ball.radius)) continue;
        mGiven.push_back(ball);
        mLargestGiven = std::max(mLargestGiven, ball.radius);
    }
}

void Blobs::step() {
    constexpr float rollsPerSide = 2.2F; // while the drops move by a shorter side
    const float moved = value(BlobsLook::SPEED) * stepTime;
    for (Path& path : mPaths)
        path.progress += static_cast<double>(moved / widestSpacing);
    mRoll = std::fmod(mRoll + moved * rollsPerSide, 1.0F);
    for (TouchBall& finger : mFingers)
        finger.step();
}

void Blobs::draw(GLuint framebuffer) {
    fitField();
    placeBalls();
    for (const Layer& layer : palettes[static_cast<std::size_t>(value(BlobsLook::PALETTE))])
        drawLayer(layer, framebuffer);
}

// Positions and sizes follow from what step() has moved, so that drawing again gives the same picture.
void Blobs::placeBalls() {
    mBalls.assign(mGiven.begin(), mGiven.end());
    const int tiles = std::max(1, static_cast<int>(std::lround(static_cast<float>(width()) / shorterSide())));
    const float breadth = static_cast<float>(width()) / static_cast<float>(tiles);
    for (int tile = 0; tile < tiles; ++tile) {
        for (std::size_t i = 0; i < streamCount; ++i)
            placeStream(streams[i], mPaths[i], tile, breadth);
    }
    placePools();
    for (const TouchBall& finger : mFingers)
        mBalls.push_back({finger.x, finger.y, finger.size * value(BlobsLook::TOUCH_RADIUS) * shorterSide()});
}

void Blobs::placeStream(const Stream& stream, const Path& path, int tile, float breadth) {
    constexpr double tileOffset = 0.37; // in spacings
    const float unit = shorterSide();
    const float length = static_cast<float>(height()) / unit + 2 * beyond;
    const int count = std::max(1, static_cast<int>(std::lround(length / stream.spacing)));
    const float position = stream.position + positionUnlikeness * path.unlike;
    const float radius = stream.radius * (1 + radiusUnlikeness * path.unlike) * value(BlobsLook::DROP_SIZE) * unit;
    for (int i = 0; i < count; ++i) {
        const auto progress = static_cast<float>(std::fmod((i + path.progress + tileOffset * tile) / count, 1.0));
        const float wave = std::sin(twoPi * (progress * 1.5F + path.phase));
        const float swollen = 1 + swelling * std::sin(twoPi * (progress * 2 + path.phase));
        const float down = (stream.rising ? 1 - progress : progress) * length - beyond;
        const float grown = std::min(1.0F, std::min(progress, 1 - progress) * length / growing);
        mBalls.push_back({breadth * (static_cast<float>(tile) + position + stream.sway * wave), down * unit,
                          radius * swollen * grown * shareShown(i, path)});
    }
}

// Drops have ranks from 0 to 1. Those below the share that is set are shown, the next ones at a smaller size.
float Blobs::shareShown(int drop, const Path& path) const {
    constexpr float goldenRatio = 0.618034F; // spreads the ranks evenly
    constexpr float blur = 0.1F;
    const float rank = std::fmod(static_cast<float>(drop) * goldenRatio + path.phase, 1.0F);
    return std::clamp((value(BlobsLook::DROPS) * (1 + blur) - rank) / blur, 0.0F, 1.0F);
}

// The drops rise from and sink into a pool at either end, with a rolling surface.
void Blobs::placePools() {
    constexpr float distance = 0.2F;
    const float unit = shorterSide();
    const float size = value(BlobsLook::POOLS) * value(BlobsLook::DROP_SIZE) * unit;
    const float sides = static_cast<float>(width()) / unit;
    const int last = static_cast<int>(std::lround(sides / distance));
    for (int i = 0; i <= last; ++i) {
        const float across = static_cast<float>(i) / static_cast<float>(last);
        const float roll = 0.035F * std::sin(twoPi * (mRoll + across * sides * 1.3F));
        const float x = static_cast<float>(width()) * across;
        mBalls.push_back({x, static_cast<float>(height()) + (0.07F + roll) * unit, 0.18F * size});
        mBalls.push_back({x, (-0.09F + roll) * unit, 0.15F * size});
    }
}

void Blobs::drawLayer(const Layer& layer, GLuint framebuffer) {
    const float scale = mScreen.perPixel();
    mLayer.clear();
    for (const BlobsLook::Ball& ball : mBalls) {
        const float shift = ball.radius * layer.shift;
        const float radius = ball.radius * layer.scale - layer.inset * shorterSide();
        mLayer.push_back({(ball.x - shift) * scale, (ball.y - 1.3F * shift) * scale, radius * scale, {}});
    }
    mRenderer.addMetaballs(&mLayer[0].x, static_cast<unsigned>(mLayer.size()));

    Color color = rotateHue(layer.color, value(BlobsLook::HUE));
    color.alpha *= value(BlobsLook::OPACITY);
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    glViewport(0, 0, width(), height());
    mPainter.paint(mRenderer.getTexture(), mScreen, {color, color, color});
}

bool Blobs::isMoving() const {
    const bool hasStreams = value(BlobsLook::DROPS) > 0 || value(BlobsLook::POOLS) > 0;
    return (value(BlobsLook::SPEED) > 0 && hasStreams) ||
           std::any_of(mFingers.begin(), mFingers.end(), [](const TouchBall& finger) { return finger.isMoving(); });
}

} // namespace

BlobsLook::BlobsLook() : Look(std::make_unique<Blobs>()) {}

BlobsLook::~BlobsLook() = default;

void BlobsLook::setBalls(const Ball* balls, int count) {
    static_cast<Blobs&>(change()).setBalls(balls, count);
}

} // namespace tidalume
