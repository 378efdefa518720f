package com.vyn.effect.tidalume.views;

/** A motion event as Android describes it. */
final class PointerEvent {
    static final int DOWN = 0;
    static final int UP = 1;
    static final int MOVE = 2;
    static final int CANCEL = 3;
    static final int POINTER_DOWN = 5;
    static final int POINTER_UP = 6;
    /** The flag of a finger that the system takes away while others stay. */
    static final int FLAG_CANCELED = 0x20;

    /** A finger on the view. */
    static final class Pointer {
        final int id;
        final float x;
        final float y;

        /**
         * @param x in pixels from the left
         * @param y in pixels from the top
         */
        Pointer(int id, float x, float y) {
            this.id = id;
            this.x = x;
            this.y = y;
        }
    }

    final int action;
    /** Which finger it is that comes down or lifts. */
    final int actionIndex;
    final int flags;
    final Pointer[] pointers;

    PointerEvent(int action, int actionIndex, int flags, Pointer... pointers) {
        this.action = action;
        this.actionIndex = actionIndex;
        this.flags = flags;
        this.pointers = pointers;
    }

    Pointer actionPointer() {
        return pointers[actionIndex];
    }

    boolean isDown() {
        return action == DOWN || action == POINTER_DOWN;
    }
}
