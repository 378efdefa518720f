import static org.junit.Assert.assertArrayEquals;
import static org.junit.Assert.assertEquals;
import static org.junit.Assert.assertThrows;
import static org.junit.Assert.assertTrue;

import com.vyn.effect.tidalume.headless.HeadlessContext;
import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import org.junit.Test;
import org.junit.function.ThrowingRunnable;

public final class HeadlessContextTest {
    @Test
    public void onceThrough() throws IOException {
        HeadlessContext context = HeadlessContext.create(1, 2);
        assertTrue(context.driver(), context.driver().contains("OpenGL ES 3"));
        context.clear(1, 0, 0.2f, 1);
        assertArrayEquals(new float[] {1, 0, 0.2f, 1, 1, 0, 0.2f, 1}, context.readFramebuffer(), 0);
        int bytes = context.createTexture(HeadlessContext.GL_RGBA8, 1, 1, new byte[] {-1, 0, 51, -1});
        assertArrayEquals(new float[] {1, 0, 0.2f, 1}, context.readTexture(bytes, 1, 1), 0);

        Path png = Files.createTempFile("tidalume", ".png");
        context.writePng(png);
        assertEquals('P', Files.readAllBytes(png)[1]);
        Files.delete(png);

        context.recreate();
        refuses(IllegalStateException.class, "no texture named", () -> context.readTexture(bytes, 1, 1));
        refuses(IOException.class, "No such file", () -> context.writePng(Path.of("/absent/a.png")));
        refuses(IllegalArgumentException.class, "6 elements", () ->
                context.createTexture(HeadlessContext.GL_R16F, 2, 3, new float[5]));
        context.close();
        context.close();
        refuses(IllegalStateException.class, "closed", context::readFramebuffer);
    }

    private static void refuses(Class<? extends Exception> type, String words, ThrowingRunnable call) {
        String message = assertThrows(words, type, call).getMessage();
        assertTrue(message, message.contains(words));
    }
}
