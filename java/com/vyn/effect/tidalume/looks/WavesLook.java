package com.vyn.effect.tidalume.looks;

import java.util.Objects;

/**
 * Swell that rolls down over a picture, one sine curve behind the other; a finger pushes it.
 *
 * <p>The picture covers the surface: its middle part, scaled. Without a picture the ground is a plain teal. What is
 * drawn is opaque. The swell rolls for ever, unless both its speed and its sway are 0.
 */
public final class WavesLook extends Look {
    /** A preset: long and even. */
    public static final String SWELL = "swell";
    /** A preset: short, with many bends and highlights. */
    public static final String RIPPLE = "ripple";
    /** A preset: very long and high, over deep water. */
    public static final String OCEAN = "ocean";

    /** Makes a look that is yet to get a context. Needs no GL context. */
    public WavesLook() {
        super(Alloc());
    }

    /**
     * Sets the picture on the ground, a texture of yours that has to live until the next picture is set or the context
     * is lost, which forgets it. It is copied, as it is at the next {@code draw} and after a change of size; call again
     * when its content has changed. Linear filters are set on it. Colours are taken as premultiplied: parts that are
     * transparent lie on black.
     *
     * @param texture its GL name; 0 for none
     * @param width in texels, at least 1
     * @param height in texels, at least 1
     * @param top which of its rows is the picture's top
     */
    public void setPicture(int texture, int width, int height, PictureTop top) {
        final long open = open();
        if (texture != 0) {
            requirePixels(width, height);
        }
        final boolean isFirstRowTop = Objects.requireNonNull(top, "top must not be null") == PictureTop.FIRST_ROW;
        setPicture(open, texture, width, height, isFirstRowTop);
    }

    /**
     * Sets how fine the waves are.
     *
     * @param texelsPerPixel more are finer, at a higher cost
     */
    public void setFieldScale(float texelsPerPixel) {
        set("fieldScale", texelsPerPixel);
    }

    /**
     * Sets how fast the swell rolls.
     *
     * @param shorterSidesPerSecond shorter sides of the surface a second
     */
    public void setSpeed(float shorterSidesPerSecond) {
        set("speed", shorterSidesPerSecond);
    }

    /**
     * Sets how far crests lie apart.
     *
     * @param shorterSides distance in shorter sides of the surface
     */
    public void setLength(float shorterSides) {
        set("length", shorterSides);
    }

    /**
     * Sets how many bends the crests have.
     *
     * @param bends periods across the surface
     */
    public void setBends(float bends) {
        set("bends", bends);
    }

    /**
     * Sets how far the bends swing to and fro.
     *
     * @param sway 0 for not at all, to 1
     */
    public void setSway(float sway) {
        set("sway", sway);
    }

    /**
     * Sets how much waves bend light and sky.
     *
     * @param height 0 for not at all, to 1
     */
    public void setHeight(float height) {
        set("height", height);
    }

    /**
     * Sets how far the picture is below, and so how far it is bent.
     *
     * @param shorterSides depth in shorter sides of the surface
     */
    public void setDepth(float shorterSides) {
        set("depth", shorterSides);
    }

    /**
     * Sets how much of the sky the crests reflect, on one side brighter, on the other darker.
     *
     * @param reflection 0 for nothing, to 1
     */
    public void setSky(float reflection) {
        set("sky", reflection);
    }

    /**
     * Sets how much crests glint where they face the light.
     *
     * @param light 0 for not at all, to 1
     */
    public void setLight(float light) {
        set("light", light);
    }

    private static native long Alloc();

    private static native void setPicture(long handle, int texture, int width, int height, boolean isFirstRowTop);
}
