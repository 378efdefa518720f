package com.vyn.effect.tidalume;

import static org.junit.Assert.*;

import com.vyn.effect.tidalume.headless.HeadlessContext;
import java.lang.reflect.*;
import java.util.*;
import org.junit.*;

/** Every public method of every effect, found by reflection: bad calls throw and say why, and none crashes. */
public final class CallTest {
    private static final List<Class<? extends AutoCloseable>> CLASSES = List.of(CometRenderer.class,
            IntensityMapBuilder.class, Metaball2DRenderer.class, MetaballRenderer.class, NormalMapBuilder.class,
            ShallowWater.class, ShallowWaterIterative.class, ShallowWaterRenderer.class, VectorGraphicRenderer.class);
    /** They make no textures that a loss of the context could take. */
    private static final Set<Class<?>> KEEP_THEIR_SIZE =
            Set.of(CometRenderer.class, ShallowWaterRenderer.class, VectorGraphicRenderer.class);

    private static final float INFINITY = Float.POSITIVE_INFINITY;
    private static final float MAX = Float.MAX_VALUE;
    /** Values by type; the first one is good for every method. */
    private static final Map<Class<?>, List<?>> VALUES = Map.of(
            boolean.class, List.of(true, false),
            int.class, List.of(2, 1, 3, 64, 97, 0, -1, 1 << 20, Integer.MAX_VALUE, Integer.MIN_VALUE),
            float.class, List.of(8f, 1f, 0.5f, 40f, 0f, -0f, -1f, 1e-30f, Float.MIN_VALUE, MAX, -MAX, INFINITY,
                    -INFINITY, Float.NaN),
            double.class, List.of(0.5, 0.1, 0.95, -1.0, 1e300, Double.NEGATIVE_INFINITY, Double.NaN),
            float[].class, Arrays.asList(new float[10], new float[] {40, 20, 8, 1, 0, 0, 60, 30, 20, 1},
                    new float[] {MAX, Float.NaN, -1, INFINITY}, new float[] {1, 2, 3}, new float[1], null));
    /** Numbers that a method refuses, whichever of its parameters they are for. */
    private static final Map<String, List<?>> BAD_NUMBERS = Map.of("init", List.of(0f, -1f, INFINITY, Float.NaN),
            "setScreenSize", List.of(0, Integer.MIN_VALUE),
            "addMetaballs", List.of(-1, 3, Integer.MAX_VALUE, Integer.MIN_VALUE));

    private final HeadlessContext context = HeadlessContext.create(97, 61);

    @After
    public void closeContext() {
        context.close();
    }

    /** All but close, by name. */
    private static SortedMap<String, Method> methods(AutoCloseable effect) {
        final SortedMap<String, Method> methods = new TreeMap<>();
        for (Method method : effect.getClass().getDeclaredMethods()) {
            if (Modifier.isPublic(method.getModifiers()) && !method.getName().equals("close")) {
                assertNull("an overload", methods.put(method.getName(), method));
            }
        }
        return methods;
    }

    /** How many floats an array of the method holds at least: two metaballs, a point or a color. */
    private static int floats(Method method) {
        return method.getName().equals("addMetaballs") ? 10 : method.getName().startsWith("addDrop") ? 2 : 4;
    }

    private static Object[] goodArguments(Method method) {
        return Arrays.stream(method.getParameterTypes())
                .map(type -> type == float[].class ? new float[floats(method)] : VALUES.get(type).get(0)).toArray();
    }

    private static List<?> badValues(Method method, Class<?> type) {
        return type == float[].class ? Arrays.asList(null, new float[floats(method) - 1])
                : BAD_NUMBERS.getOrDefault(method.getName(), List.of());
    }

    private static void assertOutcome(String pattern, Object effect, Method method, Object[] arguments)
            throws IllegalAccessException {
        String outcome = "no exception";
        try {
            method.invoke(effect, arguments);
        } catch (InvocationTargetException exception) {
            outcome = exception.getCause().toString();
        }
        assertTrue(method + Arrays.toString(arguments) + ": " + outcome, outcome.matches(pattern));
    }

    private static void callWell(AutoCloseable effect, String name) throws IllegalAccessException {
        final Method method = methods(effect).get(name);
        assertOutcome("no exception", effect, method, goodArguments(method));
    }

    /** @param reason why drawing calls throw; empty: they do not */
    private static void assertState(String reason, AutoCloseable effect, Method method) throws IllegalAccessException {
        final boolean draws = method.getName().matches("(render|add|update|build).*");
        final boolean isRefused = draws ? !reason.isEmpty() : reason.equals("is closed");
        final String exception = "java.lang.IllegalStateException: " + effect.getClass().getSimpleName() + " " + reason + ".*";
        assertOutcome(isRefused ? exception : "no exception", effect, method, goodArguments(method));
    }

    private static void assertRefusesBadValues(AutoCloseable effect, Method method) throws IllegalAccessException {
        for (int i = 0; i < method.getParameterCount(); i++) {
            for (Object bad : badValues(method, method.getParameterTypes()[i])) {
                final Object[] arguments = goodArguments(method);
                arguments[i] = bad;
                final String exception = bad == null ? "NullPointerException" : "IllegalArgumentException";
                assertOutcome("java.lang." + exception + ": \\w+ must .*", effect, method, arguments);
            }
        }
    }

    @Test
    public void badCallsThrow() throws Exception {
        for (Class<? extends AutoCloseable> type : CLASSES) {
            final AutoCloseable model = type.getConstructor().newInstance();
            for (Method method : methods(model).values()) {
                final AutoCloseable effect = type.getConstructor().newInstance();
                final String afterLoss = KEEP_THEIR_SIZE.contains(type) ? "" : "needs setScreenSize";
                assertState("needs init", effect, method);
                for (String[] step : new String[][] {{"init", "needs setScreenSize"}, {"setScreenSize", ""},
                    {"GLContextDestroyed", "needs init"}, {"init", afterLoss}, {"setScreenSize", ""}}) {
                    callWell(effect, step[0]);
                    assertState(step[1], effect, method);
                }
                assertRefusesBadValues(effect, method);
                effect.close();
                assertState("is closed", effect, method);
                effect.close();
            }
            model.close();
        }
        assertThrows(OutOfMemoryError.class, () -> new Handle("Pond", 0));
    }

    @Test
    public void noCallCrashes() throws Exception {
        final Random random = new Random(7);
        final List<AutoCloseable> effects = new ArrayList<>();
        for (int step = 0; step < 30000; step++) {
            if (effects.size() == 6 && random.nextInt(60) == 0) {
                effects.remove(random.nextInt(6)).close();
            }
            if (effects.size() < 6) {
                effects.add(CLASSES.get(random.nextInt(CLASSES.size())).getConstructor().newInstance());
            }
            if (random.nextInt(500) == 0) {
                for (AutoCloseable effect : effects) {
                    callWell(effect, "GLContextDestroyed");
                }
                context.recreate();
            }
            final AutoCloseable effect = effects.get(random.nextInt(effects.size()));
            final List<Method> methods = List.copyOf(methods(effect).values());
            final Method method = methods.get(random.nextInt(methods.size()));
            final Object[] arguments = Arrays.stream(method.getParameterTypes()).map(VALUES::get)
                    .map(values -> values.get(random.nextInt(values.size()))).toArray();
            // A huge number of passes is no error, only long.
            if (!method.getName().equals("setIterationCount")) {
                assertOutcome("no exception|java.lang.\\w+: \\w+ (needs|must) .*", effect, method, arguments);
            }
        }
        for (AutoCloseable effect : effects) {
            effect.close();
        }
    }
}
