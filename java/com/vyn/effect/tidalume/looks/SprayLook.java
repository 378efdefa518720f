package com.vyn.effect.tidalume.looks;

/**
 * Fingers that spray: a blob swells under a finger that comes down; while the finger is dragged, drops fly off towards
 * it from half way, merge with their neighbours, slow down and, after three seconds and a third, shrink away.
 *
 * <p>The drops are drawn over what is there. Without a touch nothing is drawn, and four seconds after the last finger
 * has lifted nothing is left.
 *
 * <p>The fingers 0 to {@link #SPRAYING_FINGERS} - 1 spray, each in a field of its own, so that drops of one finger do
 * not merge with those of another. A finger that comes down again takes its former drops away. Colours depend on where
 * a drop is: they run from the bottom of the surface to its top.
 */
public final class SprayLook extends Look {
    /** A preset: yellow, red and violet. */
    public static final String SUNSET = "sunset";
    /** A preset: green and blue, with larger drops. */
    public static final String LAGOON = "lagoon";
    /** A preset: rose and violet, through which one sees what lies behind. */
    public static final String GLASS = "glass";
    /** How many fingers spray. */
    public static final int SPRAYING_FINGERS = 5;

    /** Which colours there are. */
    public enum Palette {
        /** Violet to yellow. */
        SUNSET,
        /** Blue to green. */
        LAGOON,
        /** Violet to rose. */
        ORCHID
    }

    /** Makes a look that is yet to get a context. Needs no GL context. */
    public SprayLook() {
        super(Alloc());
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
     * Sets how large a finger's blob is.
     *
     * @param shorterSides radius in shorter sides of the surface
     */
    public void setTouchRadius(float shorterSides) {
        set("touchRadius", shorterSides);
    }

    private static native long Alloc();
}
