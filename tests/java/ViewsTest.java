package com.vyn.effect.tidalume.views;

import static org.junit.Assert.*;

import com.vyn.effect.tidalume.looks.*;
import java.util.*;
import java.util.function.Consumer;
import java.util.stream.*;
import org.junit.Test;
import org.junit.function.ThrowingRunnable;

public final class ViewsTest extends ViewsFixture {
    private final Random random = new Random(20);

    private void step(TestView[] views, TestView view) throws Throwable {
        final List<ThrowingRunnable> steps = List.of(
                () -> view.open(16 + random.nextInt(32), 16 + random.nextInt(32)),
                () -> touch(view),
                () -> view.pause(!view.isPaused),
                () -> view.show(!view.isVisible),
                () -> view.attach(!view.isAttached),
                () -> lose(view, view.isSeen() && random.nextBoolean()),
                view::showPicture,
                () -> view.set("fieldScale", 0.5f + random.nextFloat() / 2),
                view::close,
                () -> {
                    view.attach(false);
                    view.close();
                    views[view.index] = openView(view.index);
                });
        steps.get(random.nextInt(steps.size())).run();
    }

    private void lose(TestView view, boolean isFoundEarly) {
        post(() -> {
            if (context != null && isFoundEarly) {
                current = Result.CONTEXT_LOST;
            } else if (context != null) {
                swapped = Result.CONTEXT_LOST;
            }
        });
        if (isFoundEarly) {
            view.show(view.isVisible); // finds it out
        }
    }

    private void touch(TestView view) throws Exception {
        final float[] still = view.isSeen() && !view.isPaused && !isLost() ? view.pixels : null;
        view.effect.tap(view.width / 2f, view.height / 2f);
        view.effect.touch(random.nextInt(5), 4, 4, TouchPhase.values()[random.nextInt(4)]);
        frames(2);
        assertFalse("shows no touch", still != null && Arrays.equals(still, view.pixels));
    }

    @Test
    public void viewsLiveThroughEverything() throws Throwable {
        final TestView[] views = {view(0), view(1), view(2), view(3)};
        for (int step = 0; step < 1000; step++) {
            step(views, views[random.nextInt(4)]);
            final int[] before = Arrays.stream(views).mapToInt(view -> view.swaps).toArray();
            frames(3);
            for (TestView view : views) {
                if (view.isSeen()) {
                    assertNotNull("step " + step, view.pixels);
                    view.check();
                }
                final int most = !view.isSeen() ? 0 : view.isPaused ? 1 : 3;
                assertTrue("draws while it is not seen or paused", view.swaps - before[view.index] <= most);
            }
        }
    }

    private static Consumer<Effect> fingers(int action, int index, int flags, PointerEvent.Pointer... pointers) {
        return effect -> effect.onTouch(new PointerEvent(action, index, flags, pointers));
    }

    /** Checks where there are ripples shortly after the events. */
    @SafeVarargs
    private void assertRipples(String places, TouchMode mode, Consumer<Effect>... events) throws Exception {
        final TestView view = view(0);
        view.effect.setTouchMode(mode);
        view.open(96, 64);
        frames(1);
        final float[] still = view.pixels;
        final PointerEvent hover = new PointerEvent(7, 0, 0, new PointerEvent.Pointer(0, 48, 32));
        assertEquals(mode == TouchMode.TAKE, view.effect.onTouch(hover));
        for (Consumer<Effect> event : events) {
            event.accept(view.effect);
        }
        frames(1);
        final IntStream thirds = IntStream.range(0, still.length).filter(i -> view.pixels[i] != still[i])
                .map(i -> i / 4 % 96 / 32).filter(third -> third != 1).distinct().sorted();
        assertEquals(places, thirds.mapToObj(third -> third == 0 ? "left" : "right").collect(Collectors.joining(" ")));
        view.attach(false);
    }

