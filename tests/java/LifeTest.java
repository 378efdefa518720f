import static org.junit.Assert.assertEquals;
import static org.junit.Assert.assertThrows;
import static org.junit.Assert.assertTrue;

import com.vyn.effect.tidalume.CometRenderer;
import com.vyn.effect.tidalume.IntensityMapBuilder;
import com.vyn.effect.tidalume.Metaball2DRenderer;
import com.vyn.effect.tidalume.MetaballRenderer;
import com.vyn.effect.tidalume.NormalMapBuilder;
import com.vyn.effect.tidalume.ShallowWater;
import com.vyn.effect.tidalume.ShallowWaterIterative;
import com.vyn.effect.tidalume.ShallowWaterRenderer;
import com.vyn.effect.tidalume.VectorGraphicRenderer;
import java.lang.reflect.Constructor;
import java.lang.reflect.InvocationTargetException;
import java.lang.reflect.Method;
import java.lang.reflect.Modifier;
import java.util.ArrayList;
import java.util.HashSet;
import java.util.List;
import java.util.Map;
import java.util.Set;
import org.junit.Test;

/** Every public method of every effect, in each state of its life, with good and with bad arguments. */
public final class LifeTest extends JavaTest {
    private static final List<Class<? extends AutoCloseable>> EFFECTS = List.of(CometRenderer.class,
            IntensityMapBuilder.class, Metaball2DRenderer.class, MetaballRenderer.class, NormalMapBuilder.class,
            ShallowWater.class, ShallowWaterIterative.class, ShallowWaterRenderer.class, VectorGraphicRenderer.class);
    private static final Map<Class<?>, Object> GOOD_ARGUMENTS = Map.of(
            int.class, 1, float.class, 1f, double.class, 0.5, boolean.class, true, float[].class, new float[4]);

    private static List<Method> methods(Class<?> effect, String names) {
        final List<Method> methods = new ArrayList<>();
        for (Method method : effect.getDeclaredMethods()) {
            if (Modifier.isPublic(method.getModifiers()) && method.getName().matches(names)) {
                methods.add(method);
            }
        }
        return methods;
    }

    private static void call(Object effect, Method method, Object... arguments) throws Throwable {
        try {
            method.invoke(effect, arguments);
        } catch (InvocationTargetException exception) {
            throw exception.getCause();
        }
    }

    private static Object[] goodArguments(Method method) {
        return List.of(method.getParameterTypes()).stream().map(GOOD_ARGUMENTS::get).toArray();
    }

    private static void callAll(Object effect, String names) throws Throwable {
        for (Method method : methods(effect.getClass(), names)) {
            call(effect, method, goodArguments(method));
        }
    }

    private static void assertAllRefused(String words, Object effect, String names) {
        for (Method method : methods(effect.getClass(), names)) {
            assertRefused(IllegalStateException.class, words, () -> call(effect, method, goodArguments(method)));
        }
    }

    private static void assertBadArraysAreNamed(Object effect, Method method) {
        final Set<String> messages = new HashSet<>();
        int arrays = 0;
        for (int i = 0; i < method.getParameterCount(); i++) {
            if (method.getParameterTypes()[i] == float[].class) {
                final Object[] arguments = goodArguments(method);
                arguments[i] = null;
                messages.add(assertRefused(NullPointerException.class, " must not be null",
                        () -> call(effect, method, arguments)));
                arguments[i] = new float[1];
                messages.add(assertRefused(IllegalArgumentException.class, " floats, has 1",
                        () -> call(effect, method, arguments)));
                arrays++;
            }
        }
        assertEquals(method + ": one message for each array and fault", 2 * arrays, messages.size());
    }

    @Test
    public void everyMethodKnowsTheStateAndItsArguments() throws Throwable {
        final String drawing = "render.*|add.*|update|build";
        for (Class<? extends AutoCloseable> type : EFFECTS) {
            final AutoCloseable effect = type.getConstructor().newInstance();
            final Method setScreenSize = type.getMethod("setScreenSize", int.class, int.class);
            assertAllRefused("needs init", effect, drawing);
            callAll(effect, "init");
            assertAllRefused("needs setScreenSize", effect, drawing);
            assertRefused(IllegalArgumentException.class, "width must be at least 1",
                    () -> call(effect, setScreenSize, 0, 1));
            assertRefused(IllegalArgumentException.class, "height must be at least 1",
                    () -> call(effect, setScreenSize, 1, -1));
            call(effect, setScreenSize, WIDTH, HEIGHT);
            callAll(effect, drawing + "|(set|get|push).*");
            for (Method method : methods(type, drawing)) {
                assertBadArraysAreNamed(effect, method);
            }
            callAll(effect, "GLContextDestroyed");
            assertAllRefused("needs init", effect, drawing);
            context.recreate();
            effect.close();
            effect.close();
            assertAllRefused("is closed", effect, "(?!close).*");
        }
    }

    @Test
    public void withoutNativeMemoryThereIsNoEffect() throws ReflectiveOperationException {
        final Constructor<?> handle = Class.forName("com.vyn.effect.tidalume.Handle")
                .getDeclaredConstructor(String.class, long.class);
        handle.setAccessible(true);
        final Throwable cause = assertThrows(InvocationTargetException.class, () -> handle.newInstance("Pond", 0L)).getCause();
        assertTrue(cause.toString(), cause instanceof OutOfMemoryError && cause.getMessage().contains("Pond"));
    }
}
