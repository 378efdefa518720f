package com.vyn.effect.tidalume.looks;

/** What a finger or the mouse does. */
public enum TouchPhase {
    /** The finger comes down. */
    DOWN,
    /** It has moved. */
    MOVE,
    /** It is lifted. */
    UP,
    /** The system takes the finger away: it is up, and what it began may end at once. */
    CANCEL
}
