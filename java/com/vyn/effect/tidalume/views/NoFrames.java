package com.vyn.effect.tidalume.views;

/** A GL thread that does nothing. */
final class NoFrames implements Frames {
    @Override
    public void post(Runnable task) {
    }

    @Override
    public void request(Listener listener) {
    }

    @Override
    public long periodNanoseconds() {
        return Long.MAX_VALUE;
    }
}
