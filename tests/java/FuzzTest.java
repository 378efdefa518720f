import static org.junit.Assert.assertEquals;
import static org.junit.Assert.assertTrue;

import com.vyn.effect.tidalume.CometRenderer;
import com.vyn.effect.tidalume.GlobalProperty;
import com.vyn.effect.tidalume.IntensityMapBuilder;
import com.vyn.effect.tidalume.Metaball2DRenderer;
import com.vyn.effect.tidalume.MetaballRenderer;
import com.vyn.effect.tidalume.NormalMapBuilder;
import com.vyn.effect.tidalume.ShallowWater;
import com.vyn.effect.tidalume.ShallowWaterIterative;
import com.vyn.effect.tidalume.ShallowWaterRenderer;
import com.vyn.effect.tidalume.VectorGraphicRenderer;
import java.lang.reflect.InvocationTargetException;
import java.lang.reflect.Method;
import java.lang.reflect.Modifier;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.Comparator;
import java.util.HashSet;
import java.util.List;
import java.util.Random;
import java.util.Set;
import org.junit.Test;

/** Random calls of every public method with good and bad arguments: exactly the bad ones throw, and none crashes. */
public final class FuzzTest extends JavaTest {
    private static final int STEPS = 20000;
    private static final int MAX_OBJECTS = 8;

    private static final Class<?>[] CLASSES = {CometRenderer.class, IntensityMapBuilder.class,
        Metaball2DRenderer.class, MetaballRenderer.class, NormalMapBuilder.class, ShallowWater.class,
        ShallowWaterIterative.class, ShallowWaterRenderer.class, VectorGraphicRenderer.class};
    private static final float[] ODD_FLOATS = {0, -0.0f, -1, 1e-30f, Float.MIN_VALUE, Float.MAX_VALUE,
        -Float.MAX_VALUE, Float.POSITIVE_INFINITY, Float.NEGATIVE_INFINITY, Float.NaN};
    private static final int[] ODD_INTS = {-1, Integer.MAX_VALUE, Integer.MIN_VALUE, 1 << 20};

    private final Random random = new Random(6);
    private final List<Subject> subjects = new ArrayList<>();
    private int thrown;

    /** An object with what its caller has to know about it. */
    private static final class Subject {
        final AutoCloseable object;
        boolean closed;
        boolean initialized;
        boolean wasInitialized;
        boolean sized;
        boolean mayBeUnsized; // a loss of the context takes the targets of some classes

        Subject(AutoCloseable object) {
            this.object = object;
        }
    }

    /** A call, and the exceptions of which it must throw one; it must throw none where there is none. */
    private static final class Call {
        final List<Object> arguments = new ArrayList<>();
        final Set<Class<? extends Throwable>> expected = new HashSet<>();
    }

    private static Method[] methods(Class<?> of) {
        return Arrays.stream(of.getDeclaredMethods())
                .filter(method -> Modifier.isPublic(method.getModifiers()))
                .sorted(Comparator.comparing(Method::toString))
                .toArray(Method[]::new);
    }

    private static boolean draws(Method method) {
        return method.getName().matches("(render|add|update|build).*");
    }

    private boolean odd() {
        return random.nextInt(6) == 0;
    }

    private float number() {
        return odd() ? ODD_FLOATS[random.nextInt(ODD_FLOATS.length)] : random.nextFloat() * 120;
    }

    private float[] floats(int length) {
        final float[] values = new float[length];
        for (int i = 0; i < length; i++) {
            values[i] = number();
        }
        return values;
    }

    private int screenSize(Call call) {
        final int size = odd() ? ODD_INTS[random.nextInt(ODD_INTS.length)] : random.nextInt(160);
        if (size < 1) {
            call.expected.add(IllegalArgumentException.class);
        }
        return size;
    }

    private float quality(Call call) {
        final float quality = number();
        if (!(quality > 0) || Float.isInfinite(quality)) {
            call.expected.add(IllegalArgumentException.class);
        }
        return quality;
    }

    private float[] array(int needed, Call call) {
        if (odd()) {
            call.expected.add(NullPointerException.class);
            return null;
        }
        final float[] array = floats(odd() ? random.nextInt(needed + 1) : needed + random.nextInt(2));
        if (array.length < needed) {
            call.expected.add(IllegalArgumentException.class);
        }
        return array;
    }

    private void addBallsAndCount(Call call) {
        final int count = random.nextInt(5) - 1;
        call.arguments.add(array(Math.max(0, 6 * count - 2), call));
        call.arguments.add(count);
        if (count < 0) {
            call.expected.add(IllegalArgumentException.class);
        }
    }

