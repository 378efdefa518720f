package com.vyn.effect.tidalume.views;

import static org.junit.Assert.*;

import com.vyn.effect.tidalume.looks.*;
import java.util.*;
import org.junit.Test;
import org.junit.function.ThrowingRunnable;

public final class ViewsTest extends ViewsFixture {
    private final Random random = new Random(20);

    private void step(TestView view) throws Throwable {
        final boolean isFoundEarly = random.nextBoolean();
        final List<ThrowingRunnable> steps = List.of(
                () -> view.open(8 + random.nextInt(40), 8 + random.nextInt(40)),
                () -> touch(view),
                () -> view.pause(!view.isPaused),
                () -> view.show(!view.isVisible),
                () -> view.attach(!view.isAttached),
                () -> machine.post(() -> lose(isFoundEarly)),
                () -> rotate(view),
                view::close);
        steps.get(random.nextInt(steps.size())).run();
    }

    private void lose(boolean isFoundEarly) {
        if (machine.context != null && isFoundEarly) {
            machine.current = Gpu.Result.CONTEXT_LOST;
        } else if (machine.context != null) {
            machine.swapped = Gpu.Result.CONTEXT_LOST;
        }
    }

    private void touch(TestView view) throws Exception {
        final float[] still = view.isSeen() && !view.isPaused && !machine.isLost() ? view.pixels : null;
        view.effect.tap(view.width / 2f, view.height / 2f);
        view.effect.touch(random.nextInt(5), 4, 4, TouchPhase.values()[random.nextInt(4)]);
        machine.frameAfter(FRAME);
        machine.frameAfter(FRAME);
        assertFalse("shows no touch", still != null && Arrays.equals(still, view.pixels));
    }

    private void rotate(TestView view) {
        view.attach(false);
        view.close();
        view.begin(effect(view.index));
        view.open(40, 20);
    }

    @Test
    public void viewsLiveThroughEverything() throws Throwable {
        final TestView[] views = {view(0), view(1), view(2), view(3)};
        for (int step = 0; step < 1000; step++) {
            step(views[random.nextInt(4)]);
            final int[] before = Arrays.stream(views).mapToInt(view -> view.swaps).toArray();
            for (int frame = 0; frame < 3; frame++) {
                machine.frameAfter(FRAME);
            }
            for (TestView view : views) {
                if (view.isSeen()) {
                    assertNotNull("step " + step, view.pixels);
                    view.check();
                }
                final int most = !view.isSeen() ? 0 : view.isPaused ? 1 : 3;
                assertTrue("draws while it is not seen or paused", view.swaps - before[view.index] <= most);
            }
        }
        assertEquals(List.of("views' GL"), newThreads());
        assertEquals(List.of(), errors);
        for (TestView view : views) {
            view.attach(false);
        }
    }

    /** What happens to a view. */
    private interface Event {
        void on(Effect effect);
    }

    private static Event fingers(int action, int index, int flags, PointerEvent.Pointer... pointers) {
        return effect -> effect.onTouch(new PointerEvent(action, index, flags, pointers));
    }

    /** Where there are ripples shortly after the events. */
    private String ripplesAfter(TouchMode mode, Event... events) throws Exception {
        final TestView view = view(0);
        view.effect.setTouchMode(mode);
        view.open(96, 64);
        machine.frameAfter(FRAME);
        final float[] still = view.pixels;
        for (Event event : events) {
            event.on(view.effect);
        }
        machine.frameAfter(FRAME);
        final Set<String> places = new TreeSet<>();
        for (int i = 0; i < still.length; i++) {
            final int third = i / 4 % 96 / 32;
            if (view.pixels[i] != still[i] && third != 1) {
                places.add(third == 0 ? "left" : "right");
            }
        }
        view.attach(false);
        return String.join(" ", places);
    }

    @Test
    public void fingersRippleWhereTheyAreFromDownToUp() throws Exception {
        final PointerEvent.Pointer left = new PointerEvent.Pointer(31, 10, 32);
        final PointerEvent.Pointer right = new PointerEvent.Pointer(5, 86, 32);
        final Event down = fingers(PointerEvent.DOWN, 0, 0, left);
        final Event move = fingers(PointerEvent.MOVE, 0, 0, new PointerEvent.Pointer(31, 86, 32), right);
        final Event secondDown = fingers(PointerEvent.POINTER_DOWN, 1, 0, left, right);
        assertEquals("", ripplesAfter(TouchMode.TAKE, move));
        assertEquals("left", ripplesAfter(TouchMode.TAKE, down));
        assertEquals("left right", ripplesAfter(TouchMode.TAKE, down, move));
        final Event[] ends = {
            fingers(PointerEvent.UP, 0, 0, left),
            fingers(PointerEvent.CANCEL, 0, 0, right, left),
            fingers(PointerEvent.POINTER_UP, 1, PointerEvent.FLAG_CANCELED, right, left),
            effect -> {
                effect.setTouchMode(TouchMode.NONE);
                effect.setTouchMode(TouchMode.TAKE);
            },
            effect -> {
                effect.setEnabled(false);
                secondDown.on(effect);
                effect.setEnabled(true);
            }};
        for (Event end : ends) {
            assertEquals("left", ripplesAfter(TouchMode.TAKE, down, end, move));
        }
        assertEquals("right", ripplesAfter(TouchMode.TAKE, secondDown));
        assertEquals("left right", ripplesAfter(TouchMode.THROUGH, down, secondDown));
        assertEquals("", ripplesAfter(TouchMode.NONE, down, move));
        for (TouchMode mode : TouchMode.values()) {
            final Effect effect = effect(0);
            effect.setTouchMode(mode);
            assertEquals(mode == TouchMode.TAKE, effect.onTouch(new PointerEvent(PointerEvent.DOWN, 0, 0, left)));
        }
    }

