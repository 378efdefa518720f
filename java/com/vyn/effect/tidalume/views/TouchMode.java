package com.vyn.effect.tidalume.views;

/** What a view does with touches. */
public enum TouchMode {
    /** It follows all fingers and takes the touches; views below get none. */
    TAKE,
    /** It shows where a gesture begins, and lets all touches through to the views below. */
    THROUGH,
    /** It leaves touches alone. */
    NONE
}
