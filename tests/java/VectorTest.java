import static com.vyn.effect.tidalume.VectorGraphicRenderer.EQUATION_ADD;
import static com.vyn.effect.tidalume.VectorGraphicRenderer.EQUATION_REVERSE_SUBTRACT;
import static com.vyn.effect.tidalume.VectorGraphicRenderer.FACTOR_CONSTANT_COLOR;
import static com.vyn.effect.tidalume.VectorGraphicRenderer.FACTOR_ONE;
import static com.vyn.effect.tidalume.VectorGraphicRenderer.FACTOR_ZERO;

import com.vyn.effect.tidalume.VectorGraphicRenderer;
import com.vyn.effect.tidalume.headless.HeadlessContext;
import org.junit.Test;

public final class VectorTest extends JavaTest {
    private static final float[] RED = {1, 0, 0, 1};
    private static final float[] GREEN = {0, 1, 0, 1};
    private static final float[] BLUE = {0, 0, 1, 1};
    private static final float[] WHITE = {1, 1, 1, 1};
    private static final float[] BLACK = {0, 0, 0, 1};
    private static final float[] HALF_WHITE = {1, 1, 1, 0.5f};

    /** Red and green below blue and white, with sharp edges: 64 texels wide and high. */
    private int createQuarters() {
        final float[][] quarters = {RED, GREEN, BLUE, WHITE};
        final float[] texels = new float[64 * 64 * 4];
        for (int i = 0; i < 64 * 64; i++) {
            System.arraycopy(quarters[i / 64 / 32 * 2 + i % 64 / 32], 0, texels, i * 4, 4);
        }
        return context.createTexture(HeadlessContext.GL_RGBA8, 64, 64, texels);
    }

    /** The colours in the four quarters of the rectangle that drawAt fills. */
    private void assertQuarters(float[] lowerLeft, float[] lowerRight, float[] upperLeft, float[] upperRight) {
        assertPixel(lowerLeft, 20, 50);
        assertPixel(lowerRight, 80, 50);
        assertPixel(upperLeft, 20, 10);
        assertPixel(upperRight, 80, 10);
    }

    @Test
    public void drawsEveryPrimitiveAgainAfterALossOfTheContext() {
        try (VectorGraphicRenderer graphics = new VectorGraphicRenderer()) {
            graphics.setScreenSize(WIDTH, HEIGHT);
            for (int loss = 0; loss < 3; loss++) {
                graphics.init();
                final int quarters = createQuarters();
                // Red 0 on the left half, 1 on the right half; the other channels must not matter.
                final int mask =
                        context.createTexture(HeadlessContext.GL_RGBA8, 2, 1, new float[] {0, 1, 1, 1, 1, 0, 0, 0});

                graphics.renderRadialGradient(48.5f, 30.5f, 10, RED, 10, BLUE);
                assertPixel(RED, 48, 22);
                assertPixel(BLUE, 48, 18);

                graphics.renderBitmapRectangle(0, 0, WIDTH, HEIGHT, quarters);
                assertQuarters(RED, GREEN, BLUE, WHITE);
                graphics.renderCircle(20, 10, 8, GREEN);
                assertPixel(GREEN, 20, 16);
                assertPixel(BLUE, 20, 20);
                graphics.renderBitmapCircle(48, 30, 40, WHITE, quarters);
                assertPixel(RED, 40, 40);
                graphics.renderRotatedBitmapRectangle(
                        0, 0, WIDTH, HEIGHT, quarters, VectorGraphicRenderer.ROTATION_CLOCKWISE);
                assertQuarters(GREEN, WHITE, RED, BLUE);

                context.clear(0, 0, 0, 1);
                graphics.renderAlphaMaskedBitmapRectangle(0, 0, WIDTH, HEIGHT, quarters, mask);
                assertQuarters(BLACK, GREEN, BLACK, WHITE);
                context.clear(0, 0, 0, 1);
                graphics.renderRotatedAlphaMaskedBitmapRectangle(0, 0, WIDTH, HEIGHT, quarters,
                        VectorGraphicRenderer.ROTATION_FLIP_HORIZONTAL, mask);
                assertQuarters(BLACK, RED, BLACK, BLUE);

                graphics.GLContextDestroyed();
                context.recreate();
            }
        }
    }

    @Test
    public void drawsUnderTheBlendStateSet() {
        try (VectorGraphicRenderer graphics = new VectorGraphicRenderer()) {
            graphics.init();
            graphics.setScreenSize(WIDTH, HEIGHT);
            context.clear(0.8f, 0.8f, 0.8f, 1);
            graphics.renderCircle(20, 20, 10, HALF_WHITE);
            assertPixel(new float[] {0.9f, 0.9f, 0.9f, 0.75f}, 20, 20);
            graphics.setBlendEquation(EQUATION_REVERSE_SUBTRACT);
            graphics.setBlendFunction(FACTOR_CONSTANT_COLOR, FACTOR_ONE, FACTOR_ZERO, FACTOR_ONE);
            graphics.setBlendColor(0.2f, 0.4f, 0.6f, 1);
            graphics.renderCircle(70, 20, 10, WHITE);
            assertPixel(new float[] {0.6f, 0.4f, 0.2f, 1}, 70, 20);
            graphics.setBlendEquation(EQUATION_ADD);
            graphics.renderCircle(70, 40, 10, WHITE);
            assertPixel(new float[] {1, 1, 1, 1}, 70, 45);
        }
    }
}
