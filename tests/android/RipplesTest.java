package com.vyn.effect.tidalume.sample;

import static org.junit.Assert.assertArrayEquals;
import static org.junit.Assert.assertEquals;
import static org.junit.Assert.assertNotEquals;

import com.vyn.effect.tidalume.headless.HeadlessContext;
import java.util.Arrays;
import org.junit.After;
import org.junit.Before;
import org.junit.Test;

/** The sample application's drawing, driven as its activity drives it. */
public class RipplesTest {
    private static final int WIDTH = 96;
    private static final int HEIGHT = 64;
    private static final long SECOND = 1_000_000_000L;

    private HeadlessContext context;
    private Ripples ripples;
    private float[] still;

    @Before
    public void start() {
        context = HeadlessContext.create(WIDTH, HEIGHT);
        startActivity();
        still = draw(0);
    }

    @After
    public void finish() {
        ripples.close();
        context.close();
    }

    @Test
    public void stillWaterShowsThePictureUpright() {
        for (int column = 0; column < WIDTH; column += 5) {
            for (int row = 0; row < HEIGHT; row += 3) {
                final int pixel = ((HEIGHT - 1 - row) * WIDTH + column) * 4;
                assertEquals(row * 4 / 255f, still[pixel], 1.01f / 255);
                assertEquals(column * 2 / 255f, still[pixel + 1], 1.01f / 255);
            }
        }
    }

    @Test
    public void touchesRippleAndDoNotJumpAfterAPause() {
        ripples.touchDown(48, 32);
        final float[] drop = draw(SECOND / 60);
        assertNotEquals(Arrays.hashCode(still), Arrays.hashCode(drop));

        ripples.touchMove(60, 40);
        ripples.touchMove(70, 20);
        final float[] line = draw(SECOND / 30);
        assertNotEquals(Arrays.hashCode(drop), Arrays.hashCode(line));

        final float[] afterAnHour = draw(3600 * SECOND);
        assertNotEquals("the water moves on", Arrays.hashCode(line), Arrays.hashCode(afterAnHour));
        assertNotEquals("but has not settled", Arrays.hashCode(still), Arrays.hashCode(afterAnHour));
        assertArrayEquals("and has no time to make up for", afterAnHour, draw(3600 * SECOND), 0);
    }

    @Test
    public void wavesAreAsFastOnEveryDisplay() {
        ripples.touchDown(48, 32);
        draw(0);
        for (int frame = 1; frame < 12; frame++) {
            draw(frame * SECOND / 60 + 1000);
        }
        final float[] at60Hz = draw(SECOND / 5 + 1000);
        assertNotEquals(Arrays.hashCode(still), Arrays.hashCode(at60Hz));

        restartActivity();
        draw(0);
        ripples.touchDown(48, 32);
        for (int frame = 1; frame < 24; frame++) {
            draw(frame * SECOND / 120 + 1000);
        }
        assertArrayEquals(at60Hz, draw(SECOND / 5 + 1000), 0);
    }

    @Test
    public void everyLossOfTheContextIsSurvived() {
        for (int loss = 0; loss < 3; loss++) {
            ripples.touchDown(48, 32);
            draw(SECOND);
            context.recreate();
            ripples.contextCreated(createPicture());
            ripples.touchDown(10, 10); // before there is a surface: ignored
            ripples.touchMove(20, 20);
            ripples.sizeChanged(WIDTH, HEIGHT);
            assertArrayEquals(still, draw(2 * SECOND), 0);
        }
    }

    @Test
    public void rotationMakesANewActivity() {
        ripples.touchDown(48, 32);
        draw(SECOND);
        restartActivity();
        assertArrayEquals(still, draw(2 * SECOND), 0);
    }

    private void startActivity() {
        ripples = new Ripples();
        ripples.contextCreated(createPicture());
        ripples.sizeChanged(WIDTH, HEIGHT);
    }

    private void restartActivity() {
        ripples.close();
        startActivity();
    }

    private float[] draw(long now) {
        ripples.drawFrame(now);
        return context.readFramebuffer();
    }

    /** Red grows downwards, green to the right; the first row is the top, as of a bitmap. */
    private int createPicture() {
        final byte[] bytes = new byte[WIDTH * HEIGHT * 4];
        for (int pixel = 0; pixel < WIDTH * HEIGHT; pixel++) {
            bytes[pixel * 4] = (byte) (pixel / WIDTH * 4);
            bytes[pixel * 4 + 1] = (byte) (pixel % WIDTH * 2);
            bytes[pixel * 4 + 3] = (byte) 255;
        }
        return context.createTexture(HeadlessContext.GL_RGBA8, WIDTH, HEIGHT, bytes);
    }
}
