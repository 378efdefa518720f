package com.vyn.effect.tidalume.views;

import static org.junit.Assert.*;

import com.vyn.effect.tidalume.looks.*;
import java.util.*;
import java.util.concurrent.*;
import org.junit.After;

/** Views without Android: its windows, frames and losses are the test's, contexts and pixels are real. */
public abstract class ViewsFixture {
    static final long FRAME = Machine.FRAME;

    final Set<Thread> threadsAtFirst = Thread.getAllStackTraces().keySet();
    final Machine machine = new Machine();
    final List<Look> looks = new CopyOnWriteArrayList<>();
    final List<String> errors = new CopyOnWriteArrayList<>();
    private final RenderThread thread = new RenderThread(machine, machine);
    private final LookType water = new LookType(() -> made(new WaterLook()));
    private final LookType blobs = new LookType(() -> made(new BlobsLook()));

    private Look made(Look look) {
        looks.add(look);
        return look;
    }

    Effect effect(int index) {
        return new Effect(thread, machine, index < TestView.COLORS.length ? water : blobs,
                (error, message) -> errors.add(error + ": " + message));
    }

    TestView view(int index) {
        final TestView view = new TestView(machine, index);
        view.begin(effect(index));
        return view;
    }

    List<String> newThreads() {
        final List<String> names = new ArrayList<>();
        for (Thread running : Thread.getAllStackTraces().keySet()) {
            if (!threadsAtFirst.contains(running)) {
                names.add(running.getName());
            }
        }
        return names;
    }

    @After
    public void stop() throws Exception {
        machine.frameAfter(FRAME);
        assertFalse(machine.frameAfter(FRAME));
        assertNull("the context outlives the views", machine.context);
        assertEquals(0, machine.surfaces);
        assertTrue(Set.of("views' GL").containsAll(newThreads()));
        machine.thread.shutdown();
        assertTrue(machine.thread.awaitTermination(10, TimeUnit.SECONDS));
    }
}
