package com.vyn.effect.tidalume;

/**
 * Two-dimensional metaballs: soft blobs that merge into one smooth outline where they come close.
 *
 * <p>{@link #addMetaballs} sums a radial fall-off for every ball into an offscreen field that reaches 120 pixels beyond
 * the screen on every side; {@link #render} paints one colour wherever the sum exceeds 0.1. A lone ball comes out as a
 * disc of its radius.
 *
 * <p>Positions are pixels of the screen, origin top-left, y downwards. See the package's description for threads, the
 * life cycle and the exceptions.
 */
public final class Metaball2DRenderer implements AutoCloseable {
    /** Floats per ball in the array of {@link #addMetaballs}. */
    public static final int FLOATS_PER_BALL = 6;

    private static final int FLOATS_READ_PER_BALL = 4;

    static {
        NativeLibrary.load();
    }

    private final Handle handle;

    /** Makes an effect that is yet to be initialised. Needs no GL context. */
    public Metaball2DRenderer() {
        handle = new Handle("Metaball2DRenderer", Alloc());
    }

    /**
     * Builds the programs where they are missing, and stores the quality of the field.
     *
     * @param quality resolution divisor of the field, above 0: 1 is one texel per pixel, 2 half the resolution in each
     *     direction and a quarter of the cost. Another value takes effect with the next {@link #setScreenSize}.
     * @throws IllegalStateException if no GL context is current on this thread
     */
    public void init(float quality) {
        final long current = handle.inContext();
        Arguments.requirePositive("quality", quality);
        init(current, quality);
        handle.setInitialized();
    }

    /**
     * Makes the field for a screen of this size, replacing one of another size. Call after {@link #init}.
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

    /** Forgets every GL name, for a context that is gone; {@link #init} and {@link #setScreenSize} follow. */
    public void GLContextDestroyed() {
        GLContextDestroyed(handle.open());
        handle.abandonProgramsAndTargets();
    }

    /**
     * Clears the field and adds balls to it. Leaves framebuffer 0 bound and blending disabled.
     *
     * @param metaballs six floats per ball: x, y and radius in pixels, then three that are not used. At least
     *     6 (count - 1) + 4 floats. Balls of radius 0 or less are not drawn.
     * @param count number of balls, 0 or more
     */
    public void addMetaballs(float[] metaballs, int count) {
        final long ready = handle.ready();
        Arguments.requireAtLeast("count", count, 0);
        final long needed = count == 0 ? 0 : (long) FLOATS_PER_BALL * (count - 1) + FLOATS_READ_PER_BALL;
        Arguments.requireFloats("metaballs", metaballs, needed);
        addMetaballs(ready, metaballs, count);
    }

    /**
     * Paints the field into the bound framebuffer, over what is there. May be called several times for one field.
     * Leaves blending and depth test disabled.
     *
     * @param color red, green, blue, alpha, each 0 to 1, not premultiplied; at least 4 floats
     */
    public void render(float[] color) {
        final long ready = handle.ready();
        Arguments.requireColor("color", color);
        render(ready, color);
    }

    /**
     * The field texture; its red channel holds the sum.
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

    private static native void addMetaballs(long handle, float[] metaballs, int count);

    private static native void render(long handle, float[] color);

    private static native int getTexture(long handle);
}
