package com.vyn.effect.tidalume;

/** What holds for the library as a whole. */
public final class Tidalume {
    /** The version, major.minor.patch. Compilers copy it into the classes that name it. */
    public static final String VERSION = "0.2.0";

    private Tidalume() {
    }
}
