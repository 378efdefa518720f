package com.vyn.effect.tidalume.views;

/** What may go wrong behind a view. */
public enum EffectError {
    /** There is no OpenGL ES 3.0 context. It is asked for again when a view is attached, resized or shown. */
    NO_CONTEXT,
    /** The picture cannot be read. The effect goes on without one. */
    PICTURE,
    /** The effect itself failed. The view shows nothing until it is attached again. */
    EFFECT
}
