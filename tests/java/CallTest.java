import static org.junit.Assert.assertEquals;
import static org.junit.Assert.assertThrows;

import com.vyn.effect.tidalume.*;
import com.vyn.effect.tidalume.headless.HeadlessContext;
import java.lang.reflect.*;
import java.util.*;
import org.junit.Test;

/** Random calls of every public method of every effect: exactly the bad ones throw and say why, and none crashes. */
public final class CallTest {
    private static final int STEPS = 30000;
    private static final int MAX_EFFECTS = 6;

    private static final List<Class<? extends AutoCloseable>> CLASSES = List.of(CometRenderer.class,
            IntensityMapBuilder.class, Metaball2DRenderer.class, MetaballRenderer.class, NormalMapBuilder.class,
            ShallowWater.class, ShallowWaterIterative.class, ShallowWaterRenderer.class, VectorGraphicRenderer.class);
    /** They make no textures that a loss of the context could take. */
    private static final Set<Class<?>> KEEP_THEIR_SIZE =
            Set.of(CometRenderer.class, ShallowWaterRenderer.class, VectorGraphicRenderer.class);
    /** The array parameters by method; of all others it is one color. */
    private static final Map<String, List<String>> ARRAYS = Map.of("addDrop", List.of("center"),
            "addDropLine", List.of("center", "center2"), "renderRadialGradient", List.of("beginColor", "endColor"));

    private static final float[] ODD_FLOATS = {0, -0.0f, -1, 1e-30f, Float.MIN_VALUE, Float.MAX_VALUE,
        -Float.MAX_VALUE, Float.POSITIVE_INFINITY, Float.NEGATIVE_INFINITY, Float.NaN};
    private static final int[] ODD_INTS = {-1, Integer.MAX_VALUE, Integer.MIN_VALUE, 1 << 20};

    private final Random random = new Random(7);
    private final List<Effect> effects = new ArrayList<>();
    private final Set<String> calledWell = new TreeSet<>();
    private final Set<String> refusals = new TreeSet<>();

    /** An effect with what its caller has to know about it. */
    private static final class Effect {
        final AutoCloseable object;
        boolean closed;
        boolean initialized;
        boolean wasInitialized;
        boolean sized;

        Effect(AutoCloseable object) {
            this.object = object;
        }

        String stateError(String method) {
            final String subject = "IllegalStateException: " + object.getClass().getSimpleName();
            if (closed) {
                return method.equals("close") ? "" : subject + " is closed";
            }
            if (!method.matches("(render|add|update|build).*") || initialized && sized) {
                return "";
            }
            return subject + " needs " + (initialized ? "setScreenSize first" : "init in the current GL context first");
        }

        void remember(String method) {
            final boolean forgets = method.equals("GLContextDestroyed");
            initialized = method.equals("init") || initialized && !forgets;
            wasInitialized |= initialized;
            if (method.equals("setScreenSize")) {
                sized = wasInitialized || !(object instanceof MetaballRenderer); // which has nothing to size before
            } else if (forgets) {
                sized &= KEEP_THEIR_SIZE.contains(object.getClass());
            }
            closed |= method.equals("close");
        }
    }

    /** The arguments of a call and the exception that they must cause, the first of several; empty: none. */
    private final class Call {
        final String method;
        final List<Object> arguments = new ArrayList<>();
        String error;
        private int arrays;

        Call(Method method, String stateError) {
            this.method = method.getName();
            error = stateError;
            if (this.method.equals("addMetaballs")) {
                final int count = odd() ? ODD_INTS[random.nextInt(ODD_INTS.length)] : random.nextInt(4);
                refuse(count < 0, "IllegalArgumentException: count must be at least 0, is " + count);
                Collections.addAll(arguments, array("metaballs", Math.max(0, 6L * count - 2)), count);
                return;
            }
            for (Class<?> type : method.getParameterTypes()) {
                arguments.add(argument(type));
            }
        }

        private void refuse(boolean bad, String exception) {
            error = bad && error.isEmpty() ? exception : error;
        }

        private Object argument(Class<?> type) {
            if (type == float[].class) {
                final String name = ARRAYS.getOrDefault(method, List.of("color")).get(arrays++);
                return array(name, name.startsWith("center") ? 2 : 4);
            } else if (type == int.class) {
                return integer();
            } else if (type == boolean.class) {
                return random.nextBoolean();
            }
            final float value = number();
            refuse(method.equals("init") && !(value > 0 && value < Float.POSITIVE_INFINITY),
                    "IllegalArgumentException: quality must be a finite number above 0, is " + value);
            return type == double.class ? (Object) (value / 100.0) : (Object) value;
        }

