package com.vyn.effect.tidalume.looks;

import java.util.HashMap;
import java.util.Map;
import java.util.Objects;
import javax.annotation.Nonnull;

/**
 * An effect ready to use: it keeps its own time, follows touches, fits itself to the surface and survives the loss of
 * the context. Each class shows a look of its own.
 *
 * <pre>{@code
 * WaterLook water = new WaterLook();
 * water.contextCreated();                        // onSurfaceCreated
 * water.setSize(1080, 1920);                     // onSurfaceChanged
 * water.usePreset(WaterLook.RAIN);
 * water.touch(0, x, y, TouchPhase.DOWN);
 * water.draw(System.nanoTime() / 1e9);           // onDrawFrame
 * }</pre>
 *
 * <p><b>Context.</b> Create looks anywhere; call everything else on the GL thread, on which an OpenGL ES 3.0 context is
 * current. When the context is lost, call {@link #contextLost} on <em>every</em> look first, then
 * {@link #contextCreated} on every look: looks of a class share their programs. What has been set, and what moves by
 * itself, goes on; water is still again.
 *
 * <p><b>Surface.</b> Positions are pixels, origin top-left, y downwards. Lengths that can be set are shares of the
 * surface's shorter side. Water and waves are opaque and cover the surface. Other looks draw over what is there, with
 * premultiplied alpha: on a surface cleared to (0, 0, 0, 0) the result composes over any content.
 *
 * <p><b>Time.</b> A look moves in steps of 1/60 s whatever the display's rate is. Time that passes in a pause is
 * skipped, not made up for.
 *
 * <p><b>Settings.</b> Ranges, units and initial values stand in {@link #parameters()}. A value that is out of its range
 * or not a number throws {@link java.lang.IllegalArgumentException}, null {@link java.lang.NullPointerException}; what
 * was set before stays.
 *
 * <p><b>GL state.</b> {@link #draw(double)} needs nothing but the context. It leaves vertex array 0 bound and no buffer
 * of vertices or indices; scissor, stencil and depth test, blending and culling disabled, and all channels writable;
 * the framebuffer that it drew into bound, and the viewport on the surface; program 0, no texture on units 0 to 2, of
 * which 0 is active, and attribute arrays 0 and 1 disabled; the blend equation {@code GL_FUNC_ADD}, any blend functions
 * and blend colour, and the clear colour (0, 0, 0, 0). All else stays as it was.
 *
 * <p>After {@link #close()} every other method but {@link #parameters()} and {@link #presets()} throws
 * {@link java.lang.IllegalStateException}.
 */
public abstract class Look implements AutoCloseable {
    /** How many fingers are told apart. */
    public static final int FINGERS = 10;

    private static final Map<Class<?>, Tables> TABLES = new HashMap<>();

    static {
        System.loadLibrary("Tidalume");
    }

    private final Tables tables;
    private final Unclosed watched;
    private long handle;
    /** The one of contextCreated; 0 before. */
    private long context;

    /** @param handle what {@code Alloc} returned */
    Look(long handle) {
        if (handle == 0) {
            throw new OutOfMemoryError("no native memory for a " + getClass().getSimpleName());
        }
        this.handle = handle;
        tables = tablesOf(handle);
        watched = Unclosed.watch(this);
    }

    /**
     * Switches the search for looks that are never closed on or off. Each is logged once, as a warning with the place
     * of its making, when the next look is made after Java has collected it. Only looks made while it is on are found.
     *
     * @param isDebugging at first false, since noting the place costs time
     */
    public static void setDebugging(boolean isDebugging) {
        Unclosed.setWatching(isDebugging);
    }

    /**
     * Builds the programs in a context that is new. Ignored where the look has a context already.
     *
     * @throws IllegalStateException if no GL context is current on this thread, or another one than before without
     *     {@link #contextLost} in between
     */
    public void contextCreated() {
        contextCreated(inContext());
        context = currentContext();
    }

    /** Abandons every GL name, for a context that is gone. Fingers that are down are up. */
    public void contextLost() {
        contextLost(open());
        context = 0;
    }

    /**
     * Fits the look to a surface, with the next {@code draw}. Makes no GL call. Below 1 in either direction, nothing is
     * drawn until there is a size again; so it is with a size beyond the driver's textures, which the next {@code draw}
     * logs.
     *
     * @param width in pixels
     * @param height in pixels
     */
    public void setSize(int width, int height) {
        setSize(open(), width, height);
    }

    /**
     * Takes a touch, which shows from the next step on. Makes no GL call. Ignored before {@link #setSize}, with a
     * finger out of range, with a position that is not finite, and for a finger that moves or lifts without having been
     * put down.
     *
     * @param finger 0 to {@link #FINGERS} - 1, each one of its own; numbers may be used again once the finger is up
     * @param x in pixels from the left
     * @param y in pixels from the top
     * @param phase what the finger does
     */
    public void touch(int finger, float x, float y, TouchPhase phase) {
        touch(open(), finger, x, y, Objects.requireNonNull(phase, "phase must not be null").ordinal());
    }

