package com.vyn.effect.tidalume.sample;

import com.vyn.effect.tidalume.NormalMapBuilder;
import com.vyn.effect.tidalume.ShallowWaterIterative;
import com.vyn.effect.tidalume.ShallowWaterRenderer;
import java.util.Arrays;
import java.util.HashMap;
import java.util.Map;

/**
 * A picture under water that ripples where it is touched. Knows nothing of Android, so that it runs wherever there is
 * an OpenGL ES 3.0 context. All calls belong on the GL thread.
 */
final class Ripples implements AutoCloseable {
    /** The simulation runs at this rate, whatever the display's. */
    private static final long NANOSECONDS_PER_STEP = 1_000_000_000L / 60;
    /** After a pause, time is skipped rather than made up for. */
    private static final int MAX_STEPS_PER_FRAME = 4;

    private static final float RADIUS = 30;
    private static final float STRENGTH = 0.2f;

    private final ShallowWaterIterative water = new ShallowWaterIterative();
    private final NormalMapBuilder normals = new NormalMapBuilder();
    private final ShallowWaterRenderer renderer = new ShallowWaterRenderer();
    /** Where each finger was last, by its number. */
    private final Map<Integer, float[]> fingers = new HashMap<>();
    private boolean sized;
    private boolean clockRuns;
    private long stepsDoneUntil;

    /**
     * There is a new context, the first or one after a loss.
     *
     * @param picture GL texture name of a bitmap that was uploaded from the top
     */
    void contextCreated(int picture) {
        // Every object forgets before the first one starts again: objects of a class share their programs.
        water.GLContextDestroyed();
        normals.GLContextDestroyed();
        renderer.GLContextDestroyed();
        water.init();
        normals.init();
        renderer.init();
        renderer.setTexture(picture);
        renderer.setBGFlip(true);
        sized = false;
        clockRuns = false;
    }

    /** The surface has this size now. Follows each {@link #contextCreated}. */
    void sizeChanged(int width, int height) {
        water.setScreenSize(width, height);
        normals.setScreenSize(width, height);
        renderer.setScreenSize(width, height);
        sized = true;
    }

    /** A finger goes down at a point, in pixels from the top left. Ignored while there is no surface. */
    void touchDown(int finger, float x, float y) {
        final float[] point = {x, y};
        fingers.put(finger, point);
        if (sized) {
            water.addDrop(point, RADIUS, STRENGTH, 1);
        }
    }

    /** A finger has moved to a point, or rests where it was. Ignored while there is no surface. */
    void touchMove(int finger, float x, float y) {
        final float[] to = {x, y};
        final float[] from = fingers.put(finger, to);
        if (sized && from != null && !Arrays.equals(from, to)) {
            water.addDropLine(from, to, RADIUS, STRENGTH, 1);
        }
    }

    /**
     * Draws the whole of framebuffer 0.
     *
     * @param now nanoseconds of a clock that does not jump
     */
    void drawFrame(long now) {
        runSimulation(now);
        normals.build(water.getTexture());
        renderer.render(water.getTexture(), normals.getTexture());
    }

    private void runSimulation(long now) {
        if (!clockRuns) {
            clockRuns = true;
            stepsDoneUntil = now;
        }
        for (int step = 0; step < MAX_STEPS_PER_FRAME && now - stepsDoneUntil >= NANOSECONDS_PER_STEP; step++) {
            water.update();
            stepsDoneUntil += NANOSECONDS_PER_STEP;
        }
        if (now - stepsDoneUntil >= NANOSECONDS_PER_STEP) {
            stepsDoneUntil = now;
        }
    }

    /** Needs the context, unless it is lost anyway. */
    @Override
    public void close() {
        renderer.close();
        normals.close();
        water.close();
    }
}
