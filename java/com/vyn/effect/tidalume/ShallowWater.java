package com.vyn.effect.tidalume;

/**
 * A pond: the damped wave equation, disturbed by drops.
 *
 * <p>Positions are pixels of the screen with the origin at the <em>bottom</em> left and y upwards, unlike those of the
 * other effects. The application disables depth test, and blending for {@link #addDropLine} and {@link #update}.
 * Disturbances with a radius of 0 or with a number that is not finite are ignored. See the package's description for
 * threads, the life cycle and the exceptions.
 */
public final class ShallowWater implements AutoCloseable {
    static {
        NativeLibrary.load();
    }

    private final Handle handle;

    /** Makes an effect that is yet to be initialised. Needs no GL context. */
    public ShallowWater() {
        handle = new Handle("ShallowWater", Alloc());
    }

    /**
     * Builds the programs; those of an earlier {@code init} are deleted first.
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
        handle.forgetProgramsAndTargets();
    }

    /**
     * Squares all heights and adds a bump of {@code strength} squared. Leaves blending disabled.
     *
     * @param center x and y in pixels; at least 2 floats
     * @param radius twice the radius of the bump, in pixels
     * @param strength square root of the height; between -1 and 1, or heights grow with every drop
     */
    public void addDrop(float[] center, float radius, float strength) {
        final long ready = handle.ready();
        Arguments.requireFloats("center", center, 2);
        addDrop(ready, center, radius, strength);
    }

    /**
     * Goes back to the state before the newest and adds a drop of 0.4 {@code strength} at each end. No height stays
     * above {@code strength}.
     *
     * @param center one end, x and y in normalised device coordinates; at least 2 floats
     * @param center2 the other end, x and y in normalised device coordinates; at least 2 floats
     * @param radius of a drop, in normalised device coordinates
     * @param strength see above
     */
    public void addDropLine(float[] center, float[] center2, float radius, float strength) {
        final long ready = handle.ready();
        Arguments.requireFloats("center", center, 2);
        Arguments.requireFloats("center2", center2, 2);
        addDropLine(ready, center, center2, radius, strength);
    }

    /** Advances the time and runs the steps that are due, two in five calls. */
    public void update() {
        update(handle.ready());
    }

    /**
     * The newest state, the height in red. Ask anew in every frame, since every step changes the name.
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

    private static native void addDrop(long handle, float[] center, float radius, float strength);

    private static native void addDropLine(long handle, float[] center, float[] center2, float radius, float strength);

    private static native void update(long handle);

    private static native int getTexture(long handle);
}
