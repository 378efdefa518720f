import static org.junit.Assert.assertEquals;
import static org.junit.Assert.assertNotEquals;

import com.vyn.effect.tidalume.GlobalProperty;
import com.vyn.effect.tidalume.Metaball2DRenderer;
import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import org.junit.Test;

public final class MetaballTest extends JavaTest {
    private static final float[] BLACK = {0, 0, 0, 1};
    private static final float[] COLOR = {1, 0.5f, 0.25f, 1};
    private static final float[] TWO_BALLS = {30, 20, 12, 0, 0, 0, 70, 40, 8, 0};

    @Test
    public void drawsDiscsAndDrawsThemAgainAfterALossOfTheContext() {
        try (Metaball2DRenderer metaballs = new Metaball2DRenderer()) {
            for (int loss = 0; loss < 3; loss++) {
                metaballs.init(1);
                metaballs.setScreenSize(WIDTH, HEIGHT);
                metaballs.addMetaballs(TWO_BALLS, 2);
                metaballs.render(COLOR);
                assertPixel(COLOR, 30, 20);
                assertPixel(COLOR, 30, 30);
                assertPixel(BLACK, 30, 34);
                assertPixel(COLOR, 70, 46);
                assertPixel(BLACK, 70, 20);
                assertNotEquals(0, metaballs.getTexture());

                metaballs.GLContextDestroyed();
                assertEquals(0, metaballs.getTexture());
                context.recreate();
            }
        }
    }

    @Test
    public void refusesBadArguments() {
        try (Metaball2DRenderer metaballs = new Metaball2DRenderer()) {
            assertRefused(IllegalArgumentException.class, "quality", () -> metaballs.init(0));
            assertRefused(IllegalArgumentException.class, "quality", () -> metaballs.init(Float.NaN));
            metaballs.init(2);
            metaballs.setScreenSize(WIDTH, HEIGHT);
            assertRefused(IllegalArgumentException.class, "16 floats", () -> metaballs.addMetaballs(TWO_BALLS, 3));
            assertRefused(IllegalArgumentException.class, "count", () -> metaballs.addMetaballs(TWO_BALLS, -1));
            assertRefused(IllegalArgumentException.class, "floats",
                    () -> metaballs.addMetaballs(TWO_BALLS, Integer.MAX_VALUE));
            metaballs.addMetaballs(new float[0], 0);
        }
    }

    @Test
    public void settingsReachTheProgramCache() throws IOException {
        final Path folder = Files.createTempDirectory("tidalume");
        GlobalProperty.setROOTDIR(folder + "/");
        GlobalProperty.setROOTDIR("/" + "x".repeat(1023));
        GlobalProperty.setROOTDIR(null);
        GlobalProperty.setBINARYSHADER(true);
        GlobalProperty.setDEBUGLOG(true);
        try (Metaball2DRenderer metaballs = new Metaball2DRenderer()) {
            metaballs.init(1);
        } finally {
            GlobalProperty.setBINARYSHADER(false);
            GlobalProperty.setDEBUGLOG(false);
        }
        for (String program : new String[] {"Metaball", "Draw"}) {
            Files.delete(folder.resolve("Metaball2DRendererProgram" + program + ".dat"));
        }
        Files.delete(folder);
    }
}
