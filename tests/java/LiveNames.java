package com.vyn.effect.tidalume.views;

/** The objects that are alive in the current context. */
public final class LiveNames {
    static {
        System.loadLibrary("tidalume-live-names");
    }

    private LiveNames() {
    }

    public static native long count();
}
