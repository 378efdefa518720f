package com.vyn.effect.tidalume.views;

/** What EGL and the GL give. All calls come on the GL thread; there is at most one context at a time. */
interface Gpu {
    /** How a call on a surface went. */
    enum Result {
        DONE,
        SURFACE_LOST,
        CONTEXT_LOST
    }

    /** @throws IllegalStateException if there is none of OpenGL ES 3.0; the message has the reason */
    void createContext();

    /** Destroys the context, which may be lost. */
    void destroyContext();

    /**
     * Makes a surface that is drawn with alpha, in the present size of the window.
     *
     * @throws IllegalStateException if the window has gone
     */
    Object createSurface(Object window);

    /** Destroys a surface that is not current. */
    void destroySurface(Object surface);

    /** Makes the context current with a surface. */
    Result makeCurrent(Object surface);

    /** Makes the context current with no view's surface. */
    Result makeCurrent();

    /** Makes the surface that is current transparent all over. */
    void clear();

    /** Shows what has been drawn into the surface that is current. */
    Result swap(Object surface);

    void deleteTexture(int texture);
}
