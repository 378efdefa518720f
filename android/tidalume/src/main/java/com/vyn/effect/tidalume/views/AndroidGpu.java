package com.vyn.effect.tidalume.views;

import android.opengl.EGL14;
import android.opengl.EGLConfig;
import android.opengl.EGLContext;
import android.opengl.EGLDisplay;
import android.opengl.EGLExt;
import android.opengl.EGLSurface;
import android.opengl.GLES30;

/** EGL of Android. The display is the process's, and is left open for others. */
final class AndroidGpu implements Gpu {
    private static final int[] CONFIG = {
        EGL14.EGL_RENDERABLE_TYPE, EGLExt.EGL_OPENGL_ES3_BIT_KHR,
        EGL14.EGL_SURFACE_TYPE, EGL14.EGL_WINDOW_BIT | EGL14.EGL_PBUFFER_BIT,
        EGL14.EGL_RED_SIZE, 8, EGL14.EGL_GREEN_SIZE, 8, EGL14.EGL_BLUE_SIZE, 8, EGL14.EGL_ALPHA_SIZE, 8,
        EGL14.EGL_NONE};
    private static final int[] VERSION = {EGL14.EGL_CONTEXT_CLIENT_VERSION, 3, EGL14.EGL_NONE};
    private static final int[] PIXEL = {EGL14.EGL_WIDTH, 1, EGL14.EGL_HEIGHT, 1, EGL14.EGL_NONE};
    private static final int[] NOTHING = {EGL14.EGL_NONE};

    private EGLDisplay display = EGL14.EGL_NO_DISPLAY;
    private EGLConfig config;
    private EGLContext context = EGL14.EGL_NO_CONTEXT;
    /** Is current while no view's surface is. */
    private EGLSurface idle = EGL14.EGL_NO_SURFACE;

    @Override
    public void createContext() {
        display = EGL14.eglGetDisplay(EGL14.EGL_DEFAULT_DISPLAY);
        final int[] version = new int[2];
        require(EGL14.eglInitialize(display, version, 0, version, 1), "eglInitialize");
        final EGLConfig[] configs = new EGLConfig[1];
        final int[] count = new int[1];
        require(EGL14.eglChooseConfig(display, CONFIG, 0, configs, 0, 1, count, 0) && count[0] > 0, "eglChooseConfig");
        config = configs[0];
        context = EGL14.eglCreateContext(display, config, EGL14.EGL_NO_CONTEXT, VERSION, 0);
        require(!context.equals(EGL14.EGL_NO_CONTEXT), "eglCreateContext");
        idle = EGL14.eglCreatePbufferSurface(display, config, PIXEL, 0);
        if (makeCurrent() != Result.DONE) {
            final String reason = reason("eglMakeCurrent");
            destroyContext();
            throw new IllegalStateException(reason);
        }
    }

    private static void require(boolean isDone, String call) {
        if (!isDone) {
            throw new IllegalStateException(reason(call));
        }
    }

    private static String reason(String call) {
        return "no OpenGL ES 3.0 context: " + call + " failed with EGL error 0x"
                + Integer.toHexString(EGL14.eglGetError());
    }

    @Override
    public void destroyContext() {
        EGL14.eglMakeCurrent(display, EGL14.EGL_NO_SURFACE, EGL14.EGL_NO_SURFACE, EGL14.EGL_NO_CONTEXT);
        EGL14.eglDestroySurface(display, idle);
        EGL14.eglDestroyContext(display, context);
        idle = EGL14.EGL_NO_SURFACE;
        context = EGL14.EGL_NO_CONTEXT;
    }

    @Override
    public Object createSurface(Object window) {
        final EGLSurface surface = EGL14.eglCreateWindowSurface(display, config, window, NOTHING, 0);
        require(surface != null && !surface.equals(EGL14.EGL_NO_SURFACE), "eglCreateWindowSurface");
        return surface;
    }

    @Override
    public void destroySurface(Object surface) {
        EGL14.eglDestroySurface(display, (EGLSurface) surface);
    }

    @Override
    public Result makeCurrent(Object surface) {
        final Result made = result(EGL14.eglMakeCurrent(display, (EGLSurface) surface, (EGLSurface) surface, context));
        if (made == Result.DONE) {
            // Frames come at the display's pace already. A view whose pictures nobody takes must not stop the others.
            EGL14.eglSwapInterval(display, 0);
        }
        return made;
    }

    @Override
    public Result makeCurrent() {
        return EGL14.eglMakeCurrent(display, idle, idle, context) ? Result.DONE : Result.CONTEXT_LOST;
    }

    @Override
    public void clear() {
        GLES30.glClearColor(0, 0, 0, 0);
        GLES30.glClear(GLES30.GL_COLOR_BUFFER_BIT);
    }

    @Override
    public Result swap(Object surface) {
        return result(EGL14.eglSwapBuffers(display, (EGLSurface) surface));
    }

    private static Result result(boolean isDone) {
        if (isDone) {
            return Result.DONE;
        }
        switch (EGL14.eglGetError()) {
            case EGL14.EGL_CONTEXT_LOST:
            case EGL14.EGL_BAD_CONTEXT:
            case EGL14.EGL_NOT_INITIALIZED:
                return Result.CONTEXT_LOST;
            default:
                return Result.SURFACE_LOST;
        }
    }

    @Override
    public void deleteTexture(int texture) {
        GLES30.glDeleteTextures(1, new int[] {texture}, 0);
    }
}
