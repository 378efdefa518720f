package com.vyn.effect.tidalume.headless;

import java.io.IOException;
import java.nio.file.Path;

/**
 * An OpenGL ES 3.0 context that draws without a window or a display server, for tests and first steps on a desktop.
 *
 * <p>Framebuffer 0 is an RGBA8888 pbuffer on Mesa's surfaceless platform. All calls belong on the thread that made the
 * context, which is current there until {@link #close()}. Every method throws {@link IllegalStateException} after
 * {@code close()} and where the driver refuses, with the reason.
 *
 * <pre>{@code
 * try (HeadlessContext context = HeadlessContext.create(540, 960)) {
 *     effect.init();
 *     effect.setScreenSize(540, 960);
 *     context.clear(0, 0, 0, 1);
 *     effect.render();
 *     context.writePng(Path.of("effect.png"));
 * }
 * }</pre>
 */
public final class HeadlessContext implements AutoCloseable {
    /** Texture formats of OpenGL ES 3.0 that {@link #createTexture} takes. */
    public static final int GL_R16F = 0x822D;
    public static final int GL_RG16F = 0x822F;
    public static final int GL_RGB16F = 0x881B;
    public static final int GL_RGBA16F = 0x881A;
    public static final int GL_RGBA8 = 0x8058;

    static {
        System.loadLibrary("tidalume-headless");
    }

    private int width;
    private int height;
    private long handle;

    private HeadlessContext(int width, int height) {
        this.width = width;
        this.height = height;
        handle = nativeCreate(width, height);
    }

    /**
     * Makes a context whose framebuffer 0 has the given size, and makes it current.
     *
     * @param width in pixels, at least 1
     * @param height in pixels, at least 1
     * @return the context
     * @throws IllegalArgumentException if a size is below 1
     * @throws IllegalStateException if the driver has no such context, or a size is above its limit
     */
    public static HeadlessContext create(int width, int height) {
        checkAtLeastOne("width", width);
        checkAtLeastOne("height", height);
        return new HeadlessContext(width, height);
    }

    /** Destroys the GL context, as a phone does behind an application's back, and makes a new one current. */
    public void recreate() {
        nativeRecreate(open());
    }

    /**
     * Replaces framebuffer 0 by one of another size; GL names, state and viewport stay.
     *
     * @param width in pixels, at least 1
     * @param height in pixels, at least 1
     * @throws IllegalArgumentException if a size is below 1
     */
    public void resize(int width, int height) {
        final long open = open();
        checkAtLeastOne("width", width);
        checkAtLeastOne("height", height);
        nativeResize(open, width, height);
        this.width = width;
        this.height = height;
    }

    /**
     * Names the driver.
     *
     * @return vendor, renderer and version in one line
     */
    public String driver() {
        return nativeDriver(open());
    }

    /**
     * Clears the colour of the framebuffer that is bound; the clear colour of the GL stays changed.
     *
     * @param red 0 to 1
     * @param green 0 to 1
     * @param blue 0 to 1
     * @param alpha 0 to 1
     */
    public void clear(float red, float green, float blue, float alpha) {
        nativeClear(open(), red, green, blue, alpha);
    }

    /**
     * Makes a texture with linear filtering and clamped edges.
     *
     * @param internalFormat one of this class's five formats
     * @param width in texels, at least 1
     * @param height in texels, at least 1
     * @param values width * height * channels values, the bottom row first
     * @return the texture's name, which {@link #deleteTexture} frees
     * @throws IllegalArgumentException if the format is another, a size below 1 or the array's length another
     */
    public int createTexture(int internalFormat, int width, int height, float[] values) {
        checkTexture(internalFormat, width, height, values.length);
        return nativeCreateTextureFromFloats(open(), internalFormat, width, height, values);
    }

    /**
     * Makes a texture from bytes, where 255 ({@code (byte) -1}) stands for 1.
     *
     * @param internalFormat one of this class's five formats
     * @param width in texels, at least 1
     * @param height in texels, at least 1
     * @param values width * height * channels bytes, the bottom row first
     * @return the texture's name, which {@link #deleteTexture} frees
     * @throws IllegalArgumentException if the format is another, a size below 1 or the array's length another
     */
    public int createTexture(int internalFormat, int width, int height, byte[] values) {
        checkTexture(internalFormat, width, height, values.length);
        return nativeCreateTextureFromBytes(open(), internalFormat, width, height, values);
    }

