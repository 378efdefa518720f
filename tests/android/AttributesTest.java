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
        for (Map.Entry<int[], Look> view : looks.entrySet()) {
            final Set<String> parameters = new HashSet<>();
            for (int attribute : view.getKey()) {
                final String parameter = String.valueOf(ParameterAttributes.parameterOf(attribute));
                final String name = names.get(attribute);
                if (!name.equals("src")) {
                    parameters.add(parameter);
                    assertEquals(parameter.toLowerCase(), name.replace("effect", "").toLowerCase());
                }
            }
            assertEquals(view.getValue().parameters().keySet(), parameters);
            view.getValue().close();
        }
    }
}
