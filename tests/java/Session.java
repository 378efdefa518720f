package com.vyn.effect.tidalume;

import com.vyn.effect.tidalume.headless.HeadlessContext;
import java.io.IOException;
import java.lang.reflect.*;
import java.nio.ByteBuffer;
import java.util.*;
import java.util.jar.JarEntry;
import java.util.jar.JarFile;
import java.util.stream.IntStream;

/**
 * Effects of all classes and calls of their methods, found by reflection: in any order, with ordinary and odd
 * arguments, on a GL context that is lost now and then.
 */
final class Session {
    /** Makes a call, and judges how it ends. */
    interface Caller {
        void call(Method method, AutoCloseable effect, Object[] arguments) throws ReflectiveOperationException;
    }

    /** The effects of the library's jar, in the order of their names. */
    static final List<Class<? extends AutoCloseable>> CLASSES = effectClasses();
    private static final int MOST_EFFECTS = 6;
    /** The first textures of a context, which live as long as it does. */
    private static final int PICTURES = 5;
    /** At least between two losses of the context: making one takes as long as many calls. */
    private static final int STEPS_PER_CONTEXT = 20;
    /** Above the GL names that a driver gives; where it is bound, the driver goes on from it. */
    private static final int INVENTED = 1000;

    /** Stays current, for who looks at what a session has left in it. */
    private static final HeadlessContext CONTEXT = HeadlessContext.create(64, 64);

    private final boolean isNative;
    private final ByteBuffer choices;
    private final Caller caller;
    private final List<AutoCloseable> effects = new ArrayList<>();
    private int stepsInContext = STEPS_PER_CONTEXT;

    /**
     * @param isNative calls the native methods, with live handles, arrays of the length that is read or none, and
     *     counts within them; else the public ones, which check what they are given
     * @param choices each of them one byte; the session ends with them
     */
    Session(boolean isNative, byte[] choices, Caller caller) {
        this.isNative = isNative;
        this.choices = ByteBuffer.wrap(choices);
        this.caller = caller;
    }

    private static List<Class<? extends AutoCloseable>> effectClasses() {
        final List<Class<? extends AutoCloseable>> classes = new ArrayList<>();
        final String jar = GlobalProperty.class.getProtectionDomain().getCodeSource().getLocation().getPath();
        try (JarFile library = new JarFile(jar)) {
            for (JarEntry entry : Collections.list(library.entries())) {
                if (entry.getName().endsWith(".class")) {
                    final Class<?> found = Class.forName(entry.getName().replace('/', '.').replace(".class", ""));
                    if (AutoCloseable.class.isAssignableFrom(found) && Modifier.isPublic(found.getModifiers())) {
                        classes.add(found.asSubclass(AutoCloseable.class));
                    }
                }
            }
        } catch (IOException | ClassNotFoundException e) {
            throw new AssertionError(e);
        }
        classes.sort(Comparator.comparing(Class::getName));
        return classes;
    }

    /** Calls of the native methods, with the settings at their defaults; an exception of one comes through. */
    static void playNative(byte[] choices) throws Exception {
        GlobalProperty.setDEBUGLOG(false);
        GlobalProperty.setBINARYSHADER(false);
        GlobalProperty.setROOTDIR("");
        new Session(true, choices, Method::invoke).run();
    }

    /** Makes all calls, and frees what it has made. */
    void run() throws Exception {
        newContext();
        while (choices.hasRemaining()) {
            step();
        }
        for (AutoCloseable effect : effects) {
            effect.close();
        }
        IntStream.rangeClosed(1, PICTURES).forEach(CONTEXT::deleteTexture);
    }

    private void step() throws Exception {
        stepsInContext++;
        final int choice = below(256);
        if (effects.isEmpty() || choice < 24 && effects.size() < MOST_EFFECTS) {
            effects.add(pick(CLASSES).getConstructor().newInstance());
            if (below(4) > 0) { // else calls come too early
                call(effects.get(effects.size() - 1), "init", "setScreenSize");
            }
        } else if (choice < 36) {
            effects.remove(0).close();
        } else if (choice < 40 && stepsInContext > STEPS_PER_CONTEXT) {
            stepsInContext = 0;
            for (AutoCloseable effect : effects) {
                call(effect, "GLContextDestroyed");
            }
            newContext();
        } else if (choice < 44 && isNative) {
            call(null, pick(methods(GlobalProperty.class)));
        } else {
            final AutoCloseable effect = pick(effects);
            final Method method = pick(methods(effect.getClass()));
            if (!method.getName().equals("GLContextDestroyed")) { // which goes with a loss of the context
                call(effect, method);
            }
        }
    }

