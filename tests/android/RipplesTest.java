package com.vyn.effect.tidalume.sample;

import static org.junit.Assert.*;

import com.vyn.effect.tidalume.headless.HeadlessContext;
import java.util.Arrays;
import org.junit.*;

/** The sample application's drawing, driven as its activity drives it. */
public class RipplesTest {
    private static final int WIDTH = 96;
    private static final int HEIGHT = 64;
    private static final long SECOND = 1_000_000_000L;

    private final HeadlessContext context = HeadlessContext.create(WIDTH, HEIGHT);
    private final Ripples ripples = new Ripples();
    private final float[] still = drawNewSurface();

    @After
    public void finish() {
        ripples.close();
        context.close();
    }

    private float[] drawNewSurface() {
        // Red above green; the first row is the top, as of a bitmap.
        ripples.contextCreated(
                context.createTexture(HeadlessContext.GL_RGBA8, 1, 2, new float[] {1, 0, 0, 1, 0, 1, 0, 1}));
        ripples.touchDown(0, 10, 10); // before there is a surface: ignored
        ripples.sizeChanged(WIDTH, HEIGHT);
        return draw(0);
    }

    private float[] draw(long now) {
        ripples.drawFrame(now);
        return context.readFramebuffer();
    }

    /** A drop at 0 and the water a fifth of a second later, on a display of so many frames per second. */
    private float[] dropAt(int frequency) {
        drawNewSurface();
        ripples.touchDown(0, 48, 32);
        for (int frame = 1; frame < frequency / 5; frame++) {
            draw(frame * SECOND / frequency);
        }
        return draw(SECOND / 5);
    }

    @Test
    public void touchesRippleAPictureThatIsUpright() {
        assertArrayEquals("the lower left corner", new float[] {0, 1, 0, 1}, Arrays.copyOf(still, 4), 1.01f / 255);
        ripples.touchDown(0, 48, 32);
        final float[] drop = draw(0);
        assertFalse(Arrays.equals(still, drop));
        ripples.touchMove(0, 60, 40);
        final float[] line = draw(0);
        assertFalse(Arrays.equals(drop, line));
        final float[] afterAnHour = draw(3600 * SECOND);
        assertFalse("the water moves on", Arrays.equals(line, afterAnHour));
        assertArrayEquals("and has no time to make up for", afterAnHour, draw(3600 * SECOND), 0);
        for (int loss = 0; loss < 3; loss++) {
            context.recreate();
            assertArrayEquals(still, drawNewSurface(), 0);
            ripples.touchDown(0, 48, 32);
            assertArrayEquals(drop, draw(0), 0);
        }
    }

    @Test
    public void everyFingerLeavesATrailOfItsOwn() {
        ripples.touchDown(0, 48, 32);
        ripples.touchDown(1, 10, 50);
        ripples.touchMove(0, 60, 40);
        ripples.touchMove(1, 10, 50); // rests
        final float[] trails = draw(0);
        drawNewSurface();
        ripples.touchDown(1, 10, 50);
        ripples.touchDown(0, 48, 32);
        ripples.touchMove(0, 60, 40);
        assertArrayEquals(trails, draw(0), 1.01f / 255);
    }

    @Test
    public void wavesAreAsFastOnEveryDisplay() {
        assertArrayEquals(dropAt(60), dropAt(120), 0);
    }
}
