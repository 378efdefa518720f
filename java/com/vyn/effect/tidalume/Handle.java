package com.vyn.effect.tidalume;

/** The handle of a native effect, and how far the effect's life has come. */
final class Handle {
    private final String className;
    private long handle;
    private boolean initialized;
    private boolean sized;

    /**
     * @param handle what {@code Alloc} returned
     * @throws OutOfMemoryError if that is 0
     */
    Handle(String className, long handle) {
        if (handle == 0) {
            throw new OutOfMemoryError("no native memory for a " + className);
        }
        this.className = className;
        this.handle = handle;
    }

    /**
     * The handle, for calls that are allowed in every state but one.
     *
     * @throws IllegalStateException after {@code close}
     */
    long open() {
        if (handle == 0) {
            throw new IllegalStateException(className + " is closed");
        }
        return handle;
    }

    /**
     * The handle, for init. GL itself would say nothing where it is missing.
     *
     * @throws IllegalStateException after {@code close}, or if no GL context is current on this thread
     */
    long inContext() {
        open();
        if (!isContextCurrent()) {
            throw new IllegalStateException(className + " needs a GL context that is current on this thread: "
                    + "call init on the GL thread, in onSurfaceCreated or later, or after your own eglMakeCurrent");
        }
        return handle;
    }

    /**
     * The handle, for calls that draw, disturb or build.
     *
     * @throws IllegalStateException after {@code close}, or before {@code init} or {@code setScreenSize}
     */
    long ready() {
        open();
        if (!initialized) {
            throw new IllegalStateException(className + " needs init in the current GL context first");
        }
        if (!sized) {
            throw new IllegalStateException(className + " needs setScreenSize first");
        }
        return handle;
    }

    boolean isInitialized() {
        return initialized;
    }

    void setInitialized() {
        initialized = true;
    }

    void setSized() {
        sized = true;
    }

    /** The GL context is gone, and with it the programs. */
    void abandonPrograms() {
        initialized = false;
    }

    /** The GL context is gone, and with it the programs and the textures that setScreenSize made. */
    void abandonProgramsAndTargets() {
        initialized = false;
        sized = false;
    }

    /** Hands the handle over to whoever frees it; 0 if that has happened before. */
    long release() {
        final long released = handle;
        handle = 0;
        return released;
    }

    private static native boolean isContextCurrent();

    /** The driver's limit of a texture's width and height; 0 where no context is current. */
    static native int largestTexture();
}
