package com.vyn.effect.tidalume;

/**
 * Draws a picture as if it lay on the ground under water. Flat water shows it as it is.
 *
 * <p>The effect makes no textures: after a loss of the context {@link #init} is enough, with {@link #setTexture} and
 * {@link #setDrawFrameBuffer} for the names of the new context. See the package's description for threads, the life
 * cycle and the exceptions.
 */
public final class ShallowWaterRenderer implements AutoCloseable {
    static {
        NativeLibrary.load();
    }

    private final Handle handle;

    /** Makes an effect that is yet to be initialised. Needs no GL context. */
    public ShallowWaterRenderer() {
        handle = new Handle("ShallowWaterRenderer", Alloc());
    }

    /**
     * Builds the program where it is missing.
     *
     * @throws IllegalStateException if no GL context is current on this thread
     */
    public void init() {
        init(handle.inContext());
        handle.setInitialized();
    }

    /**
     * Stores the size of the screen.
     *
     * @param width in pixels, at least 1
     * @param height in pixels, at least 1
     * @throws IllegalArgumentException if one is below 1, or beyond the textures of the driver whose context is current
     */
    public void setScreenSize(int width, int height) {
        final long open = handle.open();
        Arguments.requireScreenSize(width, height);
        setScreenSize(open, width, height);
        handle.setSized();
    }

    /** Forgets the program, for a context that is gone; {@link #init} follows. */
    public void GLContextDestroyed() {
        GLContextDestroyed(handle.open());
        handle.abandonPrograms();
    }

    /**
     * Sets how high the water stands.
     *
     * @param heightMax factor from a stored height to pixels above the ground, 100 by default; the normal map has one
     *     of its own
     */
    public void setHeightMax(float heightMax) {
        setHeightMax(handle.open(), heightMax);
    }

    /**
     * Sets where the light of the highlights comes from.
     *
     * @param x of the direction towards the light, to the right of the screen; (-3, 8, 7) by default
     * @param y to the top of the screen
     * @param z out of the screen
     * @throws IllegalArgumentException if all three are 0, or one is not finite
     */
    public void setLight(float x, float y, float z) {
        final long open = handle.open();
        Arguments.requireDirection("light", x, y, z);
        setLight(open, x, y, z);
    }

    /**
     * Sets how strong and how sharp highlights are.
     *
     * @param strength at least 0; 0 by default, without highlights
     * @param shininess above 0, 50 by default; larger is smaller and sharper
     */
    public void setSpecular(float strength, float shininess) {
        final long open = handle.open();
        Arguments.requireNotNegative("strength", strength);
        Arguments.requirePositive("shininess", shininess);
        setSpecular(open, strength, shininess);
    }

    /**
     * Sets where {@link #render} draws.
     *
     * @param framebuffer a GL framebuffer name, 0 by default
     */
    public void setDrawFrameBuffer(int framebuffer) {
        setDrawFrameBuffer(handle.open(), framebuffer);
    }

    /**
     * Sets whether the picture is mirrored top to bottom.
     *
     * @param flip true for a bitmap, which is uploaded from the top; false, the default, for a rendered texture
     */
    public void setBGFlip(boolean flip) {
        setBGFlip(handle.open(), flip);
    }

    /**
     * Sets the picture. {@link #render} sets linear filters and mirrored repetition on it.
     *
     * @param texture a GL texture name of any size
     */
    public void setTexture(int texture) {
        setTexture(handle.open(), texture);
    }

    /**
     * Draws the whole screen. Leaves framebuffer 0 bound, blending and depth test disabled.
     *
     * @param textureHeight the height texture
     * @param textureNormal the normal map of the same heights
     */
    public void render(int textureHeight, int textureNormal) {
        render(handle.ready(), textureHeight, textureNormal);
    }

    /**
     * Deletes the effect, and the program with the last of them. Needs the context in which it was made. Closing again
     * does nothing.
     */
    @Override
    public void close() {
        Free(handle.release());
    }

    private static native long Alloc();

    private static native void Free(long handle);

    private static native void init(long handle);

    private static native void setScreenSize(long handle, int width, int height);

    private static native void GLContextDestroyed(long handle);

    private static native void setHeightMax(long handle, float heightMax);

    private static native void setLight(long handle, float x, float y, float z);

    private static native void setSpecular(long handle, float strength, float shininess);

    private static native void setDrawFrameBuffer(long handle, int framebuffer);

    private static native void setBGFlip(long handle, boolean flip);

    private static native void setTexture(long handle, int texture);

    private static native void render(long handle, int textureHeight, int textureNormal);
}