    private void newContext() {
        CONTEXT.recreate();
        for (int i = 0; i < PICTURES; i++) {
            CONTEXT.createTexture(HeadlessContext.GL_RGBA8, 2, 1, new float[] {1, 0, 0, 1, 0, 1, 0, 0.5f});
        }
    }

    /** The methods above or below the border, always in one order. */
    List<Method> methods(Class<?> type) {
        final List<Method> methods = new ArrayList<>(List.of(type.getDeclaredMethods()));
        methods.removeIf(method -> Modifier.isNative(method.getModifiers()) != isNative
                || method.getName().matches("Alloc|Free"));
        methods.sort(Comparator.comparing(Method::getName));
        return methods;
    }

    private void call(AutoCloseable effect, String... names) throws ReflectiveOperationException {
        for (Method method : methods(effect.getClass())) {
            if (List.of(names).contains(method.getName())) {
                call(effect, method);
            }
        }
    }

    private void call(AutoCloseable effect, Method method) throws ReflectiveOperationException {
        final Object[] arguments = new Object[method.getParameterCount()];
        for (int i = 0; i < arguments.length; i++) {
            arguments[i] = argument(effect, method, method.getParameterTypes()[i]);
        }
        method.setAccessible(true);
        caller.call(method, effect, arguments);
    }

    private int below(int limit) {
        return choices.hasRemaining() ? (choices.get() & 0xFF) % limit : 0;
    }

    private <T> T pick(List<T> elements) {
        return elements.get(below(elements.size()));
    }

    @SafeVarargs
    private <T> T pick(T... elements) {
        return elements[below(elements.length)];
    }

    private boolean isOdd() {
        return below(6) == 5;
    }

    private Object argument(AutoCloseable effect, Method method, Class<?> type) throws ReflectiveOperationException {
        switch (type.getSimpleName()) {
            case "boolean":
                return pick(true, false);
            case "int":
                return integer(method.getName());
            case "float":
                return number();
            case "double":
                return number() / 100.0;
            case "float[]":
                return floats(length(method));
            case "String":
                return pick("", "/absent/", "/\u00e9\0\ud83d\ude00/", "x".repeat(1024), null);
            default:
                final Field handle = effect.getClass().getDeclaredField("handle");
                handle.setAccessible(true);
                return ((Handle) handle.get(effect)).open();
        }
    }

    private int integer(String method) {
        switch (method) {
            case "setScreenSize":
                return isOdd() ? pick(0, -1, 1 << 20, Integer.MAX_VALUE, Integer.MIN_VALUE) : 1 + below(160);
            case "setIterationCount": // a huge number of passes is no error, only long
                return below(18) - 2;
            case "addMetaballs":
                return isNative ? below(3) : pick(2, 2, -1, 3, Integer.MAX_VALUE, Integer.MIN_VALUE);
            case "push":
                return isOdd() ? pick(-1, Integer.MAX_VALUE, Integer.MIN_VALUE) : below(9);
            case "setBlendEquation":
            case "setBlendFunction":
                return pick(0, 1, 0x0302, 0x0303, 0x8003, 0x8006, 0x8008, 0x800B, -1, 7);
            // Names that are kept must not be those of effects: GL would make them anew when they are bound.
            case "setDrawFrameBuffer":
                return pick(0, INVENTED);
            case "setTexture":
                return pick(0, PICTURES, INVENTED);
            default: // a texture, or a rotation, for which such numbers do too
                return pick(0, 1, 2, 3, 4, PICTURES, INVENTED, textureOf(pick(effects)));
        }
    }

    private static int textureOf(AutoCloseable effect) {
        try {
            return (int) effect.getClass().getMethod("getTexture").invoke(effect);
        } catch (ReflectiveOperationException hasNoneOrIsClosed) {
            return 0;
        }
    }

    /** How many floats an array of the method must hold: two metaballs, a point or a color. */
    static int length(Method method) {
        return method.getName().equals("addMetaballs") ? 10 : method.getName().startsWith("addDrop") ? 2 : 4;
    }

    private float[] floats(int length) {
        if (isOdd()) {
            return isNative ? null : pick(null, new float[length - 1]);
        }
        final float[] floats = new float[length];
        for (int i = 0; i < length; i++) {
            floats[i] = number();
        }
        return floats;
    }

    private float number() {
        return isOdd() ? pick(0f, -0f, -1f, 1e-30f, 65504f, Float.MIN_VALUE, Float.MAX_VALUE, -Float.MAX_VALUE,
                Float.POSITIVE_INFINITY, Float.NEGATIVE_INFINITY, Float.NaN) : below(256) / 2f;
    }
}
