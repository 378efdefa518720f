package com.vyn.effect.tidalume.views;

import static org.junit.Assert.*;

import java.io.IOException;
import java.util.*;
import org.junit.Test;

public final class ViewLossTest extends ViewsFixture {
    private void frames(int count) throws Exception {
        for (int frame = 0; frame < count; frame++) {
            machine.frameAfter(FRAME);
        }
    }

    private List<String> takeErrors() {
        final List<String> taken = List.copyOf(errors);
        errors.clear();
        return taken;
    }

    @Test
    public void errorsReachTheListener() throws Exception {
        machine.isMissing = true;
        final TestView view = view(0);
        view.effect.setPicture(() -> {
            throw new IOException("torn");
        });
        view.open(16, 16);
        assertFalse(machine.frameAfter(FRAME));
        assertEquals(Set.of("NO_CONTEXT: there is none"), new HashSet<>(takeErrors()));
        machine.isMissing = false;
        view.show(true);
        assertTrue(machine.frameAfter(FRAME));
        assertEquals(List.of("PICTURE: torn"), takeErrors());
        assertEquals("water without a picture", 1, view.swaps);
        view.effect.setPicture(() -> {
            throw new OutOfMemoryError();
        });
        frames(1);
        assertEquals(List.of("PICTURE: java.lang.OutOfMemoryError"), takeErrors());
        assertThrows(IllegalArgumentException.class, () -> view.effect.set("rain", -1));
        assertThrows(IllegalArgumentException.class, () -> view.effect.setText("simulation", "lava"));
        assertThrows(IllegalArgumentException.class, () -> view.effect.usePreset("lava"));
        assertThrows(IllegalArgumentException.class, () -> view.effect.setFrameLimit(14.9f));
        view.attach(false);
    }

    @Test
    public void surfacesAreMadeAnewWhereTheyAreLostOrRefused() throws Exception {
        final TestView view = view(0);
        view.open(16, 16);
        view.surfacesToLose = 1;
        frames(2);
        assertEquals(List.of("SURFACE: EGL has lost the view's surface"), takeErrors());
        view.check();
        view.open(16, 16);
        view.surfacesToLose = 2;
        frames(9);
        assertEquals(2, takeErrors().size());
        assertNull("tries for ever", view.pixels);
        view.show(true);
        frames(1);
        view.check();
        view.isRefused = true;
        view.open(8, 8);
        frames(1);
        assertEquals(List.of("SURFACE: java.lang.IllegalArgumentException"), takeErrors());
        view.isRefused = false;
        view.show(true);
        frames(1);
        view.check();
        view.attach(false);
    }

    @Test
    public void anotherContextThanTheViewsIsReplaced() throws Exception {
        final TestView[] views = {view(0), view(1)};
        for (TestView view : views) {
            view.open(16, 16);
        }
        frames(1);
        machine.post(machine.context::recreate);
        for (TestView view : views) {
            view.open(16, 16);
        }
        frames(2);
        assertEquals(1, takeErrors().size());
        for (TestView view : views) {
            view.check();
        }
        for (int i = 0; i < 2; i++) {
            views[0].open(16, 16);
            machine.post(machine.context::recreate);
            frames(1);
        }
        views[1].open(16, 16);
        frames(3);
        assertEquals(2, takeErrors().size());
        assertNull("tries for ever", views[0].pixels);
        views[1].check();
        views[0].attach(false);
        views[0].attach(true);
        frames(1);
        views[0].check();
        for (TestView view : views) {
            view.attach(false);
        }
    }

    @Test
    public void contextsAreAskedForOnceAndNotForAViewThatGoes() throws Exception {
        final TestView view = view(0);
        view.open(16, 16);
        frames(1);
        machine.current = Gpu.Result.CONTEXT_LOST;
        machine.isMissing = true;
        view.show(true);
        frames(1);
        assertEquals(List.of("NO_CONTEXT: there is none"), takeErrors());
        machine.isMissing = false;
        view.show(true);
        frames(1);
        machine.current = Gpu.Result.CONTEXT_LOST;
        view.close();
        view.attach(false);
        frames(1);
        assertEquals(3, machine.contextsAskedFor);
    }

    @Test
    public void contextsThatAreLostAgainAndAgainAreGivenUp() throws Exception {
        machine.isLosing = true;
        final TestView[] views = {view(0), view(1)};
        for (TestView view : views) {
            view.open(16, 16);
        }
        for (int i = 1; i <= 2; i++) {
            frames(9);
            assertEquals("one for each view", 2, takeErrors().size());
            assertEquals(3 * i, machine.contextsAskedFor);
            views[0].open(16, 16);
        }
        machine.isLosing = false;
        frames(3);
        for (TestView view : views) {
            view.check();
            view.attach(false);
        }
    }
}
