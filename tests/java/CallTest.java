package com.vyn.effect.tidalume;

import static org.junit.Assert.*;

import com.vyn.effect.tidalume.headless.HeadlessContext;
import com.vyn.effect.tidalume.views.LiveNames;
import java.lang.reflect.*;
import java.nio.file.*;
import java.util.*;
import java.util.regex.*;
import java.util.stream.*;
import org.junit.*;

/** Every public method of every effect, in every state and with odd arguments: it works, or throws and says why. */
public final class CallTest {
    private static final List<Class<?>> EFFECTS = List.of(CometRenderer.class,
            IntensityMapBuilder.class, Metaball2DRenderer.class, MetaballRenderer.class, NormalMapBuilder.class,
            ShallowWater.class, ShallowWaterIterative.class, ShallowWaterRenderer.class, VectorGraphicRenderer.class);
    private static final String WITH_TEXTURE = "Metaball.*|.*Builder|.*Water(Iterative)?";
    /** Ways from a new effect; then all methods are called. Of those that draw, who refuses, and what is missing. */
    private static final String[][] WAYS = {
        {"", ".*", "needs init"},
        {"setScreenSize", ".*", "needs init"},
        {"init", ".*", "needs setScreenSize"},
        {"setScreenSize init", "MetaballRenderer", "needs setScreenSize"}, // it takes none before there is a field
        {"init setScreenSize", "", ""},
        {"init setScreenSize GLContextDestroyed", ".*", "needs init"},
        {"init setScreenSize GLContextDestroyed init", WITH_TEXTURE, "needs setScreenSize"},
        {"init setScreenSize GLContextDestroyed setScreenSize init", "", ""},
        {"close", ".*", "is closed"},
        {"init setScreenSize close", ".*", "is closed"}};
    private static final List<Integer> INTEGERS = List.of(0, -1, 2, 1 << 20, Integer.MAX_VALUE, Integer.MIN_VALUE);
    private static final List<Float> NUMBERS = List.of(0f, -0f, -1f, 1e-30f, 65504f, Float.MIN_VALUE, Float.MAX_VALUE,
            -Float.MAX_VALUE, Float.POSITIVE_INFINITY, Float.NEGATIVE_INFINITY, Float.NaN);
    private static final Set<?> NOT_FINITE = Set.of(Float.POSITIVE_INFINITY, Float.NEGATIVE_INFINITY, Float.NaN);
    private static final Set<?> NEGATIVE = with(NOT_FINITE, -1f, -Float.MAX_VALUE);
    private static final Set<?> NOT_POSITIVE = with(NEGATIVE, 0f, -0f);
    /** Numbers that a method refuses: for all of its parameters, or for each in turn. */
    private static final Map<String, List<Set<?>>> BAD_NUMBERS = Map.of(
            "init", List.of(NOT_POSITIVE),
            "setScreenSize", List.of(Set.of(0, -1, 1 << 20, Integer.MAX_VALUE, Integer.MIN_VALUE)),
            "setBlendEquation", List.of(Set.copyOf(INTEGERS)),
            "setBlendFunction", List.of(Set.of(-1, 2, 1 << 20, Integer.MAX_VALUE, Integer.MIN_VALUE)),
            "setIterationCount", List.of(Set.of(0, -1, Integer.MIN_VALUE)),
            "addMetaballs", List.of(Set.of(-1, 2, 1 << 20, Integer.MAX_VALUE, Integer.MIN_VALUE)),
            "setLight", List.of(NOT_FINITE),
            "setSpecular", List.of(NEGATIVE, NOT_POSITIVE),
            "setPhysics", List.of(with(NOT_FINITE, -1f, 65504f, Float.MAX_VALUE, -Float.MAX_VALUE), NEGATIVE,
                    with(NOT_POSITIVE, 1e-30f, Float.MIN_VALUE), with(NOT_POSITIVE, 65504f, Float.MAX_VALUE)),
            "setStepRate", List.of(with(NOT_POSITIVE, 65504f, Float.MAX_VALUE)));

    private final HeadlessContext context = HeadlessContext.create(64, 64);

