package com.vyn.effect.tidalume.headless;

/** A picture of 8-bit pixels in memory. */
public final class Picture {
    /** In pixels. */
    public final int width;
    /** In pixels. */
    public final int height;
    /** Red, green, blue, alpha of each pixel; rows from the top, alpha not premultiplied. */
    public final byte[] rgba;

    Picture(int width, int height, byte[] rgba) {
        this.width = width;
        this.height = height;
        this.rgba = rgba;
    }

    /** Multiplies the colours by their alpha, for a texture that is filtered or blended as premultiplied. Do it once. */
    public void premultiply() {
        for (int pixel = 0; pixel < rgba.length; pixel += 4) {
            final int alpha = rgba[pixel + 3] & 0xFF;
            for (int channel = pixel; channel < pixel + 3; channel++) {
                rgba[channel] = (byte) (((rgba[channel] & 0xFF) * alpha + 127) / 255);
            }
        }
    }
}
