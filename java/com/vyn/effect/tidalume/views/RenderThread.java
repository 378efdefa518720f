package com.vyn.effect.tidalume.views;

import java.util.ArrayList;
import java.util.List;

/**
 * What all views of a process share: the GL thread and the context, which lives while a view is attached. Every method
 * but {@link #post} runs on the GL thread.
 */
final class RenderThread {
    /** Of the context, without a picture between them. */
    private static final int MOST_LOSSES = 3;

    private final Gpu gpu;
    private final Frames frames;
    private final List<EffectRenderer> attached = new ArrayList<>();
    private boolean hasContext;
    /** Since the last picture that was shown, or since the context was given up. */
    private int losses;
    private boolean isFrameRequested;

    RenderThread(Gpu gpu, Frames frames) {
        this.gpu = gpu;
        this.frames = frames;
    }

    Frames frames() {
        return frames;
    }

    /** Runs a task on the GL thread, and draws what it has changed with the next frame. May be called on any thread. */
    void post(Runnable task) {
        frames.post(() -> {
            task.run();
            requestFrame();
        });
    }

    /** Takes a renderer in, which is told of the context if there is one. */
    void attach(EffectRenderer renderer) {
        attached.add(renderer);
        if (enter()) {
            renderer.contextCreated();
        }
    }

    /** Takes the renderer out while the context is current; with the last one the context goes. */
    void detach(EffectRenderer renderer) {
        attached.remove(renderer);
        if (isLost()) {
            renderer.contextLost();
            lose();
        }
        renderer.close();
        if (attached.isEmpty() && hasContext) {
            gpu.destroyContext();
            hasContext = false;
        }
    }

    /**
     * Makes the context current; where it is missing or lost, a new one, provided that a view needs it.
     *
     * @return whether there is one
     */
    boolean enter() {
        if (isLost()) {
            lose();
        } else if (!hasContext) {
            losses = 0;
            createContext();
        }
        return hasContext;
    }

    /** Makes the context current where there is one. */
    private boolean isLost() {
        return hasContext && gpu.makeCurrent() == Gpu.Result.CONTEXT_LOST;
    }

    private void createContext() {
        if (attached.isEmpty()) {
            return;
        }
        try {
            gpu.createContext();
            hasContext = true;
        } catch (IllegalStateException exception) {
            reportMissing(exception);
            return;
        }
        for (EffectRenderer renderer : attached) {
            renderer.contextCreated();
        }
    }

    private void reportMissing(IllegalStateException reason) {
        for (EffectRenderer renderer : attached) {
            renderer.report(EffectError.NO_CONTEXT, reason);
        }
    }

    /** Where every context is lost before it has shown anything, another one would be, too. */
    private void lose() {
        losses++;
        dropContext();
        if (losses < MOST_LOSSES) {
            createContext();
        } else {
            reportMissing(new IllegalStateException("the context was lost " + losses + " times without a picture"));
        }
    }

    /** Looks of a class share their programs: all of them forget before the first one builds anew. */
    private void dropContext() {
        for (EffectRenderer renderer : attached) {
            renderer.contextLost();
        }
        gpu.destroyContext();
        hasContext = false;
    }

    private void frame(long now) {
        isFrameRequested = false;
        for (EffectRenderer renderer : attached) {
            if (renderer.isDue(now) && !draw(renderer, now)) {
                break;
            }
        }
        requestFrame();
    }

    /**
     * Draws a frame of a view. A look draws in its own context only. Where it fails, the current one may be another.
     *
     * @return whether the context is still the same
     */
    private boolean draw(EffectRenderer renderer, long now) {
        final Gpu.Result result;
        try {
            result = renderer.draw(now);
        } catch (RuntimeException exception) {
            renderer.fail(exception);
            dropContext();
            createContext();
            return false;
        }
        if (result == Gpu.Result.DONE) {
            losses = 0;
        } else if (result == Gpu.Result.CONTEXT_LOST) {
            lose();
        }
        return result != Gpu.Result.CONTEXT_LOST;
    }

    private void requestFrame() {
        boolean isWanted = false;
        for (EffectRenderer renderer : attached) {
            isWanted |= renderer.wantsFrame();
        }
        if (isWanted && hasContext && !isFrameRequested) {
            isFrameRequested = true;
            frames.request(this::frame);
        }
    }
}