    private int code(Method method) {
        // A huge number of passes is no error, only long.
        if (odd() && !method.getName().equals("setIterationCount")) {
            return ODD_INTS[random.nextInt(ODD_INTS.length)];
        }
        return random.nextInt(10) - 1;
    }

    private void addArgument(Method method, Class<?> type, Call call) {
        final boolean colors = method.getDeclaringClass() == VectorGraphicRenderer.class
                || method.getDeclaringClass() == Metaball2DRenderer.class;
        if (type == float[].class) {
            call.arguments.add(array(colors ? 4 : 2, call));
        } else if (type == float.class) {
            call.arguments.add(method.getName().equals("init") ? quality(call) : number());
        } else if (type == int.class) {
            call.arguments.add(method.getName().equals("setScreenSize") ? screenSize(call) : code(method));
        } else if (type == double.class) {
            call.arguments.add((double) number() / 100);
        } else {
            assertEquals(boolean.class, type);
            call.arguments.add(random.nextBoolean());
        }
    }

    private Call call(Method method, Subject subject) {
        final Call call = new Call();
        if (method.getName().equals("addMetaballs")) {
            addBallsAndCount(call);
        } else {
            for (Class<?> type : method.getParameterTypes()) {
                addArgument(method, type, call);
            }
        }
        if (subject.closed && !method.getName().equals("close")
                || draws(method) && !(subject.initialized && subject.sized)) {
            call.expected.add(IllegalStateException.class);
        }
        return call;
    }

    private Throwable outcome(Method method, Subject subject, Call call) throws IllegalAccessException {
        try {
            method.invoke(subject.object, call.arguments.toArray());
            return null;
        } catch (InvocationTargetException exception) {
            return exception.getCause();
        }
    }

    private void act(int step) throws ReflectiveOperationException {
        final Subject subject = subjects.get(random.nextInt(subjects.size()));
        final Method[] methods = methods(subject.object.getClass());
        final Method method = methods[random.nextInt(methods.length)];
        if (method.getName().equals("close") && random.nextInt(3) > 0) {
            return;
        }
        final Call call = call(method, subject);
        final Throwable outcome = outcome(method, subject, call);
        final String what = "step " + step + ": " + method + " of " + call.arguments + " gave " + outcome;
        if (outcome == null) {
            assertTrue(what, call.expected.isEmpty());
            remember(method, subject);
        } else if (!(subject.mayBeUnsized && draws(method) && outcome instanceof IllegalStateException)) {
            assertTrue(what, call.expected.contains(outcome.getClass()));
            assertTrue(what, outcome.getMessage().length() > 10);
            thrown++;
        }
    }

    private static void remember(Method method, Subject subject) {
        switch (method.getName()) {
            case "init":
                subject.initialized = true;
                subject.wasInitialized = true;
                break;
            case "setScreenSize":
                // Before its first init it has nothing to size.
                subject.sized = subject.wasInitialized || !(subject.object instanceof MetaballRenderer);
                subject.mayBeUnsized = false;
                break;
            case "GLContextDestroyed":
                subject.initialized = false;
                subject.mayBeUnsized = subject.sized;
                break;
            case "close":
                subject.closed = true;
                break;
            default:
                break;
        }
    }

    private void loseContext() throws ReflectiveOperationException {
        for (Subject subject : subjects) {
            final Method forget = subject.object.getClass().getMethod("GLContextDestroyed");
            if (!subject.closed) {
                forget.invoke(subject.object);
                remember(forget, subject);
            }
        }
        context.recreate();
    }

    private void replaceOne() throws Exception {
        if (subjects.size() == MAX_OBJECTS) {
            subjects.remove(random.nextInt(MAX_OBJECTS)).object.close();
        }
        final Class<?> of = CLASSES[random.nextInt(CLASSES.length)];
        subjects.add(new Subject((AutoCloseable) of.getConstructor().newInstance()));
    }

    @Test
    public void badCallsThrowAndNoneCrashes() throws Exception {
        for (int step = 0; step < STEPS; step++) {
            if (subjects.isEmpty() || random.nextInt(30) == 0) {
                replaceOne();
            } else if (random.nextInt(500) == 0) {
                loseContext();
            } else {
                act(step);
            }
        }
        for (Subject subject : subjects) {
            subject.object.close();
        }
        assertTrue("only " + thrown + " bad calls", thrown > STEPS / 10);
    }

    @Test
    public void settingsTakeAnyValue() {
        final String longest = "x".repeat(1023);
        for (String directory : new String[] {null, longest + "x", longest, "\u0000", "\uD83D\uDE00", "é/", ""}) {
            GlobalProperty.setROOTDIR(directory);
        }
        GlobalProperty.setDEBUGLOG(true);
        GlobalProperty.setDEBUGLOG(false);
    }
}
