package com.vyn.effect.tidalume.views;

import com.vyn.effect.tidalume.looks.Look;
import com.vyn.effect.tidalume.looks.Parameter;
import com.vyn.effect.tidalume.looks.Preset;
import java.util.Collections;
import java.util.LinkedHashMap;
import java.util.Map;

/** A class of looks and what it says about itself. */
final class LookType {
    /** Makes a look. */
    interface Maker {
        Look make();
    }

    private final Maker maker;
    private Map<String, Parameter> parameters;
    private Map<String, Preset> presets;

    LookType(Maker maker) {
        this.maker = maker;
    }

    /** A type that can be read without the native library, since there is nothing in it. */
    static LookType empty() {
        final LookType empty = new LookType(null);
        empty.parameters = Collections.emptyMap();
        empty.presets = Collections.emptyMap();
        return empty;
    }

    /**
     * Reads the tables, from a look that is made on the calling thread. All else happens on the GL thread.
     */
    synchronized LookType read(Frames frames) {
        if (parameters == null) {
            final Look look = make();
            parameters = look.parameters();
            presets = look.presets();
            frames.post(() -> close(look));
        }
        return this;
    }

    /** Looks of all types share what counts their programs' users: one at a time is made or closed. */
    Look make() {
        synchronized (LookType.class) {
            return maker.make();
        }
    }

    /** Closes a look that {@link #make} has made. */
    static void close(Look look) {
        synchronized (LookType.class) {
            look.close();
        }
    }

    Map<String, Parameter> parameters() {
        return parameters;
    }

    Parameter parameter(String name) {
        return find(parameters, "parameter", name);
    }

    /** The values that a preset gives to all parameters. */
    Map<String, Float> preset(String name) {
        return values(find(presets, "preset", name).settings);
    }

    /** The values of all parameters before anything is set. */
    Map<String, Float> initial() {
        return values(Collections.emptyMap());
    }

    private Map<String, Float> values(Map<String, Float> settings) {
        final Map<String, Float> values = new LinkedHashMap<>();
        for (Parameter parameter : parameters.values()) {
            final Float value = settings.get(parameter.name);
            values.put(parameter.name, value != null ? value : parameter.initial);
        }
        return values;
    }

    private static <Row> Row find(Map<String, Row> rows, String kind, String name) {
        final Row row = rows.get(name);
        if (row == null) {
            throw new IllegalArgumentException(kind + " must be one of " + rows.keySet() + ", is " + name);
        }
        return row;
    }
}
