package com.vyn.effect.tidalume;

import static com.vyn.effect.tidalume.VectorGraphicRenderer.*;
import static org.junit.Assert.*;

import com.vyn.effect.tidalume.headless.HeadlessContext;
import java.util.*;
import java.util.function.Consumer;
import java.util.stream.*;
import org.junit.*;

/** From Java calls to pixels: arguments arrive in their order, values come back, losses of the context are survived. */
public final class PictureTest {
    private static final int WIDTH = 97;
    private static final int HEIGHT = 61;
    private static final float HALF_FLOAT_STEP = 1 / 2048f;
    private static final float[] RED = {1, 0, 0, 1};
    private static final float[] GREEN = {0, 1, 0, 1};
    private static final float[] BLUE = {0, 0, 1, 1};
    private static final float[] WHITE = {1, 1, 1, 1};
    private static final float[] BLACK = {0, 0, 0, 1};
    private static final float[] A = {20.5f, 10.5f};
    private static final float[] B = {60.5f, 10.5f};

    private final HeadlessContext context = HeadlessContext.create(WIDTH, HEIGHT);

    @After
    public void closeContext() {
        context.close();
    }

    /** Initialises with quality 1, if any, and draws, and all that again after a loss of the context. */
    private <E extends AutoCloseable> void drawInTwoContexts(E effect, Consumer<E> draw) throws Exception {
        for (int loss = 0; loss < 2; loss++) {
            context.clear(0, 0, 0, 1);
            CallTest.call(effect, "init", 1);
            CallTest.call(effect, "setScreenSize", WIDTH, HEIGHT);
            draw.accept(effect);
            CallTest.call(effect, "GLContextDestroyed");
            context.recreate();
        }
        effect.close();
    }

    /** Red, green, blue, alpha of a picture of the screen's size at a pixel counted from the top-left corner. */
    private static float[] pixel(float[] picture, int x, int y) {
        final int first = ((HEIGHT - 1 - y) * WIDTH + x) * 4;
        return Arrays.copyOfRange(picture, first, first + 4);
    }

    private void assertPixel(float[] expected, int x, int y) {
        assertArrayEquals(expected, pixel(context.readFramebuffer(), x, y), 1.01f / 255);
    }

    /** The colors every 8 by 10 pixels from the top left: black, red, green, yellow, blue, magenta, cyan or white. */
    private String colors() {
        final float[] picture = context.readFramebuffer();
        return IntStream.range(0, 6 * 12).mapToObj(i -> pixel(picture, i % 12 * 8 + 4, i / 12 * 10 + 5))
                .map(rgb -> Math.round(rgb[0]) + 2 * Math.round(rgb[1]) + 4 * Math.round(rgb[2]))
                .map(color -> "KRGYBMCW".substring(color, color + 1)).collect(Collectors.joining());
    }

    private float height(int texture, int x, int y) {
        return pixel(context.readTexture(texture, WIDTH, HEIGHT), x, y)[0];
    }

    /** Red and green below blue and white, blended along the middle. */
    private int createQuarters() {
        return context.createTexture(HeadlessContext.GL_RGBA8, 2, 2,
                new byte[] {-1, 0, 0, -1, 0, -1, 0, -1, 0, 0, -1, -1, -1, -1, -1, -1});
    }

    @Test
    public void metaballsAndComets() throws Exception {
        drawInTwoContexts(new Metaball2DRenderer(), metaballs -> {
            metaballs.addMetaballs(new float[] {30, 20, 12, 0, 0, 0, 70, 40, 8, 0}, 2);
            assertThrows(IllegalArgumentException.class, () -> metaballs.addMetaballs(new float[9], 2));
            metaballs.render(new float[] {1, 0.5f, 0.25f, 1});
            assertPixel(new float[] {1, 0.5f, 0.25f, 1}, 70, 46);
            assertPixel(BLACK, 30, 34);
            assertNotEquals(0, metaballs.getTexture());
        });
        drawInTwoContexts(new MetaballRenderer(), particles -> {
            particles.push(30, 20, MetaballRenderer.ACTION_PRESS);
            particles.render(10, 12.5f);
            assertPixel(WHITE, 30, 28);
            assertPixel(BLACK, 30, 32);
            particles.push(32, 20, MetaballRenderer.ACTION_STREAM);
            IntStream.range(0, 100).forEach(frame -> particles.render(10, 12.5f));
            assertFalse("particles leave the touch", colors().replace("K", "").length() < 9);
        });
        drawInTwoContexts(new CometRenderer(), comets -> {
            comets.push(60, 20, CometRenderer.ACTION_LAUNCH);
            comets.render(0.572); // between 1/1.8 and 1/1.7: the second one is at the touch
            comets.push(10, 50, CometRenderer.ACTION_CONTINUE);
            assertEquals(60, comets.getCore2X(), 3);
            assertEquals(20, comets.getCore2Y(), 3);
            comets.render(0.69); // between 1/1.5 and 1/1.4: the first one
            assertEquals(60, comets.getCore1X(), 3);
            assertEquals(20, comets.getCore1Y(), 3);
        });
    }

