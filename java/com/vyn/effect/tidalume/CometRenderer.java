package com.vyn.effect.tidalume;

/**
 * Two comets that fly across the screen through a touched point, each a glowing core with a widening tail, and rings
 * that open where they have just passed late in the flight.
 *
 * <p>Each comet follows a curved path from a random point near the edge of the screen through the touched point to a
 * point beyond it. A flight's progress goes from 0 at launch to 1 at its end and is the application's to advance:
 *
 * <pre>{@code
 * comets.push(x, y, CometRenderer.ACTION_LAUNCH);
 * // per frame
 * comets.render(t);
 * }</pre>
 *
 * <p>The heads that are reported are ahead of what is drawn: of the path they are at t, the cores at 0.9 t and the tips
 * of the tails at 0.92 t. Positions are pixels of the screen, origin top-left, y downwards. The effect has no
 * textures: after a loss of the
 * context {@link #init} is enough, and a flight under way goes on. See the package's description for threads, the life
 * cycle and the exceptions.
 */
public final class CometRenderer implements AutoCloseable {
    /** Action of {@link #push}: the next {@link #render} launches a new flight through the point. */
    public static final int ACTION_LAUNCH = 0;

    /** Action of {@link #push}: the flight goes on along its paths. Any positive number does the same. */
    public static final int ACTION_CONTINUE = 1;

    /** Action of {@link #push}: the comets are hidden. Any negative number does the same. */
    public static final int ACTION_HIDE = -1;

    static {
        NativeLibrary.load();
    }

    private final Handle handle;

    /** Makes an effect that is yet to be initialised. Needs no GL context. */
    public CometRenderer() {
        handle = new Handle("CometRenderer", Alloc());
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

    /** Forgets every GL name, for a context that is gone; {@link #init} follows. */
    public void GLContextDestroyed() {
        GLContextDestroyed(handle.open());
        handle.abandonPrograms();
    }

    /**
     * Draws one frame over what is in the bound framebuffer; nothing while the comets are hidden, as they are before
     * the first {@link #push}. The application sets the viewport and the blend equation. Leaves blending and depth test
     * disabled, and the attribute arrays 0 and 1 enabled.
     *
     * @param t progress of the flight, 0 to 1, not clamped
     */
    public void render(double t) {
        render(handle.ready(), t);
    }

    /**
     * Takes a touch. Call {@link #setScreenSize} first: the point is stored in relation to the screen.
     *
     * @param x in pixels
     * @param y in pixels
     * @param action {@link #ACTION_LAUNCH}, {@link #ACTION_CONTINUE} or {@link #ACTION_HIDE}
     */
    public void push(float x, float y, int action) {
        push(handle.open(), x, y, action);
    }

    /**
     * Where the first comet's head is at the progress last drawn.
     *
     * @return pixels from the left; the screen's middle before the first drawing
     */
    public float getCore1X() {
        return getCore1X(handle.open());
    }

    /**
     * Where the first comet's head is at the progress last drawn.
     *
     * @return pixels from the top; the screen's middle before the first drawing
     */
    public float getCore1Y() {
        return getCore1Y(handle.open());
    }

    /**
     * Where the second comet's head is at the progress last drawn.
     *
     * @return pixels from the left; the screen's middle before the first drawing
     */
    public float getCore2X() {
        return getCore2X(handle.open());
    }

    /**
     * Where the second comet's head is at the progress last drawn.
     *
     * @return pixels from the top; the screen's middle before the first drawing
     */
    public float getCore2Y() {
        return getCore2Y(handle.open());
    }

    /** Deletes the effect and its GL resources. Needs the context that they are of. Closing again does nothing. */
    @Override
    public void close() {
        Free(handle.release());
    }

    private static native long Alloc();

    private static native void Free(long handle);

    private static native void init(long handle);

    private static native void setScreenSize(long handle, int width, int height);

    private static native void GLContextDestroyed(long handle);

    private static native void render(long handle, double t);

    private static native void push(long handle, float x, float y, int action);

    private static native float getCore1X(long handle);

    private static native float getCore1Y(long handle);

    private static native float getCore2X(long handle);

    private static native float getCore2Y(long handle);
}
