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
}