    @Test
    public void fingersRippleWhereTheyAreFromDownToUp() throws Exception {
        final PointerEvent.Pointer left = new PointerEvent.Pointer(0, 10, 32);
        final PointerEvent.Pointer right = new PointerEvent.Pointer(31, 86, 32);
        final Consumer<Effect> down = fingers(PointerEvent.DOWN, 0, 0, left);
        final Consumer<Effect> move = fingers(PointerEvent.MOVE, 0, 0, new PointerEvent.Pointer(0, 86, 32), right);
        final Consumer<Effect> secondDown = fingers(PointerEvent.POINTER_DOWN, 1, 0, left, right);
        assertRipples("", TouchMode.TAKE, move);
        assertRipples("left right", TouchMode.TAKE, down, effect -> effect.touch(0, 10, 32, TouchPhase.UP), move);
        final List<Consumer<Effect>> ends = List.of(
                fingers(PointerEvent.UP, 0, 0, left),
                fingers(PointerEvent.CANCEL, 0, 0, right, left),
                fingers(PointerEvent.POINTER_UP, 1, PointerEvent.FLAG_CANCELED, right, left),
                effect -> {
                    effect.setTouchMode(TouchMode.NONE);
                    effect.setTouchMode(TouchMode.TAKE);
                },
                effect -> {
                    effect.setEnabled(false);
                    secondDown.accept(effect);
                    effect.setEnabled(true);
                });
        for (Consumer<Effect> end : ends) {
            assertRipples("left", TouchMode.TAKE, down, end, move);
        }
        assertRipples("right", TouchMode.TAKE, secondDown);
        assertRipples("left right", TouchMode.THROUGH, down, secondDown);
        assertRipples("", TouchMode.NONE, down, move);
    }

    private float fieldScale() throws Exception {
        frames(1, 1);
        return newestLook.get("fieldScale");
    }

    @Test
    public void framesComeOnlyWhileSomethingMoves() throws Exception {
        final TestView view = openView(0);
        view.effect.touch(1, 8, 8, TouchPhase.DOWN);
        assertTrue("water never rests", frames(3600) < 3600);
        view.pause(true);
        view.effect.tap(8, 8);
        view.pause(false);
        view.effect.touch(1, 4, 4, TouchPhase.MOVE);
        assertEquals("the finger was taken away, the tap ignored", 1, frames(9));
    }

    @Test
    public void fieldsFollowLateFrames() throws Exception {
        final TestView view = openView(0);
        final Effect effect = view.effect;
        effect.usePreset(WaterLook.RAIN);
        effect.set("fieldScale", 1);
        frames(1);
        view.show(false);
        frames(1, 60 * FRAME);
        view.show(true);
        period = FRAME / 2; // a display that is faster than the phone
        frames(90);
        effect.setFrameLimit(30);
        assertEquals(120, frames(120));
        assertEquals("neither rests nor frames that are left out are late", 1, fieldScale(), 0);
        frames(40, 4 * FRAME);
        assertEquals(0.5f, fieldScale(), 0);
        effect.set("fieldScale", 0.15f);
        assertEquals("the least one", 0.1f, fieldScale(), 0);
        effect.setAdaptive(false);
        frames(40, 4 * FRAME);
        effect.setAdaptive(true);
        assertEquals("frames count that came while it was off", 0.15f, fieldScale(), 0);
        effect.detach();
        effect.attach();
        assertEquals(0.15f, fieldScale(), 0);
    }

    @Test
    public void frameLimitsHoldOnEveryDisplay() throws Exception {
        final int[][] framesOfDisplayAndLimit = {
            {60, 15, 15}, {60, 45, 45}, {60, 60, 60}, {60, 100, 60}, {90, 60, 60}, {120, 60, 60}, {120, 100, 100}};
        final TestView view = openView(0);
        view.effect.usePreset(WaterLook.RAIN);
        for (int[] row : framesOfDisplayAndLimit) {
            view.effect.setFrameLimit(row[1]);
            frames(1, 1_000_000_000L);
            final int before = view.swaps;
            for (int frame = 0; frame < row[0]; frame++) {
                frames(1, 1_000_000_000L / row[0] + (frame % 2 == 0 ? 700_000 : -700_000));
            }
            assertEquals(Arrays.toString(row), row[2], view.swaps - before, 1);
        }
    }

    /** A phone that needs 30 ms for a frame at full scale, by the third power of the scale, and 5 ms after that. */
    @Test
    public void fieldScaleSettlesAndComesBack() {
        final FieldScaleGovernor governor = new FieldScaleGovernor();
        long now = 0;
        int changes = 0;
        while (now < 300e9) {
            final double load = now < 150e9 ? 30e6 : 5e6;
            now += FRAME * (long) Math.ceil(load * Math.pow(governor.share(), 3) / FRAME);
            changes += governor.frame(now, FRAME) ? 1 : 0;
            assertTrue(now < 10e9 || governor.share() >= 0.75f);
        }
        assertEquals(1, governor.share(), 0);
        assertTrue("to and fro " + changes + " times", changes < 16);
    }
}
