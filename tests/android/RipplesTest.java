package com.vyn.effect.tidalume.sample;

import static android.view.MotionEvent.*;
import static org.junit.Assert.*;

import android.opengl.GLSurfaceView;
import android.view.MotionEvent;
import com.vyn.effect.tidalume.headless.HeadlessContext;
import org.junit.*;

/** The sample application from the events of Android to pixels. Of Android itself there are declarations only. */
public class RipplesTest {
    private static final int WIDTH = 96;
    private static final int HEIGHT = 64;
    private static final float[] FIRST_LEFT = {0, 10, 32};
    private static final float[] FIRST_RIGHT = {0, 86, 32};
    private static final float[] SECOND_RIGHT = {5, 86, 32};

    private final HeadlessContext context = HeadlessContext.create(WIDTH, HEIGHT);
    private final RipplesActivity activity = new RipplesActivity();
    private GLSurfaceView.Renderer renderer;

    @Before
    public void start() {
        activity.onCreate(null);
        renderer = ((GLSurfaceView) activity.contentView).renderer;
    }

    @After
    public void finish() {
        ((RipplesRenderer) renderer).close();
        context.close();
    }

    /** After at least one step of the water, which runs by the clock. */
    private float[] draw() throws InterruptedException {
        Thread.sleep(20);
        renderer.onDrawFrame(null);
        return context.readFramebuffer();
    }

    /** Where there are ripples shortly after the events, in a new context. */
    private String ripplesAfter(MotionEvent... events) throws InterruptedException {
        context.recreate();
        renderer.onSurfaceCreated(null, null);
        renderer.onSurfaceChanged(null, WIDTH, HEIGHT);
        final float[] still = draw();
        for (MotionEvent event : events) {
            assertTrue(activity.onTouchEvent(event));
        }
        final float[] picture = draw();
        String places = "";
        for (int i = 0; i < picture.length; i++) {
            final int column = i / 4 % WIDTH;
            final String place = column < WIDTH / 3 ? "left " : column > 2 * WIDTH / 3 ? "right " : "";
            if (picture[i] != still[i] && !places.contains(place)) {
                places += place;
            }
        }
        return places;
    }

    @Test
    public void fingersRippleWhereTheyAreFromDownToUp() throws InterruptedException {
        final MotionEvent down = new MotionEvent(ACTION_DOWN, 0, FIRST_LEFT);
        final MotionEvent move = new MotionEvent(ACTION_MOVE, 0, FIRST_RIGHT, SECOND_RIGHT);
        assertEquals("", ripplesAfter(move));
        assertEquals("left ", ripplesAfter(down));
        assertEquals("left right ", ripplesAfter(down, move));
        assertEquals("left ", ripplesAfter(down, new MotionEvent(ACTION_UP, 0, FIRST_LEFT), move));
        assertEquals("left ", ripplesAfter(down, new MotionEvent(ACTION_CANCEL, 0, SECOND_RIGHT, FIRST_LEFT), move));
        final MotionEvent secondDown = new MotionEvent(ACTION_POINTER_DOWN, 1, FIRST_LEFT, SECOND_RIGHT);
        assertEquals("right ", ripplesAfter(secondDown));
        assertEquals("left ",
                ripplesAfter(down, new MotionEvent(ACTION_POINTER_UP, 1, SECOND_RIGHT, FIRST_LEFT), move));
    }
}
