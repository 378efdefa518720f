package com.vyn.effect.tidalume;

/** Loads the native library once, when the first class that needs it is initialised. */
final class NativeLibrary {
    static {
        System.loadLibrary("Tidalume");
    }

    private NativeLibrary() {
    }

    /** Makes sure that the library is loaded. */
    static void load() {
    }
}
