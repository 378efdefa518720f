package com.vyn.effect.tidalume.sample;

import static org.junit.Assert.*;

import com.vyn.effect.tidalume.headless.HeadlessContext;
import java.util.Arrays;
import org.junit.After;
import org.junit.Test;

/** The sample application's drawing, driven as its activity drives it. */
public class RipplesTest {
    private static final int WIDTH = 96;
    private static final int HEIGHT = 64;
    private static final long SECOND = 1_000_000_000L;

    private final HeadlessContext context = HeadlessContext.create(WIDTH, HEIGHT);
    private Ripples ripples = startActivity();
    private final float[] still = draw(0);

    @After
    public void finish() {
        ripples.close();
        context.close();
    }

    /** Red grows downwards, green to the right; the first row is the top, as of a bitmap. */
    private int createPicture() {
        final byte[] bytes = new byte[WIDTH * HEIGHT * 4];
        for (int pixel = 0; pixel < WIDTH * HEIGHT; pixel++) {
            bytes[pixel * 4] = (byte) (pixel / WIDTH * 4);
            bytes[pixel * 4 + 1] = (byte) (pixel % WIDTH * 2);
        }
        return context.createTexture(HeadlessContext.GL_RGBA8, WIDTH, HEIGHT, bytes);
    }

    private Ripples startActivity() {
        final Ripples started = new Ripples();
        started.contextCreated(createPicture());
        started.sizeChanged(WIDTH, HEIGHT);
        return started;
    }

    private float[] draw(long now) {
        ripples.drawFrame(now);
        return context.readFramebuffer();
    }

    /** A drop at 0 and the water a fifth of a second later, on a display of so many frames per second. */
    private float[] dropAt(int frequency) {
        ripples.close();
        ripples = startActivity();
        draw(0);
        ripples.touchDown(48, 32);
        for (int frame = 1; frame < frequency / 5; frame++) {
            draw(frame * SECOND / frequency + 1000);
        }
        return draw(SECOND / 5 + 1000);
    }

    @Test
    public void stillWaterShowsThePictureUpright() {
        for (int pixel = 0; pixel < WIDTH * HEIGHT; pixel++) {
            assertEquals((HEIGHT - 1 - pixel / WIDTH) * 4 / 255f, still[pixel * 4], 1.01f / 255);
            assertEquals(pixel % WIDTH * 2 / 255f, still[pixel * 4 + 1], 1.01f / 255);
        }
    }

    @Test
    public void touchesRippleAndDoNotJumpAfterAPause() {
        ripples.touchDown(48, 32);
        final float[] drop = draw(SECOND / 60);
        assertFalse(Arrays.equals(still, drop));
        ripples.touchMove(60, 40);
        ripples.touchMove(70, 20);
        final float[] line = draw(SECOND / 30);
        assertFalse(Arrays.equals(drop, line));
        final float[] afterAnHour = draw(3600 * SECOND);
        assertFalse("the water moves on", Arrays.equals(line, afterAnHour));
        assertFalse("but has not settled", Arrays.equals(still, afterAnHour));
        assertArrayEquals("and has no time to make up for", afterAnHour, draw(3600 * SECOND), 0);
    }

    @Test
    public void wavesAreAsFastOnEveryDisplay() {
        final float[] at60Hz = dropAt(60);
        assertFalse(Arrays.equals(still, at60Hz));
        assertArrayEquals(at60Hz, dropAt(120), 0);
    }

    @Test
    public void everyLossOfTheContextIsSurvived() {
        ripples.touchDown(48, 32);
        final float[] drop = draw(0);
        for (int loss = 0; loss < 3; loss++) {
            context.recreate();
            ripples.contextCreated(createPicture());
            ripples.touchDown(10, 10); // before there is a surface: ignored
            ripples.touchMove(20, 20);
            ripples.sizeChanged(WIDTH, HEIGHT);
            assertArrayEquals(still, draw(SECOND), 0);
            ripples.touchDown(48, 32);
            assertArrayEquals(drop, draw(SECOND), 0);
        }
    }
}