    private static Set<?> with(Set<?> numbers, Object... more) {
        return Stream.concat(numbers.stream(), Stream.of(more)).collect(Collectors.toSet());
    }

    @After
    public void closeContext() {
        context.close();
    }

    private static List<Method> publicMethods(Class<?> type) {
        return Arrays.stream(type.getDeclaredMethods()).filter(method -> Modifier.isPublic(method.getModifiers()))
                .collect(Collectors.toList());
    }

    /** How many floats an array of the method must hold: a point, a metaball or a color. */
    private static int length(Method method) {
        return method.getName().startsWith("addDrop") ? 2 : 4;
    }

    private static Object[] ordinaryArguments(Object effect, Method method) throws Exception {
        final boolean isEquation = method.getName().equals("setBlendEquation");
        final Map<Class<?>, Object> values = Map.of(boolean.class, true, float.class, 0.5f, double.class, 0.5,
                float[].class, new float[length(method)],
                int.class, isEquation ? VectorGraphicRenderer.EQUATION_MIN : 1);
        final Object[] arguments = Arrays.stream(method.getParameterTypes()).map(values::get).toArray();
        if (Arrays.asList(method.getParameterTypes()).contains(long.class)) {
            final Field handle = effect.getClass().getDeclaredField("handle");
            handle.setAccessible(true);
            arguments[0] = ((Handle) handle.get(effect)).open();
        }
        return arguments;
    }

    private static List<?> oddValues(Method method, Object ordinary) {
        final Map<Class<?>, List<?>> odd = Map.of(Boolean.class, List.of(false), Integer.class, INTEGERS,
                Float.class, NUMBERS, Double.class, List.of(-1.0, 1e300, Double.NaN), Long.class, List.of());
        final List<float[]> arrays = new ArrayList<>(Arrays.asList(null, new float[length(method) - 1]));
        for (float number : NUMBERS) {
            final float[] array = new float[length(method)];
            Arrays.fill(array, number);
            arrays.add(array);
        }
        return odd.getOrDefault(ordinary.getClass(), arrays);
    }

    /** A pattern of the exception that tells an argument off; empty: it is none to refuse. */
    private static String refusal(Method method, int index, Object argument) {
        if (argument == null) {
            return "NullPointerException: \\w+ must not be null";
        }
        final List<Set<?>> bad = BAD_NUMBERS.getOrDefault(method.getName(), List.of(Set.of()));
        final boolean isBad = argument instanceof float[] ? ((float[]) argument).length < length(method)
                : bad.get(Math.min(index, bad.size() - 1)).contains(argument);
        final String size = argument instanceof float[] ? length(method) + " floats, has " + (length(method) - 1) : "";
        return isBad ? "IllegalArgumentException: \\w+ must .*" + size : "";
    }

    /** A pattern of the exception of a method that comes too early or too late; empty: of none. */
    private static String refusalAfter(String[] way, Method method) {
        final String effect = method.getDeclaringClass().getSimpleName();
        final String refusing = way[2].equals("is closed") ? "(?!close).*" : "(render|add|update|build).*";
        final boolean isRefused = effect.matches(way[1]) && method.getName().matches(refusing);
        return isRefused ? "IllegalStateException: " + effect + " " + way[2] + ".*" : "";
    }

    private static void assertOutcome(String expected, Object effect, Method method, Object... arguments)
            throws Exception {
        String outcome = "";
        try {
            method.invoke(effect, arguments);
        } catch (InvocationTargetException exception) {
            outcome = exception.getCause().toString().replaceFirst("^java.lang.", "");
        }
        assertTrue(method + Arrays.deepToString(arguments) + ": " + outcome, outcome.matches(expected));
    }

    /** Calls what an effect has of a name, with as many of the arguments as it takes. */
    static void call(Object effect, String name, Object... arguments) throws ReflectiveOperationException {
        for (Method method : effect.getClass().getMethods()) {
            if (method.getName().equals(name)) {
                method.invoke(effect, Arrays.copyOf(arguments, method.getParameterCount()));
            }
        }
    }

