import static org.junit.Assert.assertArrayEquals;
import static org.junit.Assert.assertEquals;
import static org.junit.Assert.assertNotEquals;
import static org.junit.Assert.assertTrue;

import com.vyn.effect.tidalume.IntensityMapBuilder;
import com.vyn.effect.tidalume.NormalMapBuilder;
import com.vyn.effect.tidalume.ShallowWater;
import com.vyn.effect.tidalume.ShallowWaterIterative;
import com.vyn.effect.tidalume.ShallowWaterRenderer;
import com.vyn.effect.tidalume.headless.HeadlessContext;
import org.junit.Test;

public final class WaterTest extends JavaTest {
    private static final float STEP = 1 / 2048f;
    private static final float[] A = {20.5f, 10.5f};
    private static final float[] B = {60.5f, 10.5f};

    /** Red of a screen-sized texture at a pixel counted from the top-left corner. */
    private float height(int texture, int x, int y) {
        return texel(context.readTexture(texture, WIDTH, HEIGHT), x, HEIGHT - 1 - y)[0];
    }

    @Test
    public void paintsHeights() {
        final IntensityMapBuilder heights = new IntensityMapBuilder();
        heights.init();
        assertEquals(0, heights.getTexture());
        heights.setScreenSize(WIDTH, HEIGHT);
        heights.addDropLine(A, B, 8, 0.5f, 1);
        heights.addHorizontalWave(40, 6, 0.25f, 9, 1, 0);
        assertEquals(0.5f, height(heights.getTexture(), 40, 10), STEP);
        assertEquals("half the radius", 0.25f, height(heights.getTexture(), 40, 14), STEP);
        assertEquals("a quarter of a period is downwards", 0.25f, height(heights.getTexture(), 24, 48), 0.02f);
        assertEquals("three quarters are upwards", 0.25f, height(heights.getTexture(), 72, 30), 0.02f);
        assertEquals(0, height(heights.getTexture(), 24, 30), 0);

        heights.GLContextDestroyed();
        assertEquals(0, heights.getTexture());
        heights.close();
    }

    @Test
    public void simulatesRipplesAndAgainAfterALossOfTheContext() {
        final ShallowWaterIterative water = new ShallowWaterIterative();
        water.init();
        water.setScreenSize(WIDTH, HEIGHT);
        for (int loss = 0; loss < 3; loss++) {
            final int first = water.getTexture();
            water.addDrop(A, 8, 0.5f, 1);
            assertNotEquals(first, water.getTexture());
            assertEquals(0.5f, height(water.getTexture(), 20, 10), STEP);
            assertEquals(0, height(water.getTexture(), 60, 10), 0);
            water.addDropLine(A, B, 8, 0.25f, 0.5f);
            assertEquals(0.5f, height(water.getTexture(), 20, 10), STEP);
            assertEquals(0.25f, height(water.getTexture(), 60, 10), STEP);
            water.addHorizontalWave(40.5f, 6, 0.25f, 0, 1, 0);
            assertEquals(0, height(water.getTexture(), 20, 10), 0);
            assertEquals(0.25f, height(water.getTexture(), 3, 40), STEP);
            final int before = water.getTexture();
            water.setIterationCount(3);
            water.setIterationCount(0);
            water.update();
            assertNotEquals("an odd number of passes", before, water.getTexture());
            assertTrue("the ridge sinks", height(water.getTexture(), 3, 40) < 0.25f);

            water.GLContextDestroyed();
            assertEquals(0, water.getTexture());
            context.recreate();
            water.init();
            water.setScreenSize(WIDTH, HEIGHT);
        }
        water.close();
    }

    @Test
    public void simulatesAPond() {
        final ShallowWater pond = new ShallowWater();
        final float[] end = {0, 0.5f};
        pond.init();
        pond.setScreenSize(WIDTH, HEIGHT);
        pond.addDrop(A, 16, 0.5f);
        assertEquals("the strength squared, from the bottom", 0.25f, height(pond.getTexture(), 20, HEIGHT - 11), STEP);
        assertEquals("half the radius", 0, height(pond.getTexture(), 20 + 8, HEIGHT - 11), STEP);
        pond.addDropLine(end, end, 0.5f, 0.5f);
        assertEquals(0.4f, height(pond.getTexture(), 48, 15), 0.01f);
        final int before = pond.getTexture();
        pond.update();
        assertNotEquals(before, pond.getTexture());
        assertTrue("the state before was flat: the bump still rises", height(pond.getTexture(), 48, 15) > 0.6f);

        pond.GLContextDestroyed();
        assertEquals(0, pond.getTexture());
        pond.close();
    }

    @Test
    public void buildsNormalsAndRefractsAPicture() {
        final NormalMapBuilder normals = new NormalMapBuilder();
        final ShallowWaterRenderer renderer = new ShallowWaterRenderer();
        normals.init();
        renderer.init();
        assertEquals(0, normals.getTexture());
        normals.setScreenSize(WIDTH, HEIGHT);
        renderer.setScreenSize(WIDTH, HEIGHT);

        // A slope of 1/64 per texel to the right, times 64, under a picture of four quarters.
        final float[] slope = new float[WIDTH * HEIGHT];
        for (int i = 0; i < slope.length; i++) {
            slope[i] = i % WIDTH / 64f;
        }
        final int heights = context.createTexture(HeadlessContext.GL_R16F, WIDTH, HEIGHT, slope);
        final int picture = context.createTexture(HeadlessContext.GL_RGBA8, 2, 2,
                new float[] {1, 0, 0, 1, 0, 1, 0, 1, 0, 0, 1, 1, 1, 1, 1, 1});
        normals.setHeightMax(64);
        normals.build(heights);
        final float[] normal = texel(context.readTexture(normals.getTexture(), WIDTH, HEIGHT), 40, 30);
        assertArrayEquals(new float[] {0.146447f, 0.5f, 0.853553f, 1}, normal, STEP);

        renderer.setTexture(picture);
        renderer.setHeightMax(0);
        renderer.render(heights, normals.getTexture());
        final float[] red = {1, 0, 0, 1};
        final float[] blue = {0, 0, 1, 1};
        assertPixel(red, 5, HEIGHT - 5);
        assertPixel(blue, 5, 5);
        renderer.setBGFlip(true);
        renderer.render(heights, normals.getTexture());
        assertPixel(blue, 5, HEIGHT - 5);

        // The slope along x moves the picture along y.
        renderer.setBGFlip(false);
        final float[] between = pixel(90, HEIGHT / 2);
        renderer.setHeightMax(40);
        renderer.render(heights, normals.getTexture());
        assertNotEquals(between[0], pixel(90, HEIGHT / 2)[0], 0.1f);

        // The normal map's own framebuffer, the first of the context, instead of framebuffer 0.
        context.clear(0, 0, 0, 1);
        renderer.setDrawFrameBuffer(1);
        renderer.setHeightMax(0);
        renderer.render(heights, 0);
        assertPixel(new float[] {0, 0, 0, 1}, 5, 5);
        assertArrayEquals(red, texel(context.readTexture(normals.getTexture(), WIDTH, HEIGHT), 5, 5), STEP);

        normals.GLContextDestroyed();
        renderer.GLContextDestroyed();
        context.recreate();
        renderer.init();
        renderer.setDrawFrameBuffer(0);
        renderer.setTexture(0);
        renderer.render(0, 0);
        normals.close();
        renderer.close();
    }
}
