import static org.junit.Assert.assertArrayEquals;
import static org.junit.Assert.assertEquals;
import static org.junit.Assert.assertTrue;

import com.vyn.effect.tidalume.CometRenderer;
import org.junit.Test;

public final class CometTest extends JavaTest {
    private static float[] heads(CometRenderer comets) {
        return new float[] {comets.getCore1X(), comets.getCore1Y(), comets.getCore2X(), comets.getCore2Y()};
    }

    private int litPixels() {
        final float[] pixels = context.readFramebuffer();
        int lit = 0;
        for (int i = 0; i < pixels.length; i += 4) {
            lit += pixels[i] > 0.02f ? 1 : 0;
        }
        return lit;
    }

    @Test
    public void fliesThroughATouchAndOnAfterALossOfTheContext() {
        final float[] middle = {WIDTH * 0.5f, HEIGHT * 0.5f, WIDTH * 0.5f, HEIGHT * 0.5f};
        try (CometRenderer comets = new CometRenderer()) {
            comets.init();
            comets.setScreenSize(WIDTH, HEIGHT);
            comets.render(0.5);
            assertEquals("before the first touch", 0, litPixels());
            assertArrayEquals(middle, heads(comets), 0);

            // The first comet reaches the touched point between 1/1.5 and 1/1.4, the second between 1/1.8 and 1/1.7.
            comets.push(60, 20, CometRenderer.ACTION_LAUNCH);
            final float[] closest = {1000, 1000};
            for (int step = 0; step <= 500; step++) {
                comets.render(0.55 + step * 0.0004);
                final float[] heads = heads(comets);
                for (int comet = 0; comet < 2; comet++) {
                    closest[comet] = Math.min(closest[comet],
                            (float) Math.hypot(heads[2 * comet] - 60, heads[2 * comet + 1] - 20));
                }
            }
            assertArrayEquals(new float[] {0, 0}, closest, 0.1f);
            assertTrue(litPixels() > 20);

            final float[] heads = heads(comets);
            comets.GLContextDestroyed();
            context.recreate();
            context.clear(0, 0, 0, 1);
            comets.init();
            comets.push(10, 50, CometRenderer.ACTION_CONTINUE);
            comets.render(0.75);
            assertArrayEquals("the same paths", heads, heads(comets), 1e-4f);
            assertTrue(litPixels() > 20);

            context.clear(0, 0, 0, 1);
            comets.push(10, 50, CometRenderer.ACTION_HIDE);
            comets.render(0.75);
            assertEquals("hidden", 0, litPixels());
        }
    }
}
