package com.vyn.effect.tidalume.views;

import static org.junit.Assert.*;

import com.vyn.effect.tidalume.R;
import com.vyn.effect.tidalume.looks.*;
import java.lang.reflect.Field;
import java.util.*;
import org.junit.Test;

public class AttributesTest {
    @Test
    public void everyParameterIsAnAttributeOfItsView() throws Exception {
        final Map<Integer, String> names = new HashMap<>();
        for (Field attribute : R.attr.class.getFields()) {
            names.put(attribute.getInt(null), attribute.getName());
        }
        final Map<int[], Look> looks = Map.of(R.styleable.RippleView, new WaterLook(), R.styleable.BlobsView,
                new BlobsLook(), R.styleable.SprayView, new SprayLook(), R.styleable.CometsView, new CometsLook());
        looks.forEach((attributes, look) -> {
            final Set<String> parameters = new HashSet<>(look.parameters().keySet());
            for (int attribute : attributes) {
                final String parameter = String.valueOf(ParameterAttributes.parameterOf(attribute));
                final String name = names.get(attribute);
                assertTrue(name, name.equals("src") || parameters.remove(parameter));
                assertTrue(name, name.matches("src|(?i)(effect)?" + parameter));
            }
            assertEquals(Set.of(), parameters);
            look.close();
        });
    }
}
