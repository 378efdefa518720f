package com.vyn.effect.tidalume;

/**
 * Two-dimensional primitives, drawn straight into the bound framebuffer: radial gradients, discs, discs that show a
 * bitmap, and bitmap rectangles with quarter turns and alpha masks. Each is blended by the object's blend state, which
 * is ordinary transparency unless set otherwise.
 *
 * <p>Positions are pixels of the surface, origin top-left, y downwards. Colours are red, green, blue, alpha, each 0 to
 * 1, and alpha is not premultiplied in the default blend state. Bitmaps are GL textures that the application has made
 * and configured; their coordinate (0, 0) is shown at the lower left.
 *
 * <p>Every drawing call sets the viewport to the surface, leaves it and the blend functions as set, and leaves program
 * 0, blending and depth test disabled. See the package's description for threads, the life cycle and the exceptions;
 * after a loss of the context this class needs {@link #init} alone, since the size stays known.
 */
public final class VectorGraphicRenderer implements AutoCloseable {
    /** Blend equation: source plus destination, the default. */
    public static final int EQUATION_ADD = 0x8006;
    /** Blend equation: source minus destination. */
    public static final int EQUATION_SUBTRACT = 0x800A;
    /** Blend equation: destination minus source. */
    public static final int EQUATION_REVERSE_SUBTRACT = 0x800B;
    /** Blend equation: the smaller of source and destination, channel by channel; factors are not applied. */
    public static final int EQUATION_MIN = 0x8007;
    /** Blend equation: the greater of source and destination, channel by channel; factors are not applied. */
    public static final int EQUATION_MAX = 0x8008;

    /** Blend factor 0. */
    public static final int FACTOR_ZERO = 0;
    /** Blend factor 1. */
    public static final int FACTOR_ONE = 1;
    /** Blend factor: the source's colour. */
    public static final int FACTOR_SRC_COLOR = 0x0300;
    /** Blend factor: 1 minus the source's colour. */
    public static final int FACTOR_ONE_MINUS_SRC_COLOR = 0x0301;
    /** Blend factor: the source's alpha, the default of both sources. */
    public static final int FACTOR_SRC_ALPHA = 0x0302;
    /** Blend factor: 1 minus the source's alpha, the default of both destinations. */
    public static final int FACTOR_ONE_MINUS_SRC_ALPHA = 0x0303;
    /** Blend factor: the destination's alpha. */
    public static final int FACTOR_DST_ALPHA = 0x0304;
    /** Blend factor: 1 minus the destination's alpha. */
    public static final int FACTOR_ONE_MINUS_DST_ALPHA = 0x0305;
    /** Blend factor: the destination's colour. */
    public static final int FACTOR_DST_COLOR = 0x0306;
    /** Blend factor: 1 minus the destination's colour. */
    public static final int FACTOR_ONE_MINUS_DST_COLOR = 0x0307;
    /** Blend factor of a source: the smaller of its alpha and 1 minus the destination's alpha; 1 for alpha. */
    public static final int FACTOR_SRC_ALPHA_SATURATE = 0x0308;
    /** Blend factor: the colour of {@link #setBlendColor}. */
    public static final int FACTOR_CONSTANT_COLOR = 0x8001;
    /** Blend factor: 1 minus the colour of {@link #setBlendColor}. */
    public static final int FACTOR_ONE_MINUS_CONSTANT_COLOR = 0x8002;
    /** Blend factor: the alpha of {@link #setBlendColor}. */
    public static final int FACTOR_CONSTANT_ALPHA = 0x8003;
    /** Blend factor: 1 minus the alpha of {@link #setBlendColor}. */
    public static final int FACTOR_ONE_MINUS_CONSTANT_ALPHA = 0x8004;

    /** Rotation: none; the bitmap's u axis points to the right, its v axis upwards. */
    public static final int ROTATION_NONE = 0;
    /** Rotation: a quarter turn clockwise. */
    public static final int ROTATION_CLOCKWISE = 1;
    /** Rotation: a half turn. */
    public static final int ROTATION_HALF_TURN = 2;
    /** Rotation: a quarter turn counter-clockwise. */
    public static final int ROTATION_COUNTERCLOCKWISE = 3;
    /** Rotation: mirrored top to bottom, which shows a bitmap upright whose first row is its top. */
    public static final int ROTATION_FLIP_VERTICAL = 4;
    /** Rotation: mirrored left to right. */
    public static final int ROTATION_FLIP_HORIZONTAL = 5;