    /**
     * Runs the steps that are due and draws into framebuffer 0.
     *
     * @param seconds as of {@link #draw(double, int)}
     * @throws IllegalStateException as {@link #draw(double, int)} does
     */
    public void draw(double seconds) {
        draw(seconds, 0);
    }

    /**
     * Runs the steps that are due and draws. Draws nothing before {@link #setSize}.
     *
     * @param seconds now, of a clock that does not jump, such as {@code System.nanoTime() / 1e9}; where it goes back,
     *     or on by more than four steps, a single step is run
     * @param framebuffer GL name of the one to draw into; its size is that of {@link #setSize}
     * @throws IllegalStateException if no GL context is current on this thread, before {@link #contextCreated}, or in
     *     another context than that one's
     */
    public void draw(double seconds, int framebuffer) {
        final long current = inContext();
        if (context == 0) {
            throw new IllegalStateException(
                    getClass().getSimpleName() + " needs contextCreated in the current GL context first");
        }
        draw(current, seconds, framebuffer);
    }

    /**
     * Whether pictures still change, so that frames have to go on. A touch, a setting, a size and a context make it
     * true; {@code draw} makes it false once there is nothing left to see. Reads nothing back from the GPU.
     *
     * @return whether there is something new to draw
     */
    public boolean isMoving() {
        return isMoving(open());
    }

    /**
     * Starts the look's chance anew. Comets and sprayed drops draw from the process's {@code lrand48} instead.
     *
     * @param seed the same seed gives the same pictures
     */
    public void setSeed(int seed) {
        setSeed(open(), seed);
    }

    /**
     * What can be set.
     *
     * @return all parameters by their names, in an order that stays
     */
    @Nonnull
    public Map<String, Parameter> parameters() {
        return tables.parameters;
    }

    /**
     * Sets a parameter by its name, as for settings that a user has stored.
     *
     * @param parameter its name
     * @param value in its range and unit
     */
    public void set(String parameter, float value) {
        final long open = open();
        final Parameter row = Tables.find(tables.parameters, "parameter", parameter);
        row.require(value);
        set(open, row.index, value);
    }

    /**
     * The value of a parameter.
     *
     * @param parameter its name
     * @return the value, in its unit
     */
    public float get(String parameter) {
        return get(open(), Tables.find(tables.parameters, "parameter", parameter).index);
    }

    /**
     * Ready-made settings.
     *
     * @return all presets by their names; the first one's settings are the initial values
     */
    @Nonnull
    public Map<String, Preset> presets() {
        return tables.presets;
    }

    /**
     * Gives every parameter the value that the preset gives it, or its initial one.
     *
     * @param preset its name, one of the class's constants
     */
    public void usePreset(String preset) {
        usePreset(open(), Tables.find(tables.presets, "preset", preset).index);
    }

    /**
     * Deletes the look and its GL resources. Needs the context, unless {@link #contextLost} has told of its end.
     * Closing again does nothing.
     */
    @Override
    public void close() {
        final long closing = handle;
        handle = 0;
        Free(closing);
        Unclosed.closed(watched);
    }

    /** Read once a class. Android has had computeIfAbsent only since API 24. */
    private Tables tablesOf(long handle) {
        synchronized (TABLES) {
            Tables read = TABLES.get(getClass());
            if (read == null) {
                read = new Tables(describe(handle));
                TABLES.put(getClass(), read);
            }
            return read;
        }
    }

    /** Sets a parameter that is a choice to a constant of an enum in the order of {@link Parameter#choices}. */
    void choose(String parameter, Enum<?> choice) {
        open();
        set(parameter, Objects.requireNonNull(choice, parameter + " must not be null").ordinal());
    }

    /** The handle, for calls that are allowed in every state but one. */
    long open() {
        if (handle == 0) {
            throw new IllegalStateException(getClass().getSimpleName() + " is closed");
        }
        return handle;
    }

    /** The handle, for calls that need a context. GL itself would say nothing where it is missing. */
    private long inContext() {
        final long open = open();
        final long current = currentContext();
        if (current == 0) {
            throw new IllegalStateException(getClass().getSimpleName() + " needs a GL context that is current on this "
                    + "thread: call it on the GL thread, in onSurfaceCreated or later, or after eglMakeCurrent");
        }
        if (context != 0 && context != current) {
            throw new IllegalStateException("the GL context is another one than that of " + getClass().getSimpleName()
                    + ": call contextLost on every look first, then contextCreated");
        }
        return open;
    }

    /** @throws IllegalArgumentException if a picture has no pixels */
    static void requirePixels(int width, int height) {
        if (width < 1 || height < 1) {
            throw new IllegalArgumentException("width and height must be at least 1, are " + width + " and " + height);
        }
    }

    private static native long currentContext();

    private static native void Free(long handle);

    private static native void contextCreated(long handle);

    private static native void contextLost(long handle);

    private static native void setSize(long handle, int width, int height);

    private static native void touch(long handle, int finger, float x, float y, int phase);

    private static native void draw(long handle, double seconds, int framebuffer);

    private static native boolean isMoving(long handle);

    private static native void setSeed(long handle, int seed);

    private static native void set(long handle, int parameter, float value);

    private static native float get(long handle, int parameter);

    private static native void usePreset(long handle, int preset);

    private static native String describe(long handle);
}
