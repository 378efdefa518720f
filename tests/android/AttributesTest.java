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
            final Set<String> attributes = new HashSet<>();
            for (int attribute : view.getKey()) {
                attributes.add(names.get(attribute));
            }
            attributes.remove("src");
            assertEquals(view.getValue().parameters().keySet(), attributes);
            view.getValue().close();
        }
    }
}
