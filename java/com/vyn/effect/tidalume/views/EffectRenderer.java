package com.vyn.effect.tidalume.views;

import com.vyn.effect.tidalume.looks.Look;
import com.vyn.effect.tidalume.looks.PictureTop;
import com.vyn.effect.tidalume.looks.TouchPhase;
import com.vyn.effect.tidalume.looks.WaterLook;
import java.io.IOException;
import java.util.Map;
import javax.annotation.Nullable;

/** One view's look and surface. Everything happens on the GL thread. */
final class EffectRenderer {
    private static final String FIELD_SCALE = "fieldScale";
    private static final long SECOND = 1_000_000_000L;
    /** Looks move in steps of this; frames that come as often are in time. */
    private static final long STEP = SECOND / 60;
    /** Frames come a little early or late: by this share of the time between them. */
    private static final double JITTER = 0.125;

    private final Gpu gpu;
    private final Frames frames;
    private final LookType type;
    private final EffectErrorListener errors;
    private final Fingers fingers = new Fingers();
    private FieldScaleGovernor governor = new FieldScaleGovernor();

    private Map<String, Float> settings;
    private PictureSource picture;
    private boolean isVisible = true;
    private boolean isPaused;
    private boolean isAdaptive = true;
    /** From frame to frame, at least. */
    private long interval;
    private Object window;
    private int width;
    private int height;

    private Look look;
    private boolean hasContext;
    private PictureSource.Texture texture;
    private Object surface;
    /** Shows another state than the look's, or nothing; it is drawn even in a pause. */
    private boolean isBlank;
    /** When the next frame is. */
    private long due;
    /** Since the last picture that was shown. */
    private int failures;
    private int lostSurfaces;

    EffectRenderer(Gpu gpu, Frames frames, LookType type, EffectErrorListener errors) {
        this.gpu = gpu;
        this.frames = frames;
        this.type = type;
        this.errors = errors;
    }

    void report(EffectError error, Throwable reason) {
        errors.onEffectError(error, reason.getMessage() != null ? reason.getMessage() : reason.toString());
    }

    /** Makes the look; the context comes with {@link #contextCreated}. */
    void open(Map<String, Float> settings) {
        look = type.make();
        failures = 0;
        set(settings);
    }

    /** With the context current if there is one. */
    void close() {
        releaseSurface();
        releasePicture();
        fingers.forget();
        if (look != null) {
            LookType.close(look);
        }
        look = null;
        hasContext = false;
    }

    /** Ignored where that is known. */
    void contextCreated() {
        if (hasContext || look == null) {
            return;
        }
        hasContext = true;
        isBlank = true;
        try {
            look.contextCreated();
        } catch (RuntimeException exception) {
            report(EffectError.EFFECT, exception);
            close();
            return;
        }
        uploadPicture();
        fit();
    }

    /** The surface outlives it. */
    void contextLost() {
        if (look != null) {
            look.contextLost();
        }
        fingers.forget();
        hasContext = false;
        texture = null;
        if (failures > 1) {
            close();
        }
    }

    /** @param window null where it has gone */
    void setWindow(@Nullable Object window, int width, int height) {
        releaseSurface();
        lostSurfaces = 0;
        this.window = window;
        this.width = width;
        this.height = height;
        fit();
    }

    /** What is shown again is drawn again: Android may have let go of the picture. */
    void setVisible(boolean isVisible) {
        isBlank |= isVisible && !this.isVisible;
        this.isVisible = isVisible;
        if (isVisible) {
            fit();
        } else {
            cancelTouches(Integer.MIN_VALUE);
        }
    }

    void setPaused(boolean isPaused) {
        this.isPaused = isPaused;
        if (isPaused) {
            cancelTouches(Integer.MIN_VALUE);
        }
    }

    void set(Map<String, Float> settings) {
        this.settings = settings;
        isBlank = true;
        if (look == null) {
            return;
        }
        for (Map.Entry<String, Float> setting : settings.entrySet()) {
            if (!setting.getKey().equals(FIELD_SCALE)) {
                setParameter(setting.getKey(), setting.getValue());
            }
        }
        setFieldScale();
    }

    /** @param picture null for none */
    void setPicture(@Nullable PictureSource picture) {
        this.picture = picture;
        isBlank = true;
        if (hasContext) {
            releasePicture();
            uploadPicture();
        }
    }

