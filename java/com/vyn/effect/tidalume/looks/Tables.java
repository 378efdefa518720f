package com.vyn.effect.tidalume.looks;

import java.util.Arrays;
import java.util.Collections;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import java.util.Objects;

/** What the native side says about a class of looks. */
final class Tables {
    final Map<String, Parameter> parameters;
    final Map<String, Preset> presets;

    /** @param description as jni/Look.cpp writes it */
    Tables(String description) {
        final Map<String, Parameter> parameters = new LinkedHashMap<>();
        final Map<String, Preset> presets = new LinkedHashMap<>();
        for (String row : description.split("\n")) {
            final List<String> columns = Arrays.asList(row.split("\t", -1));
            final List<String> content = columns.subList(1, columns.size());
            if (columns.get(0).equals("parameter")) {
                parameters.put(content.get(0), new Parameter(parameters.size(), content));
            } else {
                presets.put(content.get(0), new Preset(presets.size(), content));
            }
        }
        this.parameters = Collections.unmodifiableMap(parameters);
        this.presets = Collections.unmodifiableMap(presets);
    }

    /** A number from the bits of it. */
    static float number(String bits) {
        return Float.intBitsToFloat(Integer.parseInt(bits));
    }

    /**
     * A row by its name.
     *
     * @param kind of row, for messages
     * @throws NullPointerException if the name is null
     * @throws IllegalArgumentException if there is no such row
     */
    static <Row> Row find(Map<String, Row> rows, String kind, String name) {
        final Row row = rows.get(Objects.requireNonNull(name, kind + " must not be null"));
        if (row == null) {
            throw new IllegalArgumentException(kind + " must be one of " + rows.keySet() + ", is " + name);
        }
        return row;
    }
}
