package com.vyn.effect.tidalume;

import static java.lang.Float.*;
import static org.junit.Assert.*;

import com.vyn.effect.tidalume.headless.*;
import com.vyn.effect.tidalume.looks.*;
import java.lang.reflect.*;
import java.nio.file.*;
import java.util.*;
import java.util.logging.Logger;
import java.util.stream.*;
import org.junit.*;
import org.junit.function.ThrowingRunnable;
import org.junit.rules.TemporaryFolder;

/** Looks from Java: what they say about themselves, what they refuse, and from a touch to pixels. */
public final class LookTest {
    private static final int WIDTH = 61;
    private static final int HEIGHT = 97;
    /** What a phone's clock says, in seconds: a float has no sixtieths of them. */
    private static final double UPTIME = 1e7;

    @Rule
    public final TemporaryFolder folder = new TemporaryFolder();
    private final HeadlessContext context = HeadlessContext.create(WIDTH, HEIGHT);
    private final List<Look> looks = List.of(
            new WaterLook(), new WavesLook(), new BlobsLook(), new SprayLook(), new CometsLook());

    @After
    public void closeContext() {
        looks.forEach(Look::close);
        context.close();
    }

    private static void assertRefused(String pattern, ThrowingRunnable call) {
        Throwable refused = assertThrows(pattern, Exception.class, call);
        refused = refused instanceof InvocationTargetException ? refused.getCause() : refused;
        assertTrue(pattern + " does not match " + refused, refused.toString().matches("java[.\\w]*\\." + pattern));
    }

    private float[] draw(Look look, int frame) {
        context.clear(0, 0, 0, 0);
        look.draw(UPTIME + frame / 60.0);
        return context.readFramebuffer();
    }

    @Test
    public void touchesShowInEveryContextThatIsSaidToBeCreated() {
        for (Look each : looks) {
            each.setSize(WIDTH, HEIGHT);
            for (int loss = 0; loss < 2; loss++) {
                assertRefused("IllegalStateException: \\w+ needs contextCreated .*", () -> each.draw(0));
                each.contextCreated();
                each.touch(SprayLook.SPRAYING_FINGERS - 1, WIDTH / 2f, HEIGHT / 2f, TouchPhase.DOWN);
                each.touch(SprayLook.SPRAYING_FINGERS - 1, WIDTH / 2f, HEIGHT / 3f, TouchPhase.MOVE);
                final float[] touched = draw(each, 0);
                assertTrue(each.isMoving());
                assertFalse(each + " stands still", Arrays.equals(touched, draw(each, 4)));
                each.draw(1, 1000);
                assertThrows("nothing is attached", IllegalStateException.class, context::readFramebuffer);
                context.recreate();
                each.contextLost();
            }
        }
        final Look look = looks.get(0);
        look.contextCreated();
        final HeadlessContext another = HeadlessContext.create(1, 1);
        assertRefused("IllegalStateException: the GL context is another .*", look::contextCreated);
        assertRefused("IllegalStateException: the GL context is another .*", () -> look.draw(0));
        look.contextLost();
        look.contextCreated();
        another.close();
        assertRefused("IllegalStateException: \\w+ needs a GL context .*", look::contextCreated);
        assertRefused("IllegalStateException: \\w+ needs a GL context .*", () -> look.draw(0));
    }

    @Test
    public void picturesComeFromFilesAndAreUpright() throws Exception {
        context.resize(2, 2);
        context.clear(1, 0, 0, 1);
        final Path file = folder.getRoot().toPath().resolve("red.png");
        context.writePng(file);
        final Picture picture = HeadlessContext.readPicture(file);
        assertEquals(2, picture.width);
        picture.rgba[8] = picture.rgba[12] = 0; // the lower row
        final int texture = context.createTexture(picture);
        picture.rgba[1] = 100;
        picture.rgba[3] = -128;
        picture.premultiply();
        assertArrayEquals(new byte[] {-128, 50, 0, -128, -1, 0, 0, -1}, Arrays.copyOf(picture.rgba, 8));
        final WaterLook water = (WaterLook) looks.get(0);
        final WavesLook waves = (WavesLook) looks.get(1);
        for (PictureTop top : PictureTop.values()) {
            water.setPicture(texture, 2, 2, top);
            waves.setPicture(texture, 2, 2, top);
            for (Look look : List.of(water, waves)) {
                look.contextCreated();
                look.setSize(2, 2);
                final float[] pixels = draw(look, 0);
                assertEquals(top == PictureTop.FIRST_ROW ? -1 : 1, pixels[0] - pixels[8], 0.3f);
            }
        }
        assertRefused("IllegalArgumentException: width and .*", () -> water.setPicture(1, 0, 1, PictureTop.LAST_ROW));
        assertRefused("IllegalArgumentException: width and .*", () -> waves.setPicture(1, 1, 0, PictureTop.LAST_ROW));
        final Path absent = Path.of("/absent/a.png");
        assertRefused("IOException: /absent/a.png: there is no .*", () -> HeadlessContext.readPicture(absent));
        assertRefused("IOException: /absent/a.png: No such .*", () -> context.writePng(absent));
        assertRefused("IllegalArg.*", () -> context.createTexture(HeadlessContext.GL_R16F, 2, 3, new float[5]));
        assertTrue(context.driver(), context.driver().contains("OpenGL ES 3"));
        context.close();
        assertRefused("IllegalStateException: the context is closed", context::driver);
    }