    private static AutoCloseable make(Class<?> type, String way) throws ReflectiveOperationException {
        final AutoCloseable effect = (AutoCloseable) type.getConstructor().newInstance();
        for (String step : way.split(" ")) {
            call(effect, step, 1, 1);
        }
        return effect;
    }

    @Test
    public void statesAllowACallOrSayWhatIsMissing() throws Exception {
        for (Class<?> type : EFFECTS) {
            final AutoCloseable first = make(type, "init setScreenSize");
            assertNotEquals(type + " shares its programs with one that was not deleted", 0, LiveNames.count());
            first.close();
            assertEquals(type + " leaves GL objects", 0, LiveNames.count());
            for (String[] way : WAYS) {
                final AutoCloseable effect = make(type, way[0]);
                for (Method method : publicMethods(type)) {
                    if (way[0].contains("close") || !method.getName().matches("init|setScreen.*|GLContext.*|close")) {
                        assertOutcome(refusalAfter(way, method), effect, method, ordinaryArguments(effect, method));
                    }
                }
                effect.close();
                context.recreate();
            }
        }
    }

    /** Those of the platform and of the C++ classes have the same names; equations and factors are those of the GL. */
    @Test
    public void constantsAreThoseOfTheHeaders() throws Exception {
        final StringBuilder headers = new StringBuilder();
        for (String header : System.getProperty("headers").split(":")) {
            headers.append(Files.readString(Path.of(header)));
        }
        final VectorGraphicRenderer graphics = new VectorGraphicRenderer();
        for (Class<?> type : List.of(VectorGraphicRenderer.class, MetaballRenderer.class, CometRenderer.class)) {
            for (Field constant : type.getFields()) {
                final String name = constant.getName().replaceFirst("FACTOR_|EQUATION_", "GL_(FUNC_)?");
                final Matcher found = Pattern.compile("\\b" + name + "[ =]+(-?\\w+)").matcher(headers);
                assertTrue(name, found.find());
                assertEquals(name, (int) Integer.decode(found.group(found.groupCount())), constant.getInt(null));
                if (constant.getName().startsWith("FACTOR_")) {
                    graphics.setBlendFunction(constant.getInt(null), 0, 0, 0);
                } else if (constant.getName().startsWith("EQUATION_")) {
                    graphics.setBlendEquation(constant.getInt(null));
                }
            }
        }
        graphics.close();
    }

    /** The native methods ignore a null, which stands for an array that Java cannot pin. */
    @Test
    public void argumentsAreTakenOrRefused() throws Exception {
        for (Class<?> type : EFFECTS) {
            for (Method method : type.getDeclaredMethods()) {
                final boolean isNative = Modifier.isNative(method.getModifiers());
                method.setAccessible(true);
                final AutoCloseable effect = make(type, "init setScreenSize");
                final Object[] ordinary = ordinaryArguments(effect, method);
                for (int i = 0; i < ordinary.length; i++) {
                    for (Object value : oddValues(method, ordinary[i])) {
                        final Object[] odd = ordinary.clone();
                        odd[i] = value;
                        if (!isNative || value == null) {
                            assertOutcome(isNative ? "" : refusal(method, i, value), effect, method, odd);
                        }
                    }
                }
                effect.close();
            }
            context.recreate();
        }
    }

    @Test
    public void sizesNeedATextureInitAContextHandlesAnObjectAndDirectionsALength() throws Exception {
        final CometRenderer comets = new CometRenderer();
        final String tooLarge = assertThrows(Exception.class, () -> comets.setScreenSize(1, 1 << 30)).getMessage();
        comets.setScreenSize(1, Integer.parseInt(tooLarge.replaceAll(".* to (\\d+),.*", "$1")));
        comets.close();
        context.close();
        for (Class<?> type : EFFECTS) {
            final Throwable refused = assertThrows(Exception.class, () -> make(type, "init")).getCause();
            assertTrue(refused + "", refused.toString().matches(
                    "java.lang.IllegalStateException: \\w+ needs a GL context .* this thread.*"));
        }
        assertThrows(OutOfMemoryError.class, () -> new Handle("Pond", 0));
        assertThrows(IllegalArgumentException.class, () -> Arguments.requireDirection("light", 0f, -0f, 0f));
    }
}
