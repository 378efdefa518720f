package com.vyn.effect.tidalume;

/** Checks of arguments; messages name the argument and what was expected. */
final class Arguments {
    private Arguments() {
    }

    /**
     * @throws NullPointerException if the array is null
     * @throws IllegalArgumentException if it holds fewer floats than needed
     */
    static void requireFloats(String name, float[] array, long needed) {
        if (array == null) {
            throw new NullPointerException(name + " must not be null");
        }
        if (array.length < needed) {
            throw new IllegalArgumentException(name + " must hold at least " + needed + " floats, has " + array.length);
        }
    }

    /** Checks red, green, blue and alpha, as {@link #requireFloats} does. */
    static void requireColor(String name, float[] color) {
        requireFloats(name, color, 4);
    }

    /** @throws IllegalArgumentException if the value is below the minimum */
    static void requireAtLeast(String name, int value, int minimum) {
        if (value < minimum) {
            throw new IllegalArgumentException(name + " must be at least " + minimum + ", is " + value);
        }
    }

    /** @throws IllegalArgumentException if the value is not a finite number above 0 */
    static void requirePositive(String name, float value) {
        if (!(value > 0.0f) || Float.isInfinite(value)) {
            throw new IllegalArgumentException(name + " must be a finite number above 0, is " + value);
        }
    }

    /** @throws IllegalArgumentException if the value is not a finite number of at least 0 */
    static void requireNotNegative(String name, float value) {
        if (!(value >= 0.0f) || Float.isInfinite(value)) {
            throw new IllegalArgumentException(name + " must be a finite number of at least 0, is " + value);
        }
    }

    /** @throws IllegalArgumentException if all three are 0, or one is not finite */
    static void requireDirection(String name, float x, float y, float z) {
        if (x == 0.0f && y == 0.0f && z == 0.0f || !Float.isFinite(x) || !Float.isFinite(y) || !Float.isFinite(z)) {
            throw new IllegalArgumentException(
                    name + " must be three finite numbers, not all 0, is (" + x + ", " + y + ", " + z + ")");
        }
    }

    /** @throws IllegalArgumentException if the width or the height of a screen is below 1, or beyond all textures */
    static void requireScreenSize(int width, int height) {
        requireExtent("width", width);
        requireExtent("height", height);
    }

    private static void requireExtent(String name, int extent) {
        requireAtLeast(name, extent, 1);
        final int largest = Handle.largestTexture();
        if (largest > 0 && extent > largest) {
            throw new IllegalArgumentException(
                    name + " must be 1 to " + largest + ", where this driver's textures end, is " + extent);
        }
    }

    /** @throws IllegalArgumentException if the value is none of those allowed; constants say which those are */
    static void requireOneOf(String name, int value, String constants, int[] allowed) {
        for (int each : allowed) {
            if (value == each) {
                return;
            }
        }
        throw new IllegalArgumentException(
                String.format("%s must be one of the %s constants, is 0x%04X", name, constants, value));
    }
}