    /**
     * Makes a texture of a picture, whose top is the first row. Colours stay as they are, not premultiplied.
     *
     * @param picture what it shows
     * @return the texture's name, which {@link #deleteTexture} frees
     */
    public int createTexture(Picture picture) {
        return createTexture(GL_RGBA8, picture.width, picture.height, picture.rgba);
    }

    /**
     * Reads a PNG, JPEG or WebP file, which is told by its content, not by its name. JPEG pictures are turned upright
     * by their EXIF orientation; of an animation the first frame is taken. Needs no context.
     *
     * @param file which one
     * @return the picture
     * @throws IOException if the file cannot be read, is of another kind, is broken or ends too early, or holds a
     *     picture of more than 16,384 pixels on a side or 128 megapixels in all; the message has the path and the reason
     */
    public static Picture readPicture(Path file) throws IOException {
        final int[] size = new int[2];
        final byte[] rgba = nativeReadPicture(file.toString(), size);
        return new Picture(size[0], size[1], rgba);
    }

    /**
     * Deletes a texture.
     *
     * @param texture its name
     */
    public void deleteTexture(int texture) {
        nativeDeleteTexture(open(), texture);
    }

    /**
     * Reads level 0 of a texture.
     *
     * @param texture its name
     * @param width its width in texels, at least 1
     * @param height its height in texels, at least 1
     * @return width * height * 4 values: red, green, blue, alpha of each texel, the bottom row first; a channel that
     *     the texture lacks is 0, a missing alpha 1
     * @throws IllegalArgumentException if a size is below 1
     */
    public float[] readTexture(int texture, int width, int height) {
        checkAtLeastOne("width", width);
        checkAtLeastOne("height", height);
        return nativeReadTexture(open(), texture, width, height);
    }

    /**
     * Reads the framebuffer that is bound, in the size of framebuffer 0.
     *
     * @return width * height * 4 values: red, green, blue, alpha of each pixel, the bottom row first
     */
    public float[] readFramebuffer() {
        return nativeReadFramebuffer(open(), width, height);
    }

    /**
     * Writes the framebuffer that is bound as an opaque PNG picture, in the size of framebuffer 0.
     *
     * @param file where to; a file that is there is replaced
     * @throws IOException if the file cannot be written; the message names it
     */
    public void writePng(Path file) throws IOException {
        nativeWritePng(open(), width, height, file.toString());
    }

    /** Destroys the context and everything in it. A second call does nothing. */
    @Override
    public void close() {
        long closing = handle;
        handle = 0;
        if (closing != 0) {
            nativeDestroy(closing);
        }
    }

    private long open() {
        if (handle == 0) {
            throw new IllegalStateException("the context is closed");
        }
        return handle;
    }

    private static void checkAtLeastOne(String name, int value) {
        if (value < 1) {
            throw new IllegalArgumentException(name + " must be at least 1, is " + value);
        }
    }

    private static void checkTexture(int internalFormat, int width, int height, int length) {
        checkAtLeastOne("width", width);
        checkAtLeastOne("height", height);
        long expected = (long) width * height * channels(internalFormat);
        if (length != expected) {
            throw new IllegalArgumentException("values must have " + expected + " elements, has " + length);
        }
    }

    private static int channels(int internalFormat) {
        switch (internalFormat) {
            case GL_R16F:
                return 1;
            case GL_RG16F:
                return 2;
            case GL_RGB16F:
                return 3;
            case GL_RGBA16F:
            case GL_RGBA8:
                return 4;
            default:
                throw new IllegalArgumentException(
                        String.format("internalFormat 0x%04X is none of the five formats", internalFormat));
        }
    }

    private static native long nativeCreate(int width, int height);

    private static native void nativeRecreate(long handle);

    private static native void nativeResize(long handle, int width, int height);

    private static native byte[] nativeReadPicture(String file, int[] size) throws IOException;

    private static native String nativeDriver(long handle);

    private static native void nativeClear(long handle, float red, float green, float blue, float alpha);

    private static native int nativeCreateTextureFromFloats(
            long handle, int internalFormat, int width, int height, float[] values);

    private static native int nativeCreateTextureFromBytes(
            long handle, int internalFormat, int width, int height, byte[] values);

    private static native void nativeDeleteTexture(long handle, int texture);

    private static native float[] nativeReadTexture(long handle, int texture, int width, int height);

    private static native float[] nativeReadFramebuffer(long handle, int width, int height);

    private static native void nativeWritePng(long handle, int width, int height, String file) throws IOException;

    private static native void nativeDestroy(long handle);
}