        private float[] array(String name, long needed) {
            final boolean isNull = odd();
            final boolean isShort = needed > 1000 || needed > 0 && odd();
            final float[] values = new float[(int) (isShort ? Math.min(needed - 1, 22) : needed + random.nextInt(2))];
            refuse(isNull, "NullPointerException: " + name + " must not be null");
            refuse(isShort, "IllegalArgumentException: " + name + " must hold at least " + needed + " floats, has "
                    + values.length);
            for (int i = 0; i < values.length; i++) {
                values[i] = number();
            }
            return isNull ? null : values;
        }

        private int integer() {
            // A huge number of passes is no error, only long.
            final boolean odd = odd() && !method.equals("setIterationCount");
            final int value = odd ? ODD_INTS[random.nextInt(ODD_INTS.length)] : random.nextInt(100) - 1;
            refuse(method.equals("setScreenSize") && value < 1, "IllegalArgumentException: "
                    + (arguments.isEmpty() ? "width" : "height") + " must be at least 1, is " + value);
            return value;
        }

        private float number() {
            return odd() ? ODD_FLOATS[random.nextInt(ODD_FLOATS.length)] : random.nextFloat() * 120;
        }

        private boolean odd() {
            return random.nextInt(6) == 0;
        }
    }

    private static Method[] methods(Class<?> of) {
        return Arrays.stream(of.getDeclaredMethods()).filter(method -> Modifier.isPublic(method.getModifiers()))
                .sorted(Comparator.comparing(Method::toString)).toArray(Method[]::new);
    }

    private static String error(Object object, Method method, List<Object> arguments) throws IllegalAccessException {
        try {
            method.invoke(object, arguments.toArray());
            return "";
        } catch (InvocationTargetException exception) {
            return exception.getCause().getClass().getSimpleName() + ": " + exception.getCause().getMessage();
        }
    }

    private void act() throws IllegalAccessException {
        final Effect effect = effects.get(random.nextInt(effects.size()));
        final Method[] methods = methods(effect.object.getClass());
        final Method method = methods[random.nextInt(methods.length)];
        if (method.getName().equals("close") && random.nextInt(8) > 0) {
            return;
        }
        final Call call = new Call(method, effect.stateError(method.getName()));
        assertEquals(method + " of " + call.arguments, call.error, error(effect.object, method, call.arguments));
        if (call.error.isEmpty()) {
            effect.remember(method.getName());
            calledWell.add(method.toString());
        } else {
            refusals.add(method + ": " + call.error.replaceAll(" (at least|finite) .*", ""));
        }
    }

    private void loseContext(HeadlessContext context) throws ReflectiveOperationException {
        for (Effect effect : effects) {
            if (!effect.closed) {
                effect.object.getClass().getMethod("GLContextDestroyed").invoke(effect.object);
                effect.remember("GLContextDestroyed");
            }
        }
        context.recreate();
    }

    private void replaceOne() throws Exception {
        if (effects.size() == MAX_EFFECTS) {
            effects.remove(random.nextInt(MAX_EFFECTS)).object.close();
        }
        effects.add(new Effect(CLASSES.get(random.nextInt(CLASSES.size())).getConstructor().newInstance()));
    }

    @Test
    public void badCallsThrowAndNoneCrashes() throws Exception {
        try (HeadlessContext context = HeadlessContext.create(97, 61)) {
            for (int step = 0; step < STEPS; step++) {
                if (effects.isEmpty() || random.nextInt(60) == 0) {
                    replaceOne();
                } else if (random.nextInt(500) == 0) {
                    loseContext(context);
                } else {
                    act();
                }
            }
            for (Effect effect : effects) {
                effect.object.close();
            }
        }
        final Set<String> all = new TreeSet<>();
        CLASSES.forEach(type -> Arrays.stream(methods(type)).forEach(method -> all.add(method.toString())));
        assertEquals(all, calledWell);
        // 69 methods when closed, 22 before init and before setScreenSize, 14 arrays null and short, 18 sides of
        // a screen, two qualities, one count.
        assertEquals(String.join("\n", refusals), 69 + 2 * 22 + 2 * 14 + 18 + 2 + 1, refusals.size());
    }

    @Test
    public void withoutNativeMemoryThereIsNoEffect() throws ReflectiveOperationException {
        final Constructor<?> handle = Class.forName("com.vyn.effect.tidalume.Handle")
                .getDeclaredConstructor(String.class, long.class);
        handle.setAccessible(true);
        final Throwable thrown = assertThrows(InvocationTargetException.class, () -> handle.newInstance("Pond", 0L));
        assertEquals("java.lang.OutOfMemoryError: no native memory for a Pond", thrown.getCause().toString());
    }
}
