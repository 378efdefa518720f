package com.vyn.effect.tidalume.views;

/** The GL thread and the frames of the display. */
interface Frames {
    /** Is called on the GL thread. */
    interface Listener {
        /** @param nanoseconds the frame's time, of a clock that does not jump */
        void frame(long nanoseconds);
    }

    /** Runs a task on the GL thread, after those that were posted before. May be called on any thread. */
    void post(Runnable task);

    /** Calls the listener once, with the display's next frame. Called on the GL thread. */
    void request(Listener listener);

    /** The time between two of the display's frames. */
    long periodNanoseconds();
}
