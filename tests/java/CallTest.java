package com.vyn.effect.tidalume;

import static org.junit.Assert.*;

import java.lang.reflect.*;
import java.util.*;
import java.util.concurrent.CompletableFuture;
import java.util.stream.*;
import org.junit.Test;

/** Calls of every public method of every effect in any state: they do what they are for or throw and say why. */
public final class CallTest {
    /** They make no textures that a loss of the context could take. */
    private static final Set<Class<?>> KEEP_THEIR_SIZE =
            Set.of(CometRenderer.class, ShallowWaterRenderer.class, VectorGraphicRenderer.class);
    /** Numbers that a method refuses, whichever of its parameters they are for. */
    private static final Map<String, Set<?>> BAD_NUMBERS = Map.of(
            "init", Set.of(0f, -0f, -1f, -Float.MAX_VALUE, Float.POSITIVE_INFINITY, Float.NEGATIVE_INFINITY, Float.NaN),
            "setScreenSize", Set.of(0, -1, Integer.MIN_VALUE),
            "addMetaballs", Set.of(-1, 3, Integer.MAX_VALUE, Integer.MIN_VALUE));

    /** What each effect has gone through that still counts. */
    private final Map<AutoCloseable, Set<String>> states = new HashMap<>();
    private final Set<Method> done = new HashSet<>();

    private static String refusal(Method method, Object argument) {
        if (argument == null) {
            return "NullPointerException: \\w+ must not be null";
        }
        final boolean isBad = argument instanceof float[]
                ? ((float[]) argument).length < Session.length(method)
                : BAD_NUMBERS.getOrDefault(method.getName(), Set.of()).contains(argument);
        return isBad ? "IllegalArgumentException: \\w+ must .*" : "";
    }

    /** A pattern of the exception that a call must end with; empty: none. */
    private static String expected(Set<String> state, Method method, Object[] arguments) {
        final String illegalState = "IllegalStateException: " + method.getDeclaringClass().getSimpleName();
        if (state.contains("close")) { // closing again does nothing
            return method.getName().equals("close") ? "" : illegalState + " is closed";
        }
        if (method.getName().matches("(render|add|update|build).*")) {
            for (String step : List.of("init", "setScreenSize")) {
                if (!state.contains(step)) {
                    return illegalState + " needs " + step + " .*";
                }
            }
        }
        return Arrays.stream(arguments).map(argument -> refusal(method, argument)).filter(text -> !text.isEmpty())
                .collect(Collectors.joining("|"));
    }

    /** The exception that a call ends with; empty: none. */
    private static String outcome(Method method, AutoCloseable effect, Object[] arguments) {
        try {
            method.invoke(effect, arguments);
            return "";
        } catch (InvocationTargetException exception) {
            return exception.getCause().toString().replaceFirst("^java.lang.", "");
        } catch (IllegalAccessException impossible) {
            throw new AssertionError(impossible);
        }
    }

    private void call(Method method, AutoCloseable effect, Object[] arguments) {
        final Set<String> state = states.computeIfAbsent(effect, fresh -> new HashSet<>());
        final String expected = expected(state, method, arguments);
        if (method.getName().equals("init") && !state.contains("close")) {
            final String elsewhere = CompletableFuture.supplyAsync(() -> outcome(method, effect, arguments)).join();
            assertTrue(elsewhere, elsewhere.matches("IllegalStateException: \\w+ needs a GL context .* this thread.*"));
        }
        final String outcome = outcome(method, effect, arguments);
        assertTrue(method + Arrays.toString(arguments) + ": " + outcome, outcome.matches(expected));
        if (outcome.isEmpty()) {
            done.add(method);
            state.addAll(List.of(method.getName(), "ever " + method.getName()));
        }
        if (state.remove("GLContextDestroyed")) {
            final boolean keepsSize = KEEP_THEIR_SIZE.contains(effect.getClass());
            state.removeAll(keepsSize ? Set.of("init") : Set.of("init", "setScreenSize"));
        }
        if (effect instanceof MetaballRenderer && !state.contains("ever init")) {
            state.remove("setScreenSize"); // ignored before there is anything to give a size
        }
    }

    @Test
    public void everyCallWorksOrSaysWhyNot() throws Exception {
        final byte[] choices = new byte[100000];
        new Random(7).nextBytes(choices);
        final Session session = new Session(false, choices, this::call);
        session.run();
        Session.CLASSES.stream().flatMap(effect -> session.methods(effect).stream())
                .forEach(method -> assertTrue("never done: " + method, done.contains(method)));
    }

    @Test
    public void aHandleOfNothingIsRefused() {
        assertThrows(OutOfMemoryError.class, () -> new Handle("Pond", 0));
    }
}