    @Test
    public void ballsLieWhereTheyAreSet() {
        final BlobsLook blobs = (BlobsLook) looks.get(2);
        blobs.contextCreated();
        blobs.setSize(WIDTH, HEIGHT);
        blobs.setDrops(0);
        blobs.setPools(0);
        final float[] balls = {20, 70, 8, NaN, 5, 5, 30, 30, POSITIVE_INFINITY, 30, 40, -1, 40, 30, 8};
        blobs.setBalls(balls, 4);
        final float[][] colors = {{1, 0.5f, 0.25f, 1}, {0.9f, 0.9f, 0.9f, 1}, {0, 0, 0.1f, 1}};
        for (BlobsLook.Palette palette : BlobsLook.Palette.values()) {
            blobs.setPalette(palette);
            final float[] pixels = draw(blobs, 0);
            final int middle = 4 * ((HEIGHT - 70) * WIDTH + 20);
            final float[] color = Arrays.copyOfRange(pixels, middle, middle + 4);
            assertArrayEquals(palette + "", colors[palette.ordinal()], color, 0.2f);
            assertEquals(0, pixels[4 * ((HEIGHT - 30) * WIDTH + 40) + 3], 0);
        }
        blobs.setBalls(balls, 0);
        blobs.touch(0, 20, 70, TouchPhase.DOWN);
        draw(blobs, 0);
        blobs.touch(0, 20, 70, TouchPhase.CANCEL);
        IntStream.range(1, 99).forEach(frame -> draw(blobs, frame));
        assertArrayEquals("all are gone", new float[4 * WIDTH * HEIGHT], draw(blobs, 99), 0);
        assertRefused("IllegalArgumentException: count must be 0 to 5, .*", () -> blobs.setBalls(balls, 6));
    }

    @Test
    public void settersAndPresetsAreThoseOfTheTables() throws Exception {
        for (Look look : looks) {
            final Map<String, Method> setters = Arrays.stream(look.getClass().getDeclaredMethods())
                    .filter(method -> Modifier.isPublic(method.getModifiers()) && method.getParameterCount() == 1)
                    .collect(Collectors.toMap(method -> method.getName().toLowerCase(Locale.ROOT), method -> method));
            for (com.vyn.effect.tidalume.looks.Parameter parameter : look.parameters().values()) {
                final Method setter = setters.remove("set" + parameter.name.toLowerCase(Locale.ROOT));
                final Object[] choices = setter.getParameterTypes()[0].getEnumConstants();
                final String names = Arrays.toString(choices).toLowerCase(Locale.ROOT);
                assertEquals(choices == null ? "[]" : names, parameter.choices.toString());
                for (float value : new float[] {parameter.minimum, parameter.maximum}) {
                    setter.invoke(look, choices == null ? value : choices[(int) value]);
                    assertEquals(value, look.get(parameter.name), 0);
                }
                final float notWhole = choices == null ? NaN : 0.5f;
                for (float bad : new float[] {notWhole, parameter.minimum - 0.001f, parameter.maximum + 0.001f}) {
                    assertRefused("IllegalArgumentException: " + parameter.name + " must be .*" + parameter.unit
                            + ", is " + bad, () -> look.set(parameter.name, bad));
                }
                assertEquals(parameter.maximum, look.get(parameter.name), 0);
            }
            assertEquals("setters of nothing", Set.of(), setters.keySet());

            final Set<Object> presets = new HashSet<>();
            for (Field constant : look.getClass().getFields()) {
                presets.add(constant.get(null));
            }
            presets.removeIf(constant -> !(constant instanceof String));
            assertEquals(presets, look.presets().keySet());
            for (Preset preset : look.presets().values()) {
                look.usePreset(preset.name);
                look.parameters().forEach((name, parameter) -> assertEquals(
                        preset.settings.getOrDefault(name, parameter.initial), look.get(name), 0));
            }
            assertRefused("IllegalArgumentException: preset must be one of .*", () -> look.usePreset("x"));
        }
    }

    @Test
    public void nullsAndClosedLooksAreRefused() {
        for (Look look : looks) {
            for (String refusal : List.of("NullPointerException: .* must not be null", ".*State.*: \\w+ is closed")) {
                for (Method method : look.getClass().getMethods()) {
                    final Object[] arguments = Arrays.stream(method.getParameterTypes())
                            .map(type -> type.isPrimitive() ? 1 : null).toArray();
                    final boolean isRefused = Arrays.asList(arguments).contains(null) || refusal.contains("closed");
                    if (isRefused && Look.class.isAssignableFrom(method.getDeclaringClass())
                            && !method.getName().matches("close|parameters|presets|setDebugging")) {
                        assertRefused(refusal, () -> method.invoke(look, arguments));
                    }
                }
                look.close();
            }
        }
    }

    @Test
    public void looksThatAreNeverClosedAreReportedOnceWithThePlace() throws Exception {
        final List<String> places = new ArrayList<>();
        final Logger logger = Logger.getLogger("Tidalume"); // is forgotten where nobody holds it
        logger.setFilter(entry -> !places.add(entry.getThrown().getStackTrace()[4].getMethodName()));
        Look.setDebugging(true);
        forget();
        for (int i = 0; i < 100 && places.isEmpty(); i++) {
            System.gc();
            Thread.sleep(10);
            new CometsLook().close();
        }
        Look.setDebugging(false);
        System.gc();
        new CometsLook().close();
        assertEquals(List.of("forget"), places);
    }

    private static void forget() {
        new CometsLook();
    }
}
