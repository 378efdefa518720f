package com.vyn.effect.tidalume;

/**
 * Process-wide settings. Set them before the first {@code init} of any effect: each is read when an effect builds its
 * programs, so a later change reaches only programs that are built afterwards.
 */
public final class GlobalProperty {
    static {
        NativeLibrary.load();
    }

    private GlobalProperty() {
    }

    /**
     * Whether each {@code init} that builds programs logs how long that took. Off by default.
     *
     * @param enable true to log the milliseconds, under the class's name as tag
     */
    public static native void setDEBUGLOG(boolean enable);

    /**
     * The folder of the program cache, see {@link #setBINARYSHADER}. Empty by default, which is the working directory.
     *
     * @param directory used verbatim as prefix of every file's path, so it must end with the directory separator, as in
     *     {@code getCacheDir() + "/"}. At most 1,023 bytes of modified UTF-8; a longer one, or null, is ignored and the
     *     previous one kept.
     */
    public static native void setROOTDIR(String directory);

    /**
     * Whether programs are loaded from, and saved to, a cache of driver binaries below {@link #setROOTDIR}. Off by
     * default. Delete the files ({@code *.dat}) when the library is updated: they do not know which source they were
     * built from.
     *
     * @param enable true to use the cache
     */
    public static native void setBINARYSHADER(boolean enable);
}
