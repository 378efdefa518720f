package com.vyn.effect.tidalume;

/**
 * Turns a height field into a map of surface normals, one per pixel of the screen, for
 * {@link ShallowWaterRenderer#render}.
 *
 * <p>See the package's description for threads, the life cycle and the exceptions.
 */
public final class NormalMapBuilder implements AutoCloseable {
    static {
        NativeLibrary.load();
    }

    private final Handle handle;

    /** Makes an effect that is yet to be initialised. Needs no GL context. */
    public NormalMapBuilder() {
        handle = new Handle("NormalMapBuilder", Alloc());
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
     * Makes a normal map for a screen of this size, empty until the first {@link #build}. The same size keeps the map.
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
     * Sets how high the water stands, from the next {@link #build} on.
     *
     * @param heightMax factor from a stored height to pixels, 100 by default; the renderer has one of its own
     */
    public void setHeightMax(float heightMax) {
        setHeightMax(handle.open(), heightMax);
    }

    /**
     * Renders the normal map of a height field. Leaves framebuffer 0 bound, blending and depth test disabled.
     *
     * @param texture name of a texture of the screen's size with the height in its red channel, of any of the effects'
     *     {@code getTexture}; one of another size gives a map stretched over the screen
     */
    public void build(int texture) {
        build(handle.ready(), texture);
    }

    /**
     * The normal map.
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

    private static native void setHeightMax(long handle, float heightMax);

    private static native void build(long handle, int texture);

    private static native int getTexture(long handle);
}
