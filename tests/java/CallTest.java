package com.vyn.effect.tidalume;

import static org.junit.Assert.*;

import com.vyn.effect.tidalume.headless.HeadlessContext;
import com.vyn.effect.tidalume.views.LiveNames;
import java.lang.reflect.*;
import java.nio.file.*;
import java.util.*;
import java.util.jar.*;
import java.util.regex.*;
import java.util.stream.*;
import org.junit.*;

/** Every public method of every effect, in every state and with odd arguments: it works, or throws and says why. */
public final class CallTest {
    /** Ways from a new effect; in the state that each leads to, all methods are called. */
    private static final String[] WAYS = {"", "setScreenSize", "init", "setScreenSize init", "init setScreenSize",
        "init setScreenSize GLContextDestroyed", "init setScreenSize GLContextDestroyed init",
        "init setScreenSize GLContextDestroyed setScreenSize init", "close", "init setScreenSize close"};
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

    /** The effects of the library's jar. */
    private static List<Class<?>> effects() throws Exception {
        final List<Class<?>> classes = new ArrayList<>();
        final String jar = GlobalProperty.class.getProtectionDomain().getCodeSource().getLocation().getPath();
        try (JarFile library = new JarFile(jar)) {
            for (JarEntry entry : Collections.list(library.entries())) {
                if (entry.getName().endsWith(".class")) {
                    classes.add(Class.forName(entry.getName().replace('/', '.').replace(".class", "")));
                }
            }
        }
        classes.removeIf(found -> !AutoCloseable.class.isAssignableFrom(found)
                || found.getPackage() != GlobalProperty.class.getPackage());
        return classes;
    }

    /** Those above and below the border to the native side. */
    private static Stream<Method> methods(Class<?> type) {
        return Arrays.stream(type.getDeclaredMethods()).filter(method -> !method.getName().matches("Alloc|Free"))
                .peek(method -> method.setAccessible(true));
    }

    private static List<Method> publicMethods(Class<?> type) {
        return methods(type).filter(method -> Modifier.isPublic(method.getModifiers())).collect(Collectors.toList());
    }

    /** How many floats an array of the method must hold: a point, a metaball or a color. */
    private static int length(Method method) {
        return method.getName().startsWith("addDrop") ? 2 : 4;
    }

    private static Object[] ordinaryArguments(Object effect, Method method) throws Exception {
        final Field handle = effect.getClass().getDeclaredField("handle");
        handle.setAccessible(true);
        final Map<Class<?>, Object> values = Map.of(boolean.class, true,
                int.class, method.getName().equals("setBlendEquation") ? VectorGraphicRenderer.EQUATION_MIN : 1, float.class, 0.5f,
                double.class, 0.5, float[].class, new float[length(method)]);
        final Object[] arguments = new Object[method.getParameterCount()];
        for (int i = 0; i < arguments.length; i++) {
            final Class<?> type = method.getParameterTypes()[i];
            arguments[i] = type == long.class ? ((Handle) handle.get(effect)).open() : values.get(type);
        }
        return arguments;
    }

    private static List<?> oddValues(Method method, Object ordinary) {
        if (!(ordinary instanceof float[])) {
            return ordinary instanceof Integer ? INTEGERS : ordinary instanceof Float ? NUMBERS
                    : ordinary instanceof Double ? List.of(-1.0, 1e300, Double.NaN) : List.of(false);
        }
        final List<float[]> arrays = new ArrayList<>(Arrays.asList(null, new float[length(method) - 1]));
        for (float number : NUMBERS) {
            arrays.add(new float[length(method)]);
            Arrays.fill(arrays.get(arrays.size() - 1), number);
        }
        return arrays;
    }

    /** A pattern of the exception that tells an argument off; empty: it is none to refuse. */
    private static String refusal(Method method, int index, Object argument) {
        if (argument == null) {
            return "NullPointerException: \\w+ must not be null";
        }
        final List<Set<?>> bad = BAD_NUMBERS.getOrDefault(method.getName(), List.of(Set.of()));
        final boolean isBad = argument instanceof float[] ? ((float[]) argument).length < length(method)
                : bad.get(Math.min(index, bad.size() - 1)).contains(argument);
        return isBad ? "IllegalArgumentException: \\w+ must .*" : "";
    }

