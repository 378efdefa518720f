package com.vyn.effect.tidalume.views;

/** Is told what goes wrong behind a view. */
public interface EffectErrorListener {
    /**
     * Something went wrong; the application goes on.
     *
     * @param error what
     * @param message why, for developers
     */
    void onEffectError(EffectError error, String message);
}
