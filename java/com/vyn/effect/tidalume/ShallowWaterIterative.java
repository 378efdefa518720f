package com.vyn.effect.tidalume;

/**
 * Water that ripples: a wave simulation, disturbed by drops, lines of drops and horizontal waves.
 *
 * <p>A disturbance's profile is a raised cosine: {@code strength} at the shape, falling to 0 at distance
 * {@code radius}. It is added to the heights, which are first multiplied by {@code preserveWeight}: 1 keeps them, 0
 * wipes them.
 * Disturbances with a radius of 0 or with a number that is not finite are ignored. Heights are half floats: they
 * overflow beyond 65,504.
 *
 * <p>Positions and radii are pixels of the screen, origin top-left, y downwards. The application disables blending and
 * depth test. See the package's description for threads, the life cycle and the exceptions.
 */
public final class ShallowWaterIterative implements AutoCloseable {
    static {
        NativeLibrary.load();
    }

    private final Handle handle;

    /** Makes an effect that is yet to be initialised. Needs no GL context. */
    public ShallowWaterIterative() {
        handle = new Handle("ShallowWaterIterative", Alloc());
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
     * Makes still water for a screen of this size. The same size keeps the water as it is.
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
     * Sets how fast the waves are.
     *
     * @param count passes per {@link #update}, 8 by default, about 0.7 pixels each
     * @throws IllegalArgumentException if the count is below 1
     */
    public void setIterationCount(int count) {
        final long open = handle.open();
        Arguments.requireAtLeast("count", count, 1);
        setIterationCount(open, count);
    }

    /**
     * Lets a drop fall.
     *
     * @param center x and y; at least 2 floats
     * @param radius of the drop
     * @param strength height added at the centre
     * @param preserveWeight factor on the heights before
     */
    public void addDrop(float[] center, float radius, float strength, float preserveWeight) {
        final long ready = handle.ready();
        Arguments.requireFloats("center", center, 2);
        addDrop(ready, center, radius, strength, preserveWeight);
    }

    /**
     * Adds a drop along a whole segment, as a finger draws it.
     *
     * @param center one end, x and y; at least 2 floats
     * @param center2 the other end, x and y; at least 2 floats
     * @param radius half the width of the line
     * @param strength height added on the line
     * @param preserveWeight factor on the heights before
     */
    public void addDropLine(float[] center, float[] center2, float radius, float strength, float preserveWeight) {
        final long ready = handle.ready();
        Arguments.requireFloats("center", center, 2);
        Arguments.requireFloats("center2", center2, 2);
        addDropLine(ready, center, center2, radius, strength, preserveWeight);
    }

    /**
     * Adds a bump along a horizontal sine curve across the whole screen.
     *
     * @param center y of the curve's middle
     * @param radius half the width of the bump, measured along y
     * @param strength height added on the curve
     * @param waveRadius amplitude of the curve in pixels
     * @param waveCount periods across the screen
     * @param preserveWeight factor on the heights before
     */
    public void addHorizontalWave(float center, float radius, float strength, float waveRadius, float waveCount,
            float preserveWeight) {
        addHorizontalWave(handle.ready(), center, radius, strength, waveRadius, waveCount, preserveWeight);
    }

    /** Advances the simulation by the number of passes set. */
    public void update() {
        update(handle.ready());
    }

    /**
     * The current state: the height in red, the vertical velocity in green. Ask anew in every frame, since every
     * disturbance and every pass changes the name.
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

    private static native void setIterationCount(long handle, int count);

    private static native void addDrop(long handle, float[] center, float radius, float strength, float preserveWeight);

    private static native void addDropLine(long handle, float[] center, float[] center2, float radius, float strength,
            float preserveWeight);

    private static native void addHorizontalWave(long handle, float center, float radius, float strength,
            float waveRadius, float waveCount, float preserveWeight);

    private static native void update(long handle);

    private static native int getTexture(long handle);
}
