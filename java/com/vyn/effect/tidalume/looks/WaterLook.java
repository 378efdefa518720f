package com.vyn.effect.tidalume.looks;

import java.util.Objects;

/**
 * Water over a picture: rings run from every touch, bend the light and come back from the edges.
 *
 * <p>The picture covers the surface: its middle part, scaled. Without a picture the ground is a plain teal. What is
 * drawn is opaque.
 *
 * <p>The ripples are a height field of {@code fieldScale} texels a pixel, on which the cost of a frame depends most: it
 * grows with up to the third power of the scale, since a ring that is to be as fast needs as many more passes. A
 * brook's ring loses half a percent of its height a pass, so on a finer field it fades sooner. Rings look alike on fields
 * with the same number of texels across: on a surface twice as wide, at half the scale.
 */
public final class WaterLook extends Look {
    /** A preset: clear and shallow, with sharp rings that are soon gone. */
    public static final String BROOK = "brook";
    /** A preset: deep water with wide rings and highlights. */
    public static final String POOL = "pool";
    /** A preset: drops fall all over. */
    public static final String RAIN = "rain";
    /** A preset: round rings that run slowly and for long. */
    public static final String CALM_LAKE = "calmLake";
    /** A preset: heavy rain and steep waves. */
    public static final String STORM = "storm";

    /** What kinds of water there are. */
    public enum Simulation {
        /** Rings are sharp and soon gone. */
        BROOK,
        /** Rings are round and run on for long. */
        POND
    }

    /** Makes a look that is yet to get a context. Needs no GL context. */
    public WaterLook() {
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
     * Sets the kind of water.
     *
     * @param simulation which one
     */
    public void setSimulation(Simulation simulation) {
        choose("simulation", simulation);
    }

    /**
     * Sets how fine the ripples are.
     *
     * @param texelsPerPixel more are finer, at a cost that grows with the third power
     */
    public void setFieldScale(float texelsPerPixel) {
        set("fieldScale", texelsPerPixel);
    }

    /**
     * Sets how fast rings run.
     *
     * @param shorterSidesPerSecond shorter sides of the surface a second
     */
    public void setSpeed(float shorterSidesPerSecond) {
        set("speed", shorterSidesPerSecond);
    }

    /**
     * Sets how long a pond's rings take until a tenth of them is left.
     *
     * @param seconds time of a ring
     */
    public void setFade(float seconds) {
        set("fade", seconds);
    }

    /**
     * Sets how wide a finger is.
     *
     * @param shorterSides radius in shorter sides of the surface
     */
    public void setTouchRadius(float shorterSides) {
        set("touchRadius", shorterSides);
    }

    /**
     * Sets how high a touch raises rings.
     *
     * @param strength 0 for not at all, to 1
     */
    public void setTouchStrength(float strength) {
        set("touchStrength", strength);
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
     * Sets how much rings bend light and sky.
     *
     * @param steepness 0 for not at all, to 1
     */
    public void setSteepness(float steepness) {
        set("steepness", steepness);
    }

    /**
     * Sets how much of the sky the rings reflect, on one side brighter, on the other darker.
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

    /**
     * Sets how much it rains.
     *
     * @param dropsPerSecond drops a second on the whole surface
     */
    public void setRain(float dropsPerSecond) {
        set("rain", dropsPerSecond);
    }

    private static native long Alloc();

    private static native void setPicture(long handle, int texture, int width, int height, boolean isFirstRowTop);
}
