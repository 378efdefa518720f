package com.vyn.effect.tidalume.views;

/** The objects that are alive in the current context. */
final class LiveNames {
    static {
        System.loadLibrary("tidalume-live-names");
    }

    private LiveNames() {
    }

    static native long count();
}