    private static final int[] EQUATIONS = {
        EQUATION_ADD, EQUATION_SUBTRACT, EQUATION_REVERSE_SUBTRACT, EQUATION_MIN, EQUATION_MAX};
    private static final int[] FACTORS = {FACTOR_ZERO, FACTOR_ONE, FACTOR_SRC_COLOR, FACTOR_ONE_MINUS_SRC_COLOR,
        FACTOR_SRC_ALPHA, FACTOR_ONE_MINUS_SRC_ALPHA, FACTOR_DST_ALPHA, FACTOR_ONE_MINUS_DST_ALPHA, FACTOR_DST_COLOR,
        FACTOR_ONE_MINUS_DST_COLOR, FACTOR_SRC_ALPHA_SATURATE, FACTOR_CONSTANT_COLOR, FACTOR_ONE_MINUS_CONSTANT_COLOR,
        FACTOR_CONSTANT_ALPHA, FACTOR_ONE_MINUS_CONSTANT_ALPHA};

    static {
        NativeLibrary.load();
    }

    private final Handle handle;

    /** Makes an effect that is yet to be initialised. Needs no GL context. */
    public VectorGraphicRenderer() {
        handle = new Handle("VectorGraphicRenderer", Alloc());
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
     * Stores the size of the surface.
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
     * Sets the blend equation of the drawing calls that follow.
     *
     * @param mode one of the {@code EQUATION_} constants
     * @throws IllegalArgumentException if it is none of them
     */
    public void setBlendEquation(int mode) {
        final long open = handle.open();
        Arguments.requireOneOf("mode", mode, "EQUATION_", EQUATIONS);
        setBlendEquation(open, mode);
    }

    /**
     * Sets the blend factors of the drawing calls that follow, each one of the {@code FACTOR_} constants.
     *
     * @param srcRGB of the source's colour
     * @param dstRGB of the destination's colour
     * @param srcAlpha of the source's alpha
     * @param dstAlpha of the destination's alpha
     * @throws IllegalArgumentException if one is none of them
     */
    public void setBlendFunction(int srcRGB, int dstRGB, int srcAlpha, int dstAlpha) {
        final long open = handle.open();
        Arguments.requireOneOf("srcRGB", srcRGB, "FACTOR_", FACTORS);
        Arguments.requireOneOf("dstRGB", dstRGB, "FACTOR_", FACTORS);
        Arguments.requireOneOf("srcAlpha", srcAlpha, "FACTOR_", FACTORS);
        Arguments.requireOneOf("dstAlpha", dstAlpha, "FACTOR_", FACTORS);
        setBlendFunction(open, srcRGB, dstRGB, srcAlpha, dstAlpha);
    }

    /**
     * Sets the constant blend colour of the drawing calls that follow; (0, 0, 0, 1) unless set.
     *
     * @param r red
     * @param g green
     * @param b blue
     * @param a alpha
     */
    public void setBlendColor(float r, float g, float b, float a) {
        setBlendColor(handle.open(), r, g, b, a);
    }

    /**
     * Fills the surface with a gradient around a point.
     *
     * @param x of the centre
     * @param y of the centre
     * @param begin distance in pixels up to which beginColor is shown
     * @param beginColor at least 4 floats
     * @param end distance from which endColor is shown; equal to begin, the edge is hard
     * @param endColor at least 4 floats
     */
    public void renderRadialGradient(float x, float y, float begin, float[] beginColor, float end, float[] endColor) {
        final long ready = handle.ready();
        Arguments.requireColor("beginColor", beginColor);
        Arguments.requireColor("endColor", endColor);
        renderRadialGradient(ready, x, y, begin, beginColor, end, endColor);
    }

    /**
     * Draws a disc with a hard edge. Leaves attribute array 0 enabled, and no array buffer bound.
     *
     * @param x of the centre
     * @param y of the centre
     * @param radius in pixels, above 0; the driver's point size limit bounds the diameter
     * @param color at least 4 floats
     */
    public void renderCircle(float x, float y, float radius, float[] color) {
        final long ready = handle.ready();
        Arguments.requireColor("color", color);
        renderCircle(ready, x, y, radius, color);
    }

    /**
     * Draws a disc that shows the part of a bitmap that lies under it when the bitmap is stretched over the surface.
     * Leaves what {@link #renderCircle} leaves, and texture 0 on unit 0.
     *
     * @param x of the centre
     * @param y of the centre
     * @param diameter in pixels: the diameter here, the radius in {@link #renderCircle}
     * @param color at least 4 floats, of which the alpha alone is used, in place of the bitmap's
     * @param texture GL texture name
     */
    public void renderBitmapCircle(float x, float y, float diameter, float[] color, int texture) {
        final long ready = handle.ready();
        Arguments.requireColor("color", color);
        renderBitmapCircle(ready, x, y, diameter, color, texture);
    }

    /**
     * Fills a rectangle with a bitmap. Leaves the texture bound to unit 0.
     *
     * @param x of the left edge
     * @param y of the top edge
     * @param width in pixels
     * @param height in pixels
     * @param texture GL texture name
     */
    public void renderBitmapRectangle(float x, float y, float width, float height, int texture) {
        renderBitmapRectangle(handle.ready(), x, y, width, height, texture);
    }

    /**
     * Fills a rectangle with a bitmap's colour, and with a mask's red channel as alpha. The mask is stretched over the
     * surface and does not move with the rectangle. Leaves texture 0 on units 0 and 1.
     *
     * @param x of the left edge
     * @param y of the top edge
     * @param width in pixels
     * @param height in pixels
     * @param texture GL texture name
     * @param mask GL texture name
     */
    public void renderAlphaMaskedBitmapRectangle(float x, float y, float width, float height, int texture, int mask) {
        renderAlphaMaskedBitmapRectangle(handle.ready(), x, y, width, height, texture, mask);
    }

    /**
     * {@link #renderBitmapRectangle} with the bitmap turned, and stretched to the unchanged rectangle.
     *
     * @param x of the left edge
     * @param y of the top edge
     * @param width in pixels
     * @param height in pixels
     * @param texture GL texture name
     * @param rotation one of the {@code ROTATION_} constants; any other value turns nothing
     */
    public void renderRotatedBitmapRectangle(float x, float y, float width, float height, int texture, int rotation) {
        renderRotatedBitmapRectangle(handle.ready(), x, y, width, height, texture, rotation);
    }

    /**
     * {@link #renderAlphaMaskedBitmapRectangle} with the bitmap turned, and the mask as it is.
     *
     * @param x of the left edge
     * @param y of the top edge
     * @param width in pixels
     * @param height in pixels
     * @param texture GL texture name
     * @param rotation one of the {@code ROTATION_} constants; any other value turns nothing
     * @param mask GL texture name
     */
    public void renderRotatedAlphaMaskedBitmapRectangle(
            float x, float y, float width, float height, int texture, int rotation, int mask) {
        renderRotatedAlphaMaskedBitmapRectangle(handle.ready(), x, y, width, height, texture, rotation, mask);
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

    private static native void setBlendEquation(long handle, int mode);

    private static native void setBlendFunction(long handle, int srcRGB, int dstRGB, int srcAlpha, int dstAlpha);

    private static native void setBlendColor(long handle, float r, float g, float b, float a);

    private static native void renderRadialGradient(
            long handle, float x, float y, float begin, float[] beginColor, float end, float[] endColor);

    private static native void renderCircle(long handle, float x, float y, float radius, float[] color);

    private static native void renderBitmapCircle(
            long handle, float x, float y, float diameter, float[] color, int texture);

    private static native void renderBitmapRectangle(
            long handle, float x, float y, float width, float height, int texture);

    private static native void renderAlphaMaskedBitmapRectangle(
            long handle, float x, float y, float width, float height, int texture, int mask);

    private static native void renderRotatedBitmapRectangle(
            long handle, float x, float y, float width, float height, int texture, int rotation);

    private static native void renderRotatedAlphaMaskedBitmapRectangle(
            long handle, float x, float y, float width, float height, int texture, int rotation, int mask);
}
