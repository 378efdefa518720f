import static org.junit.Assert.assertArrayEquals;
import static org.junit.Assert.assertThrows;
import static org.junit.Assert.assertTrue;

import com.vyn.effect.tidalume.headless.HeadlessContext;
import java.util.Arrays;
import org.junit.After;
import org.junit.Before;
import org.junit.function.ThrowingRunnable;

/** A test with a GL context of 97 x 61 pixels current. */
public abstract class JavaTest {
    static final int WIDTH = 97;
    static final int HEIGHT = 61;

    HeadlessContext context;

    @Before
    public void createContext() {
        context = HeadlessContext.create(WIDTH, HEIGHT);
        context.clear(0, 0, 0, 1);
    }

    @After
    public void closeContext() {
        context.close();
    }

    /** Red, green, blue, alpha of framebuffer 0 at a pixel counted from the top-left corner. */
    float[] pixel(int x, int y) {
        return texel(context.readFramebuffer(), x, HEIGHT - 1 - y);
    }

    /** Red, green, blue, alpha of a screen-sized texture at column x of row y, counted from the bottom. */
    static float[] texel(float[] pixels, int x, int y) {
        final int first = (y * WIDTH + x) * 4;
        return Arrays.copyOfRange(pixels, first, first + 4);
    }

    void assertPixel(float[] expected, int x, int y) {
        assertArrayEquals(expected, pixel(x, y), 1.01f / 255);
    }

    /** The exception must say which argument, and what was expected. */
    static String assertRefused(Class<? extends Throwable> type, String words, ThrowingRunnable call) {
        final Throwable thrown = assertThrows(words, type, call);
        assertTrue(thrown.getMessage(), thrown.getMessage().contains(words));
        return thrown.getMessage();
    }
}