    private float fieldScale() throws Exception {
        return machine.thread.submit(() -> looks.get(looks.size() - 1).get("fieldScale")).get();
    }

    @Test
    public void framesComeOnlyWhileSomethingMovesAndFieldsFollowThem() throws Exception {
        final TestView view = view(0);
        final Effect effect = view.effect;
        effect.set("fieldScale", 1);
        view.open(16, 16);
        effect.touch(1, 8, 8, TouchPhase.DOWN);
        int frames = 0;
        while (machine.frameAfter(FRAME)) {
            assertTrue("water never rests", frames++ < 3600);
        }
        view.pause(true);
        view.open(16, 16);
        assertTrue("a new surface is empty, paused or not", machine.frameAfter(FRAME));
        assertFalse("moves in a pause", machine.frameAfter(FRAME));
        final List<Runnable> changes = List.of(
                () -> effect.set("light", 0.5f),
                () -> effect.setPicture(() -> machine.upload(TestView.COLORS[1])),
                () -> machine.post(() -> lose(true)),
                () -> effect.setPicture(() -> machine.upload(TestView.COLORS[0])));
        for (Runnable change : changes) {
            change.run();
            view.show(true); // where a loss is found out
            assertTrue("a pause hides changes", machine.frameAfter(FRAME));
            assertFalse("moves in a pause", machine.frameAfter(FRAME));
        }
        view.check();
        view.pause(false);
        effect.touch(1, 4, 4, TouchPhase.MOVE);
        machine.frameAfter(FRAME);
        assertFalse("the finger was taken away", machine.frameAfter(FRAME));
        effect.setVisible(false);
        effect.setVisible(true);
        assertTrue("shown again, still water is drawn again", machine.frameAfter(FRAME));
        effect.usePreset(WaterLook.RAIN);
        effect.set("fieldScale", 1);
        effect.setFrameLimit(30);
        for (int frame = 0; frame < 120; frame++) {
            assertTrue(machine.frameAfter(FRAME));
        }
        assertEquals("frames that are left out are not late", 1, fieldScale(), 0);
        for (int frame = 0; frame < 40; frame++) {
            machine.frameAfter(4 * FRAME);
        }
        assertEquals(0.5f, fieldScale(), 0);
        effect.setAdaptive(false);
        for (int frame = 0; frame < 40; frame++) {
            machine.frameAfter(4 * FRAME);
        }
        effect.setAdaptive(true);
        machine.frameAfter(FRAME);
        assertEquals("frames count that came while it was off", 1, fieldScale(), 0);
        effect.setAdaptive(false);
        effect.detach();
        effect.attach();
        assertEquals(1, fieldScale(), 0);
        effect.detach();
    }

    @Test
    public void frameLimitsHoldOnEveryDisplay() throws Exception {
        final int[][] framesOfDisplayAndLimit = {
            {60, 15, 15}, {60, 45, 45}, {60, 60, 60}, {60, 100, 60}, {90, 60, 60}, {120, 60, 60}, {120, 100, 100}};
        final TestView view = view(0);
        view.effect.usePreset(WaterLook.RAIN);
        view.open(8, 8);
        for (int[] row : framesOfDisplayAndLimit) {
            view.effect.setFrameLimit(row[1]);
            machine.frameAfter(1_000_000_000L);
            final int before = view.swaps;
            for (int frame = 0; frame < row[0]; frame++) {
                machine.frameAfter(1_000_000_000L / row[0] + (frame % 2 == 0 ? 700_000 : -700_000));
            }
            assertEquals(Arrays.toString(row), row[2], view.swaps - before, 1);
        }
        view.attach(false);
    }

    @Test
    public void idleEffectsTakeEverything() {
        final Effect idle = Effect.idle();
        idle.attach();
        idle.usePreset("rain");
        idle.set("rain", 3);
        assertTrue(Float.isNaN(idle.get("rain")));
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
