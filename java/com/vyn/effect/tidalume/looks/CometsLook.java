package com.vyn.effect.tidalume.looks;

/**
 * Comets in colours over whatever is there, with glowing heads from which sparks fall: every finger that comes down
 * sends two through its point, and others may come by themselves.
 *
 * <p>Several pairs of comets fly at once; one more than there is room for takes the place of the oldest. A finger that
 * moves launches none. While nothing flies, drawing costs nothing.
 */
public final class CometsLook extends Look {
    /** A preset: comets come by themselves, many of them. */
    public static final String METEOR_SHOWER = "meteorShower";
    /** A preset: slow, with wide violet glow, from touches alone. */
    public static final String WISH = "wish";
    /** A preset: orange, with many sparks, from touches alone. */
    public static final String EMBERS = "embers";
    /** A preset: slow and green; now and then one comes by itself. */
    public static final String AURORA = "aurora";

    /** Makes a look that is yet to get a context. Needs no GL context. */
    public CometsLook() {
        super(Alloc());
    }

    /**
     * Sets how long a comet flies.
     *
     * @param seconds time of a flight
     */
    public void setDuration(float seconds) {
        set("duration", seconds);
    }

    /**
     * Sets how little shows through the tails.
     *
     * @param layers whole layers, one over the other
     */
    public void setBrightness(float layers) {
        set("brightness", layers);
    }

    /**
     * Sets how wide the heads' glow is.
     *
     * @param shorterSides width in shorter sides of the surface
     */
    public void setGlow(float shorterSides) {
        set("glow", shorterSides);
    }

    /**
     * Sets how many sparks fall.
     *
     * @param sparksPerSecond sparks a second from each head
     */
    public void setSparks(float sparksPerSecond) {
        set("sparks", sparksPerSecond);
    }

    /**
     * Sets the colour of the heads.
     *
     * @param degrees from red over green and blue back to red
     */
    public void setHeadHue(float degrees) {
        set("headHue", degrees);
    }

    /**
     * Sets the colour of the tails.
     *
     * @param degrees from red over green and blue back to red
     */
    public void setTailHue(float degrees) {
        set("tailHue", degrees);
    }

    /**
     * Sets how many comets come by themselves.
     *
     * @param launchesPerMinute launches a minute
     */
    public void setMeteors(float launchesPerMinute) {
        set("meteors", launchesPerMinute);
    }

    private static native long Alloc();
}
