#include "effects/metaball/MetaballRenderer.h"

#include <cmath>
#include <cstdlib>
#include <new>

namespace {

enum TouchState { none = -1, pressed = 0, released = 1, emitting = 2 };

constexpr float timeStep = 0.2F; // kept: fixed-step
/// Cosine of the widest angle between a particle's direction and the drag.
constexpr double minimumCosine = 0.85;
/// About one candidate in six is acceptable, so only a direction that is none gets that far.
constexpr int maximumAttempts = 10000;

/// Uniform in [0, 1]: the largest 31-bit integers round up to 1.
float randomUniform() {
    return static_cast<float>(lrand48()) * 0x1p-31F; // kept: random
}

bool isDirection(Vector2 v) {
    return std::isfinite(v.x) && std::isfinite(v.y) && (v.x != 0.0F || v.y != 0.0F);
}

/// A random unit vector, or the zero vector.
Vector2 randomDirection() {
    const float x = randomUniform();
    const float y = randomUniform();
    Vector2 v = (Vector2(x, y) - Vector2(0.5F, 0.5F)) * 2.0F; // kept: square
    v.normalize();
    return v;
}

} // namespace

MetaballRenderer::MetaballRenderer() = default;

MetaballRenderer::~MetaballRenderer() {
    delete mMetaball2DRenderer;
    mMetaball2DRenderer = nullptr;
    mInitialized = false;
}

void MetaballRenderer::init(float quality) {
    if (!mMetaball2DRenderer) mMetaball2DRenderer = new (std::nothrow) Metaball2DRenderer();
    if (!mMetaball2DRenderer) return;
    mMetaball2DRenderer->init(quality);
    mInitialized = true;
}

void MetaballRenderer::setScreenSize(int width, int height) {
    if (!mMetaball2DRenderer) return;
    mWidth = width;
    mHeight = height;
    mMetaball2DRenderer->setScreenSize(width, height);
}

void MetaballRenderer::GLContextDestroyed() {
    if (!mMetaball2DRenderer) return;
    mMetaball2DRenderer->GLContextDestroyed();
    mInitialized = false;
}

void MetaballRenderer::push(float x, float y, int action) {
    if (!mInitialized) return;
    mCurrentX = x;
    mCurrentY = y;
    if (action == ACTION_PRESS) {
        mTouchState = pressed;
        mPressX = x;
        mPressY = y;
        mParticleManager.deleteAllParticle();
        Particle blob = {Vector2(x, y), 0.0F, 0.0F, Vector2()};
        mParticleManager.addParticle(blob);
    } else if (action == ACTION_RELEASE) {
        mTouchState = released;
    } else if (action == ACTION_STREAM) { // kept: action-7
        mTouchState = emitting;
    }
}

void MetaballRenderer::update() {
    if (!mInitialized) return;
    if (mTouchState == emitting) emit();
    mParticleManager.step(timeStep);
}

void MetaballRenderer::render(float pressRadius, float alphaFactor) {
    if (!mInitialized) return;
    update();
    if (mParticleManager.getParticleNumber() == 0) return;
    addToField(pressRadius);
    float color[4] = {1.0F, 1.0F, 1.0F, 0.08F * alphaFactor}; // kept: alpha-factor
    mMetaball2DRenderer->render(color);
}

void MetaballRenderer::addToField(float pressRadius) {
    if (!mInitialized) return;
    std::vector<Particle>& particles = *mParticleManager.getParticleVector();
    if (!particles.empty()) particles[0].radius = pressRadius; // kept: press-blob
    float* balls = particles.empty() ? nullptr : &particles[0].position.x;
    mMetaball2DRenderer->addMetaballs(balls, static_cast<unsigned int>(particles.size()));
}

unsigned int MetaballRenderer::getTexture() {
    return mMetaball2DRenderer ? mMetaball2DRenderer->getTexture() : 0;
}

/// One frame's particles, from half way between the press and the finger.
void MetaballRenderer::emit() {
    Vector2 direction(mCurrentX - mPressX, mCurrentY - mPressY);
    direction.normalize();
    if (!isDirection(direction)) return;
    const Vector2 origin((mPressX + mCurrentX) * 0.5F, (mPressY + mCurrentY) * 0.5F);

    float budget = mEmitBase + mEmitRange * randomUniform();
    while (budget >= 1.0F && !isFull()) { // kept: emit-loop
        emitParticle(origin, direction);
        budget -= 1.0F;
    }
    // What is left is the chance of one more.
    if (budget > 0.0F && budget > randomUniform() && !isFull()) emitParticle(origin, direction);
}

void MetaballRenderer::emitParticle(Vector2 origin, Vector2 direction) {
    Vector2 heading = randomDirection();
    for (int attempt = 1; static_cast<double>(Vector2::dot(&heading.x, &direction.x)) < minimumCosine; ++attempt) {
        if (attempt == maximumAttempts) return;
        heading = randomDirection();
    }
    const float speed = mSpeedMin + mSpeedRange * randomUniform();
    const float radius = mRadiusMin + mRadiusRange * randomUniform();
    Particle particle = {origin, radius, 0.0F, heading * speed};
    mParticleManager.addParticle(particle);
}

bool MetaballRenderer::isFull() {
    return static_cast<unsigned int>(mParticleManager.getParticleNumber()) >= mMaxParticles;
}

MetaballRenderer* createMetaballRenderer() {
    return new MetaballRenderer();
}
