package com.vyn.effect.tidalume.views;

import static org.junit.Assert.*;

import com.vyn.effect.tidalume.headless.HeadlessContext;
import com.vyn.effect.tidalume.looks.*;
import java.util.*;
import java.util.concurrent.*;
import org.junit.After;

/** Views without Android: its windows, frames and losses are the test's, contexts and pixels are real. */
public abstract class ViewsFixture implements Gpu, Frames {
    static final long FRAME = 16_666_667;

    final List<String> errors = new CopyOnWriteArrayList<>();
    private final int threadsAtFirst = Thread.activeCount();
    private final ExecutorService thread = Executors.newSingleThreadExecutor();
    private final Queue<Future<?>> posted = new ArrayDeque<>();
    private final RenderThread renderThread = new RenderThread(this, this);
    private final LookType water = new LookType(() -> newestLook = new WaterLook());
    private final LookType blobs = new LookType(() -> newestLook = new BlobsLook());
    private final List<TestView> views = new ArrayList<>();
    private Listener requested;
    private long now;
    private int surfaces;
    private long namesAtFirst;

    volatile Look newestLook;
    HeadlessContext context;
    int contextsAskedFor;
    long period = FRAME;
    boolean isMissing;
    boolean isLosing;
    /** The call that finds out that the context is lost is the one that the test chooses. */
    Result current = Result.DONE;
    Result swapped = Result.DONE;

    TestView view(int index) {
        final TestView view = new TestView(this, index);
        views.add(view);
        return view;
    }

    TestView openView(int index) {
        final TestView view = view(index);
        view.open(16, 16);
        return view;
    }

    Effect effect(int index) {
        return new Effect(renderThread, this, index < TestView.COLORS.length ? water : blobs,
                (error, message) -> errors.add(error + ": " + message));
    }

    @After
    public void stop() throws Exception {
        for (TestView view : views) {
            view.attach(false);
        }
        assertTrue("frames without views", frames(2) < 2);
        assertNull("the context outlives the views", context);
        assertEquals(0, surfaces);
        assertEquals(List.of(), errors);
        assertTrue("more than one thread", Thread.activeCount() <= threadsAtFirst + 1);
        thread.shutdown();
        assertTrue(thread.awaitTermination(10, TimeUnit.SECONDS));
    }

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
        return new PictureSource.Texture(context.createTexture(HeadlessContext.GL_RGBA16F, 1, 1, color), 1, 1);
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
        return period;
    }

    /** How many of the next frames are asked for. */
    int frames(int count, long nanoseconds) throws Exception {
        int asked = 0;
        for (int frame = 0; frame < count; frame++) {
            now += nanoseconds;
            while (!posted.isEmpty()) {
                posted.remove().get();
            }
            final Listener listener = requested;
            requested = null;
            if (listener != null) {
                thread.submit(() -> listener.frame(now)).get();
                asked++;
            }
        }
        return asked;
    }

    int frames(int count) throws Exception {
        return frames(count, FRAME);
    }
}