    /** A pattern of the exception of a method that comes too early or too late; empty: of none. */
    private static String refusalAfter(List<String> way, Method method) {
        final Class<?> effect = method.getDeclaringClass();
        final String illegalState = "IllegalStateException: " + effect.getSimpleName();
        if (way.contains("close")) { // closing again does nothing
            return method.getName().equals("close") ? "" : illegalState + " is closed";
        }
        final List<String> inContext = way.subList(way.lastIndexOf("GLContextDestroyed") + 1, way.size());
        if (!method.getName().matches("(render|add|update|build).*")) {
            return "";
        } else if (!inContext.contains("init")) {
            return illegalState + " needs init .*";
        }
        // A loss of the context takes the size only from who has a texture. Particles take none before there is anything
        // to give it to.
        final boolean keepsItsSize = publicMethods(effect).stream().noneMatch(each -> each.getName().equals("getTexture"));
        final List<String> sized = keepsItsSize ? way
                : effect == MetaballRenderer.class && way.indexOf("init") == 1 ? way.subList(1, way.size()) : inContext;
        return sized.contains("setScreenSize") ? "" : illegalState + " needs setScreenSize .*";
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

    /** Goes a way with ordinary arguments. */
    private static AutoCloseable make(Class<?> type, List<String> way) throws Exception {
        final AutoCloseable effect = (AutoCloseable) type.getConstructor().newInstance();
        for (String step : way) {
            for (Method method : publicMethods(type)) {
                if (method.getName().equals(step)) {
                    method.invoke(effect, ordinaryArguments(effect, method));
                }
            }
        }
        return effect;
    }

    @Test
    public void statesAllowACallOrSayWhatIsMissing() throws Exception {
        for (Class<?> type : effects()) {
            final AutoCloseable first = make(type, List.of("init", "setScreenSize"));
            assertNotEquals(type + " shares its programs with one that was not deleted", 0, LiveNames.count());
            first.close();
            assertEquals(type + " leaves GL objects", 0, LiveNames.count());
            for (String steps : WAYS) {
                final List<String> way = Arrays.asList(steps.split(" "));
                final AutoCloseable effect = make(type, way);
                for (Method method : publicMethods(type)) {
                    if (way.contains("close") || !method.getName().matches("init|setScreen.*|GLContext.*|close")) {
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
                }
            }
        }
        graphics.close();
    }

    @Test
    public void aSurfaceMayBeAsLargeAsTheDriversTextures() {
        final CometRenderer comets = new CometRenderer();
        final String refused = assertThrows(IllegalArgumentException.class, () -> comets.setScreenSize(1, 1 << 30))
                .getMessage();
        comets.setScreenSize(1, Integer.parseInt(refused.replaceAll(".* to (\\d+),.*", "$1")));
        comets.close();
    }

    /** The native methods ignore a null, which stands for an array that Java cannot pin. */
    @Test
    public void argumentsAreTakenOrRefused() throws Exception {
        for (Class<?> type : effects()) {
            for (Method method : methods(type).collect(Collectors.toList())) {
                final boolean isNative = Modifier.isNative(method.getModifiers());
                final AutoCloseable effect = make(type, List.of("init", "setScreenSize"));
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
    public void initNeedsAContextAHandleAnObjectAndADirectionALength() throws Exception {
        context.close();
        for (Class<?> type : effects()) {
            try (AutoCloseable effect = make(type, List.of())) {
                for (Method method : publicMethods(type)) {
                    if (method.getName().equals("init")) {
                        assertOutcome("IllegalStateException: \\w+ needs a GL context .* this thread.*", effect,
                                method, ordinaryArguments(effect, method));
                    }
                }
            }
        }
        assertThrows(OutOfMemoryError.class, () -> new Handle("Pond", 0));
        assertThrows(IllegalArgumentException.class, () -> Arguments.requireDirection("light", 0f, -0f, 0f));
    }
}
