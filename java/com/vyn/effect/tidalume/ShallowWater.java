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
     * Sets the parameters of the damped wave equation, from the next step on. They are set together, since a step is
     * stable only where (waveSpeed timeStep / gridSpacing)^2 is at most 0.5. Lengths and times are in units of your own.
     *
     * @param waveSpeed length per time; 2 by default
     * @param viscosity damping per time, at least 0; 0.05 by default
     * @param gridSpacing length from a texel to the next, above 0; 0.4 by default
     * @param timeStep simulated time of a step, above 0; 0.13 by default
     * @throws IllegalArgumentException if they are out of range or not stable; everything stays as it was
     */
    public void setPhysics(float waveSpeed, float viscosity, float gridSpacing, float timeStep) {
        final long open = handle.open();
        Arguments.requireNotNegative("viscosity", viscosity);
        Arguments.requirePositive("gridSpacing", gridSpacing);
        Arguments.requirePositive("timeStep", timeStep);
        if (!setPhysics(open, waveSpeed, viscosity, gridSpacing, timeStep)) {
            throw new IllegalArgumentException("waveSpeed must keep (waveSpeed timeStep / gridSpacing)^2 at or below"
                    + " 0.5, is " + waveSpeed + " with timeStep " + timeStep + " and gridSpacing " + gridSpacing);
        }
    }

    /**
     * Sets how often a step is due, from now on.
     *
     * @param stepsPerUnit steps in a hundred calls of {@link #update}: above 0, at most 1,000; 40 by default
     */
    public void setStepRate(float stepsPerUnit) {
        if (!setStepRate(handle.open(), stepsPerUnit)) {
            throw new IllegalArgumentException("stepsPerUnit must be above 0 and at most 1000, is " + stepsPerUnit);
        }
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

    /** Advances the time and runs the steps that are due, two in five calls by default. */
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

    private static native boolean setPhysics(long handle, float waveSpeed, float viscosity, float gridSpacing,
            float timeStep);

    private static native boolean setStepRate(long handle, float stepsPerUnit);

    private static native void addDrop(long handle, float[] center, float radius, float strength);

    private static native void addDropLine(long handle, float[] center, float[] center2, float radius, float strength);

    private static native void update(long handle);

    private static native int getTexture(long handle);
}
