package com.vyn.effect.tidalume.views;

import java.util.ArrayList;
import java.util.List;

/**
 * What all views of a process share: the GL thread and the context, which lives while a view is attached. Every method
 * but {@link #post} runs on the GL thread.
 */
final class RenderThread {
    private final Gpu gpu;
    private final Frames frames;
    private final List<EffectRenderer> attached = new ArrayList<>();
    private boolean hasContext;
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
            for (EffectRenderer renderer : attached) {
                renderer.report(EffectError.NO_CONTEXT, exception);
            }
            return;
        }
        for (EffectRenderer renderer : attached) {
            renderer.contextCreated();
        }
    }

    /** Looks of a class share their programs: all of them forget before the first one builds anew. */
    private void lose() {
        for (EffectRenderer renderer : attached) {
            renderer.contextLost();
        }
        gpu.destroyContext();
        hasContext = false;
        createContext();
    }

    private void frame(long now) {
        isFrameRequested = false;
        for (EffectRenderer renderer : attached) {
            if (renderer.isDue(now) && renderer.draw(now) == Gpu.Result.CONTEXT_LOST) {
                lose();
                break;
            }
        }
        requestFrame();
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
