package com.vyn.effect.tidalume;

/**
 * Touch that turns into merging blobs: a press puts one blob under the finger, and while the finger drags, particles
 * fly off in its direction from half way between the press and the finger, slow down and, after 200 frames, shrink.
 *
 * <p>Positions are pixels of the screen, origin top-left, y downwards. See the package's description for threads, the
 * life cycle and the exceptions.
 */
public final class MetaballRenderer implements AutoCloseable {
    /** Action of {@link #push}: the finger goes down. Removes all particles and puts one blob under it. */
    public static final int ACTION_PRESS = 0;

    /** Action of {@link #push}: the finger goes up. Emission ends; the particles keep moving. */
    public static final int ACTION_RELEASE = 1;

    /** Action of {@link #push}: the finger drags. Every frame emits from now on, 0.2 particles on average. */
    public static final int ACTION_STREAM = 7;

    static {
        NativeLibrary.load();
    }

    private final Handle handle;
    private boolean hasRenderer;

    /** Makes an effect that is yet to be initialised. Needs no GL context. */
    public MetaballRenderer() {
        handle = new Handle("MetaballRenderer", Alloc());
    }

    /**
     * Builds the programs where they are missing, and stores the quality of the field.
     *
     * @param quality see {@link Metaball2DRenderer#init}
     * @throws IllegalStateException if no GL context is current on this thread
     */
    public void init(float quality) {
        final long current = handle.inContext();
        Arguments.requirePositive("quality", quality);
        init(current, quality);
        handle.setInitialized();
        hasRenderer = true;
    }

    /**
     * Makes the field for a screen of this size, replacing one of another size. Does nothing before the first
     * {@link #init}.
     *
     * @param width in pixels, at least 1
     * @param height in pixels, at least 1
     * @throws IllegalArgumentException if one is below 1, or beyond the textures of the driver whose context is current
     */
    public void setScreenSize(int width, int height) {
        final long open = handle.open();
        Arguments.requireScreenSize(width, height);
        setScreenSize(open, width, height);
        if (hasRenderer) {
            handle.setSized();
        }
    }

    /**
     * Forgets every GL name, for a context that is gone; {@link #init} and {@link #setScreenSize} follow. The particles
     * stay, and stand still until then.
     */
    public void GLContextDestroyed() {
        GLContextDestroyed(handle.open());
        handle.abandonProgramsAndTargets();
    }

    /**
     * Touch input. Does nothing before {@link #init}.
     *
     * @param x of the finger, in pixels
     * @param y of the finger, in pixels
     * @param action {@link #ACTION_PRESS}, {@link #ACTION_RELEASE} or {@link #ACTION_STREAM}; any other value just
     *     moves the finger
     */
    public void push(float x, float y, int action) {
        push(handle.open(), x, y, action);
    }

    /**
     * Moves the particles by one frame and paints them white into the bound framebuffer, over what is there. Draws
     * nothing before the first press. Leaves blending and depth test disabled, and framebuffer 0 bound when it draws.
     *
     * @param pressRadius radius in pixels of the oldest particle, which is the blob of the press
     * @param alphaFactor opacity in units of 0.08: 12.5 is opaque
     */
    public void render(float pressRadius, float alphaFactor) {
        render(handle.ready(), pressRadius, alphaFactor);
    }

    /**
     * Sums the particles up into the field, as {@link #render} does, for a painting of your own; neither moves nor
     * paints them. Without particles the field is cleared. Leaves framebuffer 0 bound and blending disabled.
     *
     * @param pressRadius see {@link #render}
     */
    public void addToField(float pressRadius) {
        addToField(handle.ready(), pressRadius);
    }

    /**
     * The field, whose red channel holds the sum.
     *
     * @return a GL texture name, 0 before {@link #setScreenSize}
     */
    public int getTexture() {
        return getTexture(handle.open());
    }

    /** Deletes the effect and its GL resources. Needs the context that they are of. Closing again does nothing. */
    @Override
    public void close() {
        Free(handle.release());
    }

    private static native long Alloc();

    private static native void Free(long handle);

    private static native void init(long handle, float quality);

    private static native void setScreenSize(long handle, int width, int height);

    private static native void GLContextDestroyed(long handle);

    private static native void render(long handle, float pressRadius, float alphaFactor);

    private static native void addToField(long handle, float pressRadius);

    private static native int getTexture(long handle);

    private static native void push(long handle, float x, float y, int action);
}
