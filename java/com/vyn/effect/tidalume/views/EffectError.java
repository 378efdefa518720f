package com.vyn.effect.tidalume.views;

/** What may go wrong behind a view. */
public enum EffectError {
    /**
     * There is no OpenGL ES 3.0 context, or it was lost three times without a picture between them. It is asked for
     * again when a view is attached, resized or shown.
     */
    NO_CONTEXT,
    /**
     * There is no surface to draw into. Another one is made once at once, and whenever the view is resized or shown or
     * gets a context.
     */
    SURFACE,
    /** The picture cannot be read. The effect goes on without one. */
    PICTURE,
    /**
     * The effect itself failed, or found another context than its own. It begins anew; where it fails again before it
     * has drawn, the view stays as it is until it is attached again.
     */
    EFFECT
}
