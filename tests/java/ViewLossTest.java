package com.vyn.effect.tidalume.views;

import static org.junit.Assert.*;

import java.io.IOException;
import java.util.*;
import org.junit.Test;
import org.junit.function.ThrowingRunnable;

public final class ViewLossTest extends ViewsFixture {
    private List<String> takeErrors() {
        final List<String> taken = List.copyOf(errors);
        errors.clear();
        return taken;
    }

    private void assertShow(TestView... views) throws Exception {
        frames(3);
        for (TestView view : views) {
            view.check();
        }
    }

    @Test
    public void errorsReachTheListenerButOfAnIdleEffect() throws Exception {
        isMissing = true;
        final TestView view = view(0);
        view.effect.setPicture(() -> {
            throw new IOException("torn");
        });
        view.open(16, 16);
        assertEquals(0, frames(1));
        assertEquals(Set.of("NO_CONTEXT: there is none"), new HashSet<>(takeErrors()));
        isMissing = false;
        view.show(true);
        frames(1);
        assertEquals(List.of("PICTURE: torn"), takeErrors());
        assertEquals("water without a picture", 1, view.swaps);
        view.effect.setPicture(() -> {
            throw new OutOfMemoryError();
        });
        frames(1);
        assertEquals(List.of("PICTURE: java.lang.OutOfMemoryError"), takeErrors());
        view.effect.setText("simulation", "pond");
        assertEquals(1, view.effect.get("simulation"), 0);
        view.effect.setText("simulation", "brook");
        assertEquals(0, view.effect.get("simulation"), 0);
        final List<ThrowingRunnable> wrong = List.of(() -> view.effect.set("rain", -1),
                () -> view.effect.setText("simulation", "lava"), () -> view.effect.usePreset("lava"),
                () -> view.effect.setFrameLimit(14.9f));
        wrong.forEach(call -> assertThrows(IllegalArgumentException.class, call));
        final Effect idle = Effect.idle();
        idle.attach();
        idle.usePreset("lava");
        idle.set("rain", -1);
        assertTrue(Float.isNaN(idle.get("rain")));
    }

    @Test
    public void surfacesAreMadeAnewWhereTheyAreLostOrRefused() throws Exception {
        final TestView view = openView(0);
        view.surfacesToLose = 1;
        assertShow(view);
        assertEquals(List.of("SURFACE: EGL has lost the view's surface"), takeErrors());
        view.open(16, 16);
        view.surfacesToLose = 2;
        frames(9);
        assertEquals(2, takeErrors().size());
        assertNull("tries for ever", view.pixels);
        view.show(true);
        assertShow(view);
        view.isRefused = true;
        view.open(8, 8);
        frames(1);
        assertEquals(List.of("SURFACE: java.lang.IllegalArgumentException"), takeErrors());
        view.isRefused = false;
        view.show(true);
        assertShow(view);
    }

    @Test
    public void anotherContextThanTheViewsIsReplaced() throws Exception {
        final TestView first = openView(0);
        final TestView second = openView(1);
        frames(1);
        post(context::recreate);
        first.open(16, 16);
        second.open(16, 16);
        assertShow(first, second);
        assertEquals(1, takeErrors().size());
        for (int i = 0; i < 2; i++) {
            first.open(16, 16);
            post(context::recreate);
            frames(1);
        }
        second.open(16, 16);
        assertShow(second);
        assertEquals(2, takeErrors().size());
        assertNull("tries for ever", first.pixels);
        first.attach(false);
        first.attach(true);
        assertShow(first);
    }

    @Test
    public void contextsThatAreLostAgainAndAgainOrMissingAreGivenUp() throws Exception {
        isLosing = true;
        final TestView first = openView(0);
        final TestView second = openView(1);
        for (int i = 1; i <= 2; i++) {
            first.open(16, 16);
            frames(9);
            assertEquals("one for each view", 2, takeErrors().size());
            assertEquals(3 * i, contextsAskedFor);
        }
        isLosing = false;
        first.open(16, 16);
        assertShow(first, second);
        second.attach(false);
        frames(1);
        current = Result.CONTEXT_LOST;
        isMissing = true;
        first.show(true);
        frames(1);
        assertEquals(List.of("NO_CONTEXT: there is none"), takeErrors());
        isMissing = false;
        first.show(true);
        frames(1);
        current = Result.CONTEXT_LOST;
        first.attach(false);
        frames(1);
        assertEquals("once where it is missing, never for a view that goes", 9, contextsAskedFor);
    }
}
