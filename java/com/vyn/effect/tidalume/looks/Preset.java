package com.vyn.effect.tidalume.looks;

import java.util.Collections;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import javax.annotation.Nonnull;

/** Settings that go together. */
public final class Preset {
    /** In camel case: {@code "calmLake"}. */
    @Nonnull
    public final String name;
    /** For people. */
    @Nonnull
    public final String title;
    /** Values by the names of their parameters; what is missing has its initial value. */
    @Nonnull
    public final Map<String, Float> settings;
    final int index;

    Preset(int index, List<String> columns) {
        this.index = index;
        name = columns.get(0);
        title = columns.get(1);
        final Map<String, Float> values = new LinkedHashMap<>();
        for (int i = 2; i < columns.size(); i += 2) {
            values.put(columns.get(i), Tables.number(columns.get(i + 1)));
        }
        settings = Collections.unmodifiableMap(values);
    }
}
