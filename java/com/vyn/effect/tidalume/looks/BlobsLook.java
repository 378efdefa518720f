package com.vyn.effect.tidalume.looks;

import java.util.Objects;

/**
 * Lit blobs: drops that rise from a pool at the bottom and sink from one at the top, a blob under every finger, and
 * balls of the caller's. They merge where they meet.
 *
 * <p>The blobs are drawn over what is there. With a speed of 0 they come to rest within a second after the last touch.
 *
 * <p>A palette is a pile of layers, from the rim to the highlights, each of which is a field of its own and a pass over
 * the surface: eight for lava, seven for mercury, four for ink.
 */
public final class BlobsLook extends Look {
    /** A preset: glowing drops between two pools. */
    public static final String LAVA = "lava";
    /** A preset: shining drops between two pools. */
    public static final String MERCURY = "mercury";
    /** A preset: dark, flat drops that hardly hurry. */
    public static final String INK = "ink";
    /** A preset: small shining drops that stay where they are, without pools. */
    public static final String DEW = "dew";

    /** Which colours there are. */
    public enum Palette {
        /** Glowing red and yellow. */
        LAVA,
        /** Shining grey. */
        MERCURY,
        /** Dark and flat. */
        INK
    }

    /** Makes a look that is yet to get a context. Needs no GL context. */
    public BlobsLook() {
        super(Alloc());
    }

    /**
     * Adds balls to those that move by themselves, until the next call. A ball alone is a disc of its radius. Not
     * drawn: balls that are not finite, with a radius of 0 or less, or with a centre further outside than an eighth of
     * the surface's shorter side.
     *
     * @param balls three numbers each, in pixels: x and y of the centre from the top left, radius; copied
     * @param count how many of them there are
     * @throws IllegalArgumentException if the count is negative, or the array holds fewer
     */
    public void setBalls(float[] balls, int count) {
        final long open = open();
        final int held = Objects.requireNonNull(balls, "balls must not be null").length / 3;
        if (count < 0 || count > held) {
            throw new IllegalArgumentException("count must be 0 to " + held + ", the balls in the array, is " + count);
        }
        setBalls(open, balls, count);
    }

    /**
     * Sets the colours.
     *
     * @param palette which ones
     */
    public void setPalette(Palette palette) {
        choose("palette", palette);
    }

    /**
     * Sets how smooth the outlines are.
     *
     * @param texelsPerPixel more are smoother, at a higher cost
     */
    public void setFieldScale(float texelsPerPixel) {
        set("fieldScale", texelsPerPixel);
    }

    /**
     * Shifts the colours around the colour wheel.
     *
     * @param degrees from red towards green
     */
    public void setHue(float degrees) {
        set("hue", degrees);
    }

    /**
     * Sets how little of what lies behind shows through.
     *
     * @param opacity 0 for all, to 1 for nothing
     */
    public void setOpacity(float opacity) {
        set("opacity", opacity);
    }

    /**
     * Sets the size of drops and the depth of pools.
     *
     * @param size 1 for what it is at first
     */
    public void setDropSize(float size) {
        set("dropSize", size);
    }

    /**
     * Sets how many drops rise and sink.
     *
     * @param share 0 for none, to 1
     */
    public void setDrops(float share) {
        set("drops", share);
    }

    /**
     * Sets how deep the pools at both ends are.
     *
     * @param share 0 for none, to 1
     */
    public void setPools(float share) {
        set("pools", share);
    }

    /**
     * Sets how fast drops move and pools roll.
     *
     * @param shorterSidesPerSecond shorter sides of the surface a second
     */
    public void setSpeed(float shorterSidesPerSecond) {
        set("speed", shorterSidesPerSecond);
    }

    /**
     * Sets how large a finger's blob is.
     *
     * @param shorterSides radius in shorter sides of the surface
     */
    public void setTouchRadius(float shorterSides) {
        set("touchRadius", shorterSides);
    }

    private static native long Alloc();

    private static native void setBalls(long handle, float[] balls, int count);
}