    @Test
    public void vectorGraphics() throws Exception {
        drawInTwoContexts(new VectorGraphicRenderer(), graphics -> {
            final int quarters = createQuarters();
            // The right half of the screen.
            final float[] half = {0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 1, 1};
            final int mask = context.createTexture(HeadlessContext.GL_R16F, 12, 1, half);
            graphics.renderRadialGradient(76.5f, 45.5f, 9, RED, 10, BLUE);
            graphics.renderBitmapRectangle(8, 10, 16, 20, quarters);
            graphics.renderAlphaMaskedBitmapRectangle(32, 10, 32, 20, quarters, mask);
            graphics.renderRotatedBitmapRectangle(80, 10, 16, 20, quarters, ROTATION_CLOCKWISE);
            graphics.renderRotatedAlphaMaskedBitmapRectangle(32, 40, 32, 20, quarters, ROTATION_FLIP_HORIZONTAL, mask);
            graphics.renderCircle(20, 45, 9, GREEN);
            graphics.renderBitmapCircle(20, 49, 6, new float[] {0, 0, 0, 0.5f}, quarters);
            assertPixel(new float[] {0.5f, 0.5f, 0, 0.75f}, 20, 47);
            assertEquals("BBBBBBBBBBBB" + "BBWBBBWWBBRB" + "BRGBBBGGBBGW"
                    + "BBBBBBBBBBBB" + "BGGGBBBBRRRB" + "BBBBBBRRBBBB", colors());
        });
        drawInTwoContexts(new VectorGraphicRenderer(), graphics -> {
            context.clear(0.8f, 0.7f, 0.6f, 1);
            graphics.setBlendEquation(EQUATION_REVERSE_SUBTRACT);
            graphics.setBlendFunction(FACTOR_CONSTANT_COLOR, FACTOR_ONE, FACTOR_ZERO, FACTOR_CONSTANT_ALPHA);
            graphics.setBlendColor(0.2f, 0.4f, 0.6f, 0.9f);
            graphics.renderCircle(70, 20, 10, WHITE);
            assertPixel(new float[] {0.6f, 0.3f, 0, 0.9f}, 70, 20);
        });
    }

    @Test
    public void heightsOfWater() throws Exception {
        drawInTwoContexts(new IntensityMapBuilder(), heights -> {
            heights.addDropLine(A, B, 8, 0.5f, 1);
            heights.addHorizontalWave(40, 6, 0.25f, 9, 1, 0.5f);
            assertEquals(0.5f, height(heights.getTexture(), 40, 10), HALF_FLOAT_STEP);
            assertEquals("a quarter of a period is downwards", 0.25f, height(heights.getTexture(), 24, 48), 0.02f);
        });
        drawInTwoContexts(new ShallowWaterIterative(), water -> {
            water.addDrop(A, 8, 1, 0.25f);
            water.addDropLine(A, B, 8, 0.25f, 0.5f);
            water.addHorizontalWave(40, 6, 0.25f, 9, 1, 0.5f);
            assertEquals((1 * 0.5f + 0.25f) * 0.5f, height(water.getTexture(), 20, 10), HALF_FLOAT_STEP);
            assertEquals(0.25f * 0.5f, height(water.getTexture(), 60, 10), HALF_FLOAT_STEP);
            assertEquals(0.25f, height(water.getTexture(), 24, 48), 0.02f);
            final int before = water.getTexture();
            water.setIterationCount(3);
            water.update();
            assertNotEquals("every pass has another texture", before, water.getTexture());
        });
        drawInTwoContexts(new ShallowWater(), pond -> {
            pond.addDrop(A, 16, 0.5f);
            // The strength squared, from the bottom.
            assertEquals(0.25f, height(pond.getTexture(), 20, HEIGHT - 11), HALF_FLOAT_STEP);
            final float[] end = {0, 0.5f};
            pond.addDropLine(end, end, 0.4f, 0.5f);
            assertEquals(0.4f, height(pond.getTexture(), 48, 15), 0.01f);
            // Two of five updates are steps. The state before was flat: the bump still rises.
            IntStream.range(0, 5).forEach(update -> pond.update());
            assertTrue(height(pond.getTexture(), 48, 15) > 0.6f);
        });
    }

    @Test
    public void normalsAndRefraction() throws Exception {
        final float[] tilted = {0.146447f, 0.5f, 0.853553f, 1};
        drawInTwoContexts(new NormalMapBuilder(), normals -> {
            normals.setHeightMax(64);
            // Half way between two texels the neighbours are these two: a slope of 1.
            normals.build(context.createTexture(HeadlessContext.GL_R16F, 2, 1, new float[] {0, 2 / 64f}));
            final float[] normal = pixel(context.readTexture(normals.getTexture(), WIDTH, HEIGHT), 48, 30);
            assertArrayEquals(tilted, normal, HALF_FLOAT_STEP);
        });
        drawInTwoContexts(new ShallowWaterRenderer(), renderer -> {
            // A plane 266 pixels high, whose normal moves a picture by 62 pixels along y.
            final int height = context.createTexture(HeadlessContext.GL_R16F, 1, 1, new float[] {1});
            final int normal = context.createTexture(HeadlessContext.GL_RGBA16F, 1, 1, tilted);
            renderer.setTexture(createQuarters());
            renderer.setBGFlip(true);
            renderer.setHeightMax(266);
            renderer.render(height, normal);
            assertPixel(RED, 20, 10);
            assertPixel(GREEN, 80, 50);
            // The light stands over the tilt, 45 degrees from the viewer: half of cos(22.5 degrees)^2 is added.
            renderer.setLight(-1, 0, 1);
            renderer.setSpecular(0.5f, 2);
            renderer.render(height, normal);
            assertPixel(new float[] {1, 0.426777f, 0.426777f, 1}, 20, 10);
            renderer.setSpecular(0, 2);
            renderer.setDrawFrameBuffer(1000);
            renderer.render(height, normal);
            assertThrows("nothing is attached", IllegalStateException.class, context::readFramebuffer);
            renderer.setDrawFrameBuffer(0);
        });
    }
}
