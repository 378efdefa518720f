package com.vyn.effect.tidalume.views;

import static org.junit.Assert.*;

import com.vyn.effect.tidalume.headless.HeadlessContext;
import java.util.*;
import java.util.concurrent.*;

/** Surfaces are the views; that the context is lost is found out by the call that the test chooses. */
final class Machine implements Gpu, Frames {
    /** Of the display. */
    static final long FRAME = 16_666_667;

    final ExecutorService thread = Executors.newSingleThreadExecutor(task -> new Thread(task, "views' GL"));
    final Queue<Future<?>> posted = new ArrayDeque<>();
    HeadlessContext context;
    boolean isMissing;
    int contextsAskedFor;
    Result current = Result.DONE;
    Result swapped = Result.DONE;
    boolean isLosing;
    int surfaces;
    long namesAtFirst;
    Listener requested;
    long now;

    public void createContext() {
        contextsAskedFor++;
        if (isMissing) {
            throw new IllegalStateException("there is none");
        }
        assertNull(context);
        context = HeadlessContext.create(1, 1);
        namesAtFirst = LiveNames.count();
        swapped = isLosing ? Result.CONTEXT_LOST : Result.DONE;
    }

    public void destroyContext() {
        if (!isLost()) {
            assertEquals("objects are left", namesAtFirst, LiveNames.count());
        }
        context.close();
        context = null;
        current = swapped = Result.DONE;
    }

    boolean isLost() {
        return current != Result.DONE || swapped != Result.DONE;
    }

    PictureSource.Texture upload(float[] color) {
        assertEquals("into a lost context", Result.DONE, current);
        final byte[] pixel = {(byte) (255 * color[0]), (byte) (255 * color[1]), (byte) (255 * color[2]), -1};
        return new PictureSource.Texture(context.createTexture(HeadlessContext.GL_RGBA8, 1, 1, pixel), 1, 1);
    }

    public Object createSurface(Object window) {
        if (((TestView) window).isRefused) {
            throw new IllegalArgumentException();
        }
        surfaces++;
        return window;
    }

    public void destroySurface(Object surface) {
        surfaces--;
    }

    public Result makeCurrent(Object surface) {
        context.resize(((TestView) surface).width, ((TestView) surface).height);
        return current;
    }

    public Result makeCurrent() {
        return current;
    }

    public void clear() {
        context.clear(0, 0, 0, 0);
    }

    public Result swap(Object surface) {
        final TestView view = (TestView) surface;
        if (view.surfacesToLose > 0) {
            view.surfacesToLose--;
            return Result.SURFACE_LOST;
        }
        if (swapped == Result.DONE) {
            view.pixels = context.readFramebuffer();
            view.swaps++;
        }
        return swapped;
    }

    public void deleteTexture(int texture) {
        context.deleteTexture(texture);
    }

    public void post(Runnable task) {
        posted.add(thread.submit(task));
    }

    public void request(Listener listener) {
        assertNull("a second request", requested);
        requested = listener;
    }

    public long periodNanoseconds() {
        return FRAME;
    }

    /** Whether a frame was asked for. */
    boolean frameAfter(long nanoseconds) throws Exception {
        now += nanoseconds;
        while (!posted.isEmpty()) {
            posted.remove().get();
        }
        final Listener listener = requested;
        requested = null;
        if (listener != null) {
            thread.submit(() -> listener.frame(now)).get();
        }
        return listener != null;
    }
}
