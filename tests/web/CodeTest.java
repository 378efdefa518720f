import com.vyn.effect.tidalume.looks.Look;
import java.lang.reflect.Field;
import java.nio.file.*;

/** Makes renderers, and fails where the look of one has other settings than the lines "class parameter value" say. */
final class CodeTest {
    public static void main(String[] arguments) throws Exception {
        for (String line : Files.readAllLines(Path.of(arguments[0]))) {
            final String[] words = line.split(" ");
            final Object renderer = Class.forName(words[0]).getConstructor().newInstance();
            final Field field = renderer.getClass().getDeclaredField("look");
            field.setAccessible(true);
            try (Look look = (Look) field.get(renderer)) {
                if (look.get(words[1]) != Float.parseFloat(words[2])) {
                    throw new AssertionError(line + ", but it is " + look.get(words[1]));
                }
            }
        }
    }
}
