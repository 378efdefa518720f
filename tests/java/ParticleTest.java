import static org.junit.Assert.assertTrue;

import com.vyn.effect.tidalume.MetaballRenderer;
import org.junit.Test;

public final class ParticleTest extends JavaTest {
    private static final float OPAQUE = 12.5f;
    private static final float[] WHITE = {1, 1, 1, 1};
    private static final float[] BLACK = {0, 0, 0, 1};

    /** How many pixels are not black. */
    private int paintedPixels(MetaballRenderer particles, float pressRadius) {
        context.clear(0, 0, 0, 1);
        particles.render(pressRadius, OPAQUE);
        int painted = 0;
        final float[] pixels = context.readFramebuffer();
        for (int i = 0; i < pixels.length; i += 4) {
            painted += pixels[i] > 0 ? 1 : 0;
        }
        return painted;
    }

    @Test
    public void aPressIsABlobAndStreamingEmits() {
        try (MetaballRenderer particles = new MetaballRenderer()) {
            for (int loss = 0; loss < 3; loss++) {
                particles.init(1);
                particles.setScreenSize(WIDTH, HEIGHT);
                particles.push(30, 20, MetaballRenderer.ACTION_PRESS);
                context.clear(0, 0, 0, 1);
                particles.render(10, OPAQUE);
                assertPixel(WHITE, 30, 28);
                assertPixel(BLACK, 30, 32);

                particles.push(32, 20, MetaballRenderer.ACTION_STREAM);
                int largest = 0;
                for (int frame = 0; frame < 100; frame++) {
                    largest = Math.max(largest, paintedPixels(particles, 10));
                }
                // A blob of radius 10 covers 314 pixels; some 20 particles of up to radius 90 cover far more.
                assertTrue(largest + " pixels", largest > 700);
                particles.push(32, 20, MetaballRenderer.ACTION_RELEASE);
                for (int frame = 0; frame < 400; frame++) {
                    particles.render(10, OPAQUE);
                }
                assertTrue("particles shrink and leave", paintedPixels(particles, 10) < 330);

                particles.GLContextDestroyed();
                context.recreate();
            }
        }
    }

    @Test
    public void whatComesBeforeInitIsIgnored() {
        try (MetaballRenderer particles = new MetaballRenderer()) {
            particles.push(1, 1, MetaballRenderer.ACTION_PRESS);
            particles.GLContextDestroyed();
            particles.setScreenSize(WIDTH, HEIGHT);
            assertRefused(IllegalArgumentException.class, "quality", () -> particles.init(Float.POSITIVE_INFINITY));
            particles.init(1);
            assertRefused(IllegalStateException.class, "needs setScreenSize", () -> particles.render(1, 1));

            // After a loss of the context the inner renderer is there, and takes its size before init.
            particles.GLContextDestroyed();
            context.recreate();
            particles.setScreenSize(WIDTH, HEIGHT);
            particles.init(1);
            particles.push(30, 20, MetaballRenderer.ACTION_PRESS);
            particles.render(10, OPAQUE);
            assertPixel(WHITE, 30, 20);
        }
    }
}
