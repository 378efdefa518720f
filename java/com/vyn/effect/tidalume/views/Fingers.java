package com.vyn.effect.tidalume.views;

import com.vyn.effect.tidalume.looks.Look;
import com.vyn.effect.tidalume.looks.TouchPhase;
import java.util.Arrays;

/** Numbers the points that are down as a look counts fingers. Points may have any number that the platform gives. */
final class Fingers {
    private final boolean[] isDown = new boolean[Look.FINGERS];
    /** Since the last frame: until the next one a look knows the last touch of a finger only. */
    private final boolean[] isUsed = new boolean[Look.FINGERS];
    private final int[] points = new int[Look.FINGERS];

    /** Passes a touch on, unless more points are down than a look tells apart. */
    void touch(Look look, int point, float x, float y, TouchPhase phase) {
        int finger = fingerOf(point);
        if (finger < 0 && phase == TouchPhase.DOWN) {
            finger = freeFinger();
        }
        if (finger < 0) {
            return;
        }
        points[finger] = point;
        isUsed[finger] = true;
        isDown[finger] = phase == TouchPhase.DOWN || phase == TouchPhase.MOVE;
        look.touch(finger, x, y, phase);
    }

    /** Takes away the points from a number on. */
    void cancel(Look look, int lowest) {
        for (int finger = 0; finger < Look.FINGERS; finger++) {
            if (isDown[finger] && points[finger] >= lowest) {
                look.touch(finger, 0, 0, TouchPhase.CANCEL);
                isDown[finger] = false;
            }
        }
    }

    /** For a look that knows already that all are up. */
    void forget() {
        Arrays.fill(isDown, false);
    }

    /** The look has taken all touches up to now. */
    void drawn() {
        Arrays.fill(isUsed, false);
    }

    private int fingerOf(int point) {
        for (int finger = 0; finger < Look.FINGERS; finger++) {
            if (isDown[finger] && points[finger] == point) {
                return finger;
            }
        }
        return -1;
    }

    private int freeFinger() {
        int free = -1;
        for (int finger = Look.FINGERS - 1; finger >= 0; finger--) {
            final boolean isBetter = free < 0 || isUsed[free] || !isUsed[finger];
            if (!isDown[finger] && isBetter) {
                free = finger;
            }
        }
        return free;
    }
}