    void setAdaptive(boolean isAdaptive) {
        this.isAdaptive = isAdaptive;
        governor = new FieldScaleGovernor();
        setFieldScale();
    }

    void setFrameLimit(float framesPerSecond) {
        interval = (long) (SECOND / framesPerSecond);
    }

    void touch(int point, float x, float y, TouchPhase phase) {
        if (look != null && isVisible && !isPaused) {
            fingers.touch(look, point, x, y, phase);
        }
    }

    /** Takes away the points from a number on. */
    void cancelTouches(int lowest) {
        if (look != null) {
            fingers.cancel(look, lowest);
        }
    }

    /** Whether there is something to show that the surface does not. */
    boolean wantsFrame() {
        final boolean canDraw = isVisible && hasContext && surface != null;
        if (canDraw && (isBlank || !isPaused && look.isMoving())) {
            return true;
        }
        governor.rest();
        return false;
    }

    boolean isDue(long now) {
        return wantsFrame() && now >= due - JITTER * interval;
    }

    /** Counts on from the time that was due, so that the mean is the limit, not one of the display's divisors. */
    private void setDue(long now) {
        due = now - due < interval ? due + interval : now + interval;
    }

    /**
     * Draws a frame.
     *
     * @throws RuntimeException if the look fails; {@link #fail} is to follow
     */
    Gpu.Result draw(long now) {
        Gpu.Result result = gpu.makeCurrent(surface);
        if (result == Gpu.Result.DONE) {
            gpu.clear();
            look.draw(now / 1e9);
            result = gpu.swap(surface);
        }
        if (result == Gpu.Result.SURFACE_LOST) {
            loseSurface();
        } else if (result == Gpu.Result.DONE) {
            fingers.drawn();
            isBlank = false;
            failures = 0;
            lostSurfaces = 0;
            setDue(now);
            if (isAdaptive) {
                govern(now);
            }
        }
        return result;
    }

    /** Begins anew with the next context, once. */
    void fail(RuntimeException exception) {
        report(EffectError.EFFECT, exception);
        failures++;
    }

    /** The window stays. Another surface is made at once, unless that has just been tried. */
    private void loseSurface() {
        releaseSurface();
        report(EffectError.SURFACE, new IllegalStateException("EGL has lost the view's surface"));
        lostSurfaces++;
        if (lostSurfaces == 1) {
            fit();
        }
    }

    private void govern(long now) {
        final long period = frames.periodNanoseconds();
        final long wanted = period * (long) Math.ceil((1 - JITTER) * interval / period);
        if (governor.frame(now, Math.max(STEP, Math.max(period, wanted)))) {
            setFieldScale();
        }
    }

    private void setFieldScale() {
        if (look != null && settings.containsKey(FIELD_SCALE)) {
            final float share = isAdaptive ? governor.share() : 1;
            setParameter(FIELD_SCALE, Math.max(settings.get(FIELD_SCALE) * share, type.parameter(FIELD_SCALE).minimum));
        }
    }

    /** A change makes fields anew, so none is made without need. */
    private void setParameter(String name, float value) {
        if (look.get(name) != value) {
            look.set(name, value);
        }
    }

    /** Makes the surface as soon as there are a window, a context and a look. */
    private void fit() {
        if (window == null || surface != null || !hasContext) {
            return;
        }
        try {
            surface = gpu.createSurface(window);
        } catch (IllegalArgumentException | IllegalStateException exception) {
            report(EffectError.SURFACE, exception);
            return;
        }
        isBlank = true;
        look.setSize(width, height);
    }

    private void releaseSurface() {
        if (surface != null) {
            gpu.makeCurrent();
            gpu.destroySurface(surface);
        }
        surface = null;
    }

    private void uploadPicture() {
        if (picture == null || !(look instanceof WaterLook)) {
            return;
        }
        try {
            texture = picture.upload();
            ((WaterLook) look).setPicture(texture.name, texture.width, texture.height, PictureTop.FIRST_ROW);
        } catch (IOException | RuntimeException | OutOfMemoryError error) {
            report(EffectError.PICTURE, error);
        }
    }

    private void releasePicture() {
        if (texture != null) {
            ((WaterLook) look).setPicture(0, 1, 1, PictureTop.FIRST_ROW);
            gpu.deleteTexture(texture.name);
        }
        texture = null;
    }
}
