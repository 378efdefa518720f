import com.vyn.effect.tidalume.headless.HeadlessContext;
import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.Arrays;

/** Drives the headless context of Java once through; the exit status tells whether all held. */
final class HeadlessContextTest {
    private HeadlessContextTest() {}

    public static void main(String[] arguments) throws IOException {
        HeadlessContext context = HeadlessContext.create(3, 2);
        check(context.driver().contains("OpenGL ES 3"), "driver: " + context.driver());

        context.clear(1, 0, 0.2f, 1);
        float[] pixels = context.readFramebuffer();
        check(pixels.length == 24 && pixels[20] == 1 && pixels[21] == 0 && pixels[22] == 51 / 255f, "framebuffer");

        int bytes = context.createTexture(HeadlessContext.GL_RGBA8, 1, 1, new byte[] {-1, 0, 51, -1});
        check(Arrays.equals(context.readTexture(bytes, 1, 1), new float[] {1, 0, 0.2f, 1}), "texture of bytes");

        Path png = Files.createTempFile("tidalume", ".png");
        context.writePng(png);
        check(Files.size(png) > 8 && Files.readAllBytes(png)[1] == 'P', "PNG");
        Files.delete(png);

        context.recreate();
        expect(IllegalStateException.class, "no texture named", () -> context.readTexture(bytes, 1, 1));
        expect(IOException.class, "No such file", () -> context.writePng(Path.of("/absent/a.png")));
        expect(IllegalArgumentException.class, "width must be at least 1", () -> HeadlessContext.create(0, 1));
        expect(IllegalArgumentException.class, "6 elements", () ->
                context.createTexture(HeadlessContext.GL_R16F, 2, 3, new float[5]));
        context.close();
        context.close();
        expect(IllegalStateException.class, "closed", context::readFramebuffer);
    }

    private interface Action {
        void run() throws Exception;
    }

    private static void expect(Class<? extends Exception> type, String text, Action action) {
        try {
            action.run();
        } catch (Exception exception) {
            check(type.isInstance(exception) && exception.getMessage().contains(text), exception.toString());
            return;
        }
        check(false, "no " + type.getSimpleName() + " with: " + text);
    }

    private static void check(boolean holds, String what) {
        if (!holds) {
            throw new AssertionError(what);
        }
    }
}
