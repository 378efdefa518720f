package com.vyn.effect.tidalume.views;

/**
 * Says how fine fields may be so that frames come in time: coarser by a step where most frames of a second were late,
 * finer by one after some seconds in time. Where finer turns out too fine, the next attempt waits twice as long.
 */
final class FieldScaleGovernor {
    private static final float[] STEPS = {1, 0.75f, 0.5f, 0.35f, 0.25f};
    private static final long SECOND = 1_000_000_000L;
    private static final int FIRST_WAIT = 4;
    private static final int LONGEST_WAIT = 64;

    private int step;
    private int wait = FIRST_WAIT;
    private boolean triesFiner;
    private int secondsInTime;
    private boolean isRunning;
    private long previous;
    private long start;
    private int frames;
    private int lateFrames;

    /** A share of the scale that was asked for. */
    float share() {
        return STEPS[step];
    }

    /** Nothing moves: the time until the next frame says nothing. */
    void rest() {
        isRunning = false;
    }

    /**
     * Counts a frame.
     *
     * @param now in nanoseconds
     * @param period the time that a frame should take
     * @return whether the share has changed
     */
    boolean frame(long now, long period) {
        if (!isRunning) {
            isRunning = true;
            begin(now);
            previous = now;
            return false;
        }
        frames++;
        if (now - previous > period + period / 2) {
            lateFrames++;
        }
        previous = now;
        if (now - start < SECOND) {
            return false;
        }
        final int before = step;
        judge();
        begin(now);
        return step != before;
    }

    private void begin(long now) {
        start = now;
        frames = 0;
        lateFrames = 0;
    }

    private void judge() {
        if (2 * lateFrames > frames) {
            coarser();
        } else if (20 * lateFrames <= frames) {
            secondInTime();
        } else {
            secondsInTime = 0;
        }
    }

    private void coarser() {
        if (triesFiner) {
            wait = Math.min(2 * wait, LONGEST_WAIT);
        }
        triesFiner = false;
        secondsInTime = 0;
        step = Math.min(step + 1, STEPS.length - 1);
    }

    private void secondInTime() {
        secondsInTime++;
        if (secondsInTime < wait) {
            return;
        }
        triesFiner = step > 0;
        secondsInTime = 0;
        step = Math.max(step - 1, 0);
    }
}
