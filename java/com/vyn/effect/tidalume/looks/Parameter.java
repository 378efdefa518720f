package com.vyn.effect.tidalume.looks;

import java.util.List;
import javax.annotation.Nonnull;

/** What may be set about a look. */
public final class Parameter {
    /** In camel case, as in the setter: {@code "touchRadius"} for {@code setTouchRadius}. */
    @Nonnull
    public final String name;
    /** For people. */
    @Nonnull
    public final String label;
    /** For people; empty for a share from nothing to all, and for a choice. */
    @Nonnull
    public final String unit;
    /** The smallest value. */
    public final float minimum;
    /** The largest value. */
    public final float maximum;
    /** The value before anything is set. */
    public final float initial;
    /** What a larger value does. */
    @Nonnull
    public final String sentence;
    /** Of a choice: the names of the values 0, 1, 2 and so on; empty for a number. */
    @Nonnull
    public final List<String> choices;
    final int index;

    Parameter(int index, List<String> columns) {
        this.index = index;
        name = columns.get(0);
        label = columns.get(1);
        unit = columns.get(2);
        minimum = Tables.number(columns.get(3));
        maximum = Tables.number(columns.get(4));
        initial = Tables.number(columns.get(5));
        sentence = columns.get(6);
        choices = List.copyOf(columns.subList(7, columns.size()));
    }

    /**
     * Checks a value.
     *
     * @param value to be set
     * @throws IllegalArgumentException if it is out of range or, for a choice, not whole
     */
    public void require(float value) {
        final boolean isWhole = choices.isEmpty() || value == Math.rint(value);
        if (!(value >= minimum && value <= maximum && isWhole)) {
            throw new IllegalArgumentException(name + " must be " + range() + ", is " + value);
        }
    }

    private String range() {
        if (!choices.isEmpty()) {
            return "the index of one of " + choices;
        }
        return minimum + " to " + maximum + (unit.isEmpty() ? "" : " " + unit);
    }
}
