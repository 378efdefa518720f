package com.vyn.effect.tidalume;

/**
 * A height field that is painted, not simulated: lines of drops and horizontal sine waves stay as they were drawn until
 * something is painted over them.
 *
 * <p>A shape's profile is a raised cosine: {@code strength} on the shape, falling to 0 at distance {@code radius} and
 * beyond. Where a shape's rectangle reaches, it replaces what was there; shapes do not add up. Shapes with a radius
 * of 0 or with a number that is not finite are ignored.
 *
 * <p>Positions and radii are pixels of the screen, origin top-left, y downwards. See the package's description for
 * threads, the life cycle and the exceptions.
 */
public final class IntensityMapBuilder implements AutoCloseable {
    static {
        NativeLibrary.load();
    }

    private final Handle handle;

    /** Makes an effect that is yet to be initialised. Needs no GL context. */
    public IntensityMapBuilder() {
        handle = new Handle("IntensityMapBuilder", Alloc());
    }

    /**
     * Builds the programs where they are missing.
     *
     * @throws IllegalStateException if no GL context is current on this thread
     */
    public void init() {
        init(handle.inContext());
        handle.setInitialized();
    }

    /**
     * Makes a flat field for a screen of this size. The same size keeps the field as it is.
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
     * Paints a line of drops within its bounding box; a round drop where both ends are the same. The application
     * disables blending and depth test.
     *
     * @param center one end, x and y; at least 2 floats
     * @param center2 the other end, x and y; at least 2 floats
     * @param radius half the width of the line
     * @param strength height on the line
     * @param preserveWeight not used
     */
    public void addDropLine(float[] center, float[] center2, float radius, float strength, float preserveWeight) {
        final long ready = handle.ready();
        Arguments.requireFloats("center", center, 2);
        Arguments.requireFloats("center2", center2, 2);
        addDropLine(ready, center, center2, radius, strength, preserveWeight);
    }

    /**
     * Paints a horizontal sine wave within a band across the whole screen. Disables blending and depth test.
     *
     * @param center y of the band's middle
     * @param radius half the width of the line that follows the curve
     * @param strength height on the curve
     * @param waveRadius amplitude of the curve in pixels
     * @param waveCount periods across the screen
     * @param preserveWeight not used
     */
    public void addHorizontalWave(float center, float radius, float strength, float waveRadius, float waveCount,
            float preserveWeight) {
        addHorizontalWave(handle.ready(), center, radius, strength, waveRadius, waveCount, preserveWeight);
    }

    /**
     * The height texture, one half float per pixel of the screen in its red channel.
     *
     * @return a GL texture name, 0 before {@link #setScreenSize}
     */
    public int getTexture() {
        return getTexture(handle.open());
    }

    /**
     * Deletes the effect and its GL resources. Needs the context in which they were made. Closing again does nothing.
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

    private static native void addDropLine(long handle, float[] center, float[] center2, float radius, float strength,
            float preserveWeight);

    private static native void addHorizontalWave(long handle, float center, float radius, float strength,
            float waveRadius, float waveCount, float preserveWeight);

    private static native int getTexture(long handle);
}
