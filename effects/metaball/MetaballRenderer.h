#pragma once

#include "effects/metaball/Metaball2DRenderer.h"
#include "effects/metaball/ParticleManager.h"

#include <cfloat>

/// Touch that turns into merging blobs: a press puts one blob under the finger, and while the finger drags, particles
/// fly off in its direction from half way between the press and the finger, slow down and, after 200 frames, shrink.
///
///     MetaballRenderer particles;
///     particles.init(1.0f);
///     particles.setScreenSize(1080, 1920);
///     particles.push(540, 960, MetaballRenderer::ACTION_PRESS);
///     // per frame
///     particles.push(700, 900, MetaballRenderer::ACTION_STREAM);
///     particles.render(80.0f, 12.5f);  // opaque: alpha is 0.08 alphaFactor
///
/// Positions are pixels of the screen, origin top-left, y downwards. Random numbers come from `lrand48`, which the
/// application may seed. The object draws through a Metaball2DRenderer of its own: what that class says about the
/// context, its loss and the GL state holds here too.
class MetaballRenderer {
  public:
    // Actions of `push`; any other number just moves the finger.
    static constexpr int ACTION_PRESS = 0;   ///< removes all particles and puts one blob under the finger
    static constexpr int ACTION_RELEASE = 1; ///< emission ends; the particles keep moving
    static constexpr int ACTION_STREAM = 7;  ///< every frame emits from now on, 0.2 particles on average

    MetaballRenderer();
    /// Deletes the inner renderer and with it its GL resources.
    virtual ~MetaballRenderer();
    MetaballRenderer(const MetaballRenderer&) = delete;
    MetaballRenderer& operator=(const MetaballRenderer&) = delete;

    /// Makes the inner renderer where there is none, and initialises it. When there is no memory for it, the object
    /// stays uninitialised.
    /// @param quality  see Metaball2DRenderer::init
    void init(float quality);

    /// Sizes the inner renderer for a screen of width x height pixels. Ignored before the first `init`.
    void setScreenSize(int width, int height);

    /// Abandons every GL name without a GL call, for a context that is gone. The particles stay, and stand still until
    /// the next `init`.
    void GLContextDestroyed();

    /// Touch input. Ignored before `init`.
    /// @param x, y    in pixels
    /// @param action  one of those above
    void push(float x, float y, int action);

    /// Emits, then moves the particles by one frame. `render` calls it. Ignored before `init`.
    void update();

    /// Moves the particles by one frame and paints them white into the bound framebuffer, over what is there. Draws
    /// nothing before the first press. Before `setScreenSize` the particles move, unseen.
    /// @param pressRadius  radius in pixels of the oldest particle, which is the blob of the press
    /// @param alphaFactor  opacity in units of 0.08: 12.5 is opaque
    void render(float pressRadius, float alphaFactor);

    /// Sums the particles up into the field, as `render` does, for a painting of your own; neither moves nor paints
    /// them. Without particles the field is cleared. Ignored before `init` and `setScreenSize`. Leaves what
    /// Metaball2DRenderer::addMetaballs leaves.
    /// @param pressRadius  see `render`
    void addToField(float pressRadius);

    /// Name of the field texture, see Metaball2DRenderer; 0 before `setScreenSize`.
    unsigned int getTexture();

  private:
    friend struct TestPeer;

    void emit();
    void emitParticle(Vector2 origin, Vector2 direction);
    bool isFull();

    bool mInitialized = false;
    int mWidth = 0;
    int mHeight = 0;
    float mRadiusMin = 10.0F;
    float mRadiusRange = 80.0F;
    float mSpeedMin = 20.0F;
    float mSpeedRange = 55.0F;
    float mEmitBase = 0.15F; ///< mean number of particles per frame, and its random part
    float mEmitRange = 0.1F;
    float mCurrentX = FLT_MAX; ///< where the finger is; FLT_MAX before the first push
    float mCurrentY = FLT_MAX;
    float mPressX = FLT_MAX; ///< where the finger was put down; FLT_MAX before the first press
    float mPressY = FLT_MAX;
    int mTouchState = -1; ///< -1 none yet, 0 pressed, 1 released, 2 emitting
    unsigned int mMaxParticles = 65535;
    ParticleManager mParticleManager;
    Metaball2DRenderer* mMetaball2DRenderer = nullptr;
};

/// A new object, never null; the caller deletes it.
MetaballRenderer* createMetaballRenderer();
