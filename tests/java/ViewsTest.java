package com.vyn.effect.tidalume.views;

import static org.junit.Assert.*;

import com.vyn.effect.tidalume.headless.HeadlessContext;
import com.vyn.effect.tidalume.looks.*;
import java.io.IOException;
import java.util.*;
import java.util.concurrent.*;
import org.junit.*;
import org.junit.function.ThrowingRunnable;

/** Views without Android: its windows, frames and losses are the test's, contexts and pixels are real. */
public final class ViewsTest {
    private static final long FRAME = 16_666_667;
    private static final float[][] COLORS = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};

    /** Surfaces are the views; that the context is lost is found out by the call that the test chooses. */
    private static final class Machine implements Gpu, Frames {
        final ExecutorService thread = Executors.newSingleThreadExecutor(task -> new Thread(task, "views' GL"));
        final Queue<Future<?>> posted = new ArrayDeque<>();
        HeadlessContext context;
        boolean isMissing;
        Result current = Result.DONE;
        Result swapped = Result.DONE;
        int surfaces;
        Listener requested;
        long now;

        public void createContext() {
            if (isMissing) {
                throw new IllegalStateException("there is none");
            }
            assertNull(context);
            context = HeadlessContext.create(1, 1);
        }

        public void destroyContext() {
            for (int name = isLost() ? 0 : upload(COLORS[0]).name - 1; name > 0; name--) {
                final int left = name;
                assertThrows("a texture is left", IllegalStateException.class, () -> context.readTexture(left, 1, 1));
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
            surfaces++;
            return window;
        }

        public void destroySurface(Object surface) {
            surfaces--;
        }

        public Result makeCurrent(Object surface) {
            context.resize(((View) surface).width, ((View) surface).height);
            return current;
        }

        public Result makeCurrent() {
            return current;
        }

        public void clear() {
            context.clear(0, 0, 0, 0);
        }

        public Result swap(Object surface) {
            if (swapped == Result.DONE) {
                ((View) surface).pixels = context.readFramebuffer();
                ((View) surface).swaps++;
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

    private final Machine machine = new Machine();
    private final RenderThread thread = new RenderThread(machine, machine);
    private final List<Look> looks = new CopyOnWriteArrayList<>();
    private final LookType water = new LookType(() -> made(new WaterLook()));
    private final LookType blobs = new LookType(() -> made(new BlobsLook()));
    private final List<String> errors = new CopyOnWriteArrayList<>();

    private Look made(Look look) {
        looks.add(look);
        return look;
    }

    private Effect effect(LookType type) {
        return new Effect(thread, machine, type, (error, message) -> errors.add(error + ": " + message));
    }

    @After
    public void stop() throws Exception {
        machine.frameAfter(FRAME);
        assertFalse(machine.frameAfter(FRAME));
        assertNull("the context outlives the views", machine.context);
        assertEquals(0, machine.surfaces);
        machine.thread.shutdown();
        assertTrue(machine.thread.awaitTermination(10, TimeUnit.SECONDS));
    }

    /** A view as the platform has it, with what it is shown. */
    private final class View {
        final int index;
        Effect effect;
        boolean isAttached;
        boolean isVisible;
        boolean isPaused;
        int width;
        int height;
        float[] pixels;
        int swaps;

        View(int index) {
            this.index = index;
            create();
        }

        void create() {
            effect = effect(index < COLORS.length ? water : blobs);
            effect.setPicture(() -> machine.upload(COLORS[index]));
            isVisible = true;
            isPaused = false;
            attach(true);
        }

        void attach(boolean isNowAttached) {
            isAttached = isNowAttached;
            if (isAttached) {
                effect.attach();
            } else {
                effect.detach();
            }
        }

        void open(int newWidth, int newHeight) {
            width = newWidth;
            height = newHeight;
            pixels = null;
            effect.windowChanged(this, width, height);
        }

        void close() {
            effect.windowGone(() -> { });
            width = 0;
        }

        void rotate() {
            attach(false);
            close();
            create();
            open(40, 20);
        }

        boolean isShown() {
            return isAttached && width > 0 && isVisible && !isPaused;
        }

        /** Water shows its own picture, blobs are in front of nothing. */
        void check() {
            final float[] mean = new float[4];
            for (int i = 0; i < pixels.length; i++) {
                assertTrue("premultiplied", pixels[i] <= pixels[i | 3] + 0.01f);
                mean[i % 4] += 4 * pixels[i] / pixels.length;
            }
            if (index < COLORS.length) {
                assertArrayEquals(COLORS[index], Arrays.copyOf(mean, 3), 0.35f);
            } else {
                assertEquals(0.5f, mean[3], 0.45f);
            }
        }

        void step(Random random) throws Throwable {
            final boolean isFoundEarly = random.nextBoolean();
            final List<ThrowingRunnable> steps = List.of(
                    () -> open(8 + random.nextInt(40), 8 + random.nextInt(40)),
                    () -> touch(random),
                    () -> effect.setPaused(isPaused = !isPaused),
                    () -> effect.setVisible(isVisible = !isVisible),
                    () -> attach(!isAttached),
                    () -> machine.post(() -> lose(isFoundEarly)),
                    this::rotate,
                    this::close);
            steps.get(random.nextInt(steps.size())).run();
        }

        void lose(boolean isFoundEarly) {
            if (machine.context != null && isFoundEarly) {
                machine.current = Gpu.Result.CONTEXT_LOST;
            } else if (machine.context != null) {
                machine.swapped = Gpu.Result.CONTEXT_LOST;
            }
        }

        void touch(Random random) throws Exception {
            final float[] still = isShown() && !machine.isLost() ? pixels : null;
            effect.tap(width / 2f, height / 2f);
            effect.touch(random.nextInt(5), 4, 4, TouchPhase.values()[random.nextInt(4)]);
            machine.frameAfter(FRAME);
            machine.frameAfter(FRAME);
            assertFalse("shows no touch", still != null && Arrays.equals(still, pixels));
        }
    }

    @Test
    public void viewsLiveThroughEverything() throws Throwable {
        final Random random = new Random(20);
        final View[] views = new View[4];
        for (int i = 0; i < views.length; i++) {
            views[i] = new View(i);
        }
        for (int step = 0; step < 1000; step++) {
            views[random.nextInt(4)].step(random);
            final int[] before = Arrays.stream(views).mapToInt(view -> view.swaps).toArray();
            for (int frame = 0; frame < 3; frame++) {
                machine.frameAfter(FRAME);
            }
            for (View view : views) {
                if (view.isShown()) {
                    assertNotNull("step " + step, view.pixels);
                    view.check();
                } else {
                    assertEquals("draws while it is not seen", before[view.index], view.swaps);
                }
            }
        }
        final long threads = Thread.getAllStackTraces().keySet().stream()
                .filter(running -> running.getName().equals("views' GL")).count();
        assertEquals(1, threads);
        assertEquals(List.of(), errors);
        for (View view : views) {
            view.attach(false);
        }
    }

    /** Where there are ripples shortly after the events. */
    private String ripplesAfter(TouchMode mode, PointerEvent... events) throws Exception {
        final View view = new View(0);
        view.effect.setTouchMode(mode);
        view.open(96, 64);
        machine.frameAfter(FRAME);
        final float[] still = view.pixels;
        for (PointerEvent event : events) {
            assertEquals(mode == TouchMode.TAKE, view.effect.onTouch(event));
        }
        machine.frameAfter(FRAME);
        view.attach(false);
        final Set<String> places = new TreeSet<>();
        for (int i = 0; i < still.length; i++) {
            final int third = i / 4 % 96 / 32;
            if (view.pixels[i] != still[i] && third != 1) {
                places.add(third == 0 ? "left" : "right");
            }
        }
        return String.join(" ", places);
    }

    @Test
    public void fingersRippleWhereTheyAreFromDownToUp() throws Exception {
        final PointerEvent.Pointer left = new PointerEvent.Pointer(31, 10, 32);
        final PointerEvent.Pointer right = new PointerEvent.Pointer(5, 86, 32);
        final PointerEvent down = new PointerEvent(PointerEvent.DOWN, 0, 0, left);
        final PointerEvent move = new PointerEvent(PointerEvent.MOVE, 0, 0,
                new PointerEvent.Pointer(31, 86, 32), right);
        final PointerEvent up = new PointerEvent(PointerEvent.UP, 0, 0, left);
        final PointerEvent cancel = new PointerEvent(PointerEvent.CANCEL, 0, 0, right, left);
        final PointerEvent canceled = new PointerEvent(
                PointerEvent.POINTER_UP, 1, PointerEvent.FLAG_CANCELED, right, left);
        final PointerEvent secondDown = new PointerEvent(PointerEvent.POINTER_DOWN, 1, 0, left, right);
        assertEquals("", ripplesAfter(TouchMode.TAKE, move));
        assertEquals("left", ripplesAfter(TouchMode.TAKE, down));
        assertEquals("left right", ripplesAfter(TouchMode.TAKE, down, move));
        for (PointerEvent end : List.of(up, cancel, canceled)) {
            assertEquals("left", ripplesAfter(TouchMode.TAKE, down, end, move));
        }
        assertEquals("right", ripplesAfter(TouchMode.TAKE, secondDown));
        assertEquals("left right", ripplesAfter(TouchMode.THROUGH, down, secondDown));
        assertEquals("", ripplesAfter(TouchMode.NONE, down, move));
    }

    @Test
    public void errorsReachTheListener() throws Exception {
        machine.isMissing = true;
        final View view = new View(0);
        view.effect.setPicture(() -> {
            throw new IOException("torn");
        });
        view.open(16, 16);
        assertFalse(machine.frameAfter(FRAME));
        assertEquals(Set.of("NO_CONTEXT: there is none"), new HashSet<>(errors));
        errors.clear();
        machine.isMissing = false;
        view.effect.setVisible(true);
        assertTrue(machine.frameAfter(FRAME));
        assertEquals(List.of("PICTURE: torn"), errors);
        assertEquals("water without a picture", 1, view.swaps);
        assertThrows(IllegalArgumentException.class, () -> view.effect.set("rain", -1));
        assertThrows(IllegalArgumentException.class, () -> view.effect.setText("simulation", "lava"));
        assertThrows(IllegalArgumentException.class, () -> view.effect.usePreset("lava"));
        assertThrows(IllegalArgumentException.class, () -> view.effect.setFrameLimit(0.5f));
        view.attach(false);
    }

    private float fieldScale() throws Exception {
        return machine.thread.submit(() -> looks.get(looks.size() - 1).get("fieldScale")).get();
    }

    @Test
    public void framesComeOnlyWhileSomethingMovesAndFieldsFollowThem() throws Exception {
        final View view = new View(0);
        final Effect effect = view.effect;
        effect.set("fieldScale", 1);
        view.open(16, 16);
        effect.touch(1, 8, 8, TouchPhase.DOWN);
        int frames = 0;
        while (machine.frameAfter(FRAME)) {
            assertTrue("water never rests", frames++ < 3600);
        }
        effect.setPaused(true);
        effect.setPaused(false);
        effect.touch(1, 4, 4, TouchPhase.MOVE);
        machine.frameAfter(FRAME);
        assertFalse("the finger was taken away", machine.frameAfter(FRAME));
        view.open(16, 16);
        assertTrue("a new surface is empty", machine.frameAfter(FRAME));
        effect.usePreset(WaterLook.RAIN);
        effect.set("fieldScale", 1);
        effect.setFrameLimit(30);
        final int before = view.swaps;
        for (int frame = 0; frame < 60; frame++) {
            assertTrue(machine.frameAfter(FRAME));
        }
        assertEquals(30, view.swaps - before, 1);
        assertEquals(1, fieldScale(), 0);
        for (int frame = 0; frame < 40; frame++) {
            machine.frameAfter(4 * FRAME);
        }
        assertEquals(0.5f, fieldScale(), 0);
        effect.setAdaptive(false);
        effect.detach();
        effect.attach();
        assertEquals(1, fieldScale(), 0);
        effect.detach();
    }

    /** A phone that needs 30 ms for a frame at full scale, by the third power of the scale, and 5 ms after that. */
    @Test
    public void fieldScaleSettlesAndComesBack() {
        final FieldScaleGovernor governor = new FieldScaleGovernor();
        long now = 0;
        int changes = 0;
        for (double load = 30e6; now < 300e9; load = now < 150e9 ? 30e6 : 5e6) {
            now += FRAME * (long) Math.ceil(load * Math.pow(governor.share(), 3) / FRAME);
            if (governor.frame(now, FRAME)) {
                changes++;
            }
            assertTrue(now < 10e9 || governor.share() >= 0.75f);
        }
        assertEquals(1, governor.share(), 0);
        assertTrue("to and fro " + changes + " times", changes < 16);
    }
}
