package com.vyn.effect.tidalume.views;

import com.vyn.effect.tidalume.looks.Parameter;
import com.vyn.effect.tidalume.looks.TouchPhase;
import java.util.LinkedHashMap;
import java.util.Map;
import java.util.Objects;
import javax.annotation.Nullable;

/**
 * What a view does, on the view's thread: it checks what it is told and hands it to the GL thread, where it happens in
 * the same order. The view passes on what the platform says, a call each.
 */
final class Effect {
    /** A look takes at most 4 steps of 1/60 s a frame: with fewer frames it would fall behind. */
    private static final int LEAST_FRAME_LIMIT = 15;

    private final RenderThread thread;
    private final LookType type;
    private final EffectRenderer renderer;
    private final Map<String, Float> settings;
    private TouchMode touchMode = TouchMode.TAKE;
    private boolean isEnabled = true;
    private boolean isAttached;

    /** @param errors is called on the GL thread */
    Effect(RenderThread thread, Gpu gpu, LookType type, EffectErrorListener errors) {
        this.thread = thread;
        this.type = type.read(thread.frames());
        renderer = new EffectRenderer(gpu, thread.frames(), type, errors);
        settings = type.initial();
    }

    /** Does nothing and knows no parameters, for layout editors: they have no native library. */
    static Effect idle() {
        return new Effect(new RenderThread(null, new NoFrames()), null, LookType.empty(), null);
    }

    private boolean isIdle() {
        return type.parameters().isEmpty();
    }

    /** The look begins anew, with the settings that are. Ignored while attached. */
    void attach() {
        if (isAttached) {
            return;
        }
        isAttached = true;
        final Map<String, Float> copy = new LinkedHashMap<>(settings);
        thread.post(() -> {
            renderer.open(copy);
            thread.attach(renderer);
        });
    }

    /** Ends the look and frees all that it has. Ignored while detached. */
    void detach() {
        if (isAttached) {
            isAttached = false;
            thread.post(() -> thread.detach(renderer));
        }
    }

    /** There is a window to draw into, or it has another size. */
    void windowChanged(Object window, int width, int height) {
        thread.post(() -> {
            thread.enter();
            renderer.setWindow(window, width, height);
        });
    }

    /**
     * The window goes.
     *
     * @param release frees it, on the GL thread, once nothing draws into it
     */
    void windowGone(Runnable release) {
        thread.post(() -> {
            renderer.setWindow(null, 0, 0);
            release.run();
        });
    }

    void setVisible(boolean isVisible) {
        thread.post(() -> {
            thread.enter();
            renderer.setVisible(isVisible);
        });
    }

    void setPaused(boolean isPaused) {
        thread.post(() -> renderer.setPaused(isPaused));
    }

    void setTouchMode(TouchMode touchMode) {
        this.touchMode = Objects.requireNonNull(touchMode, "touchMode must not be null");
        cancelUnfollowed();
    }

    /** Disabled, a view shows no touches; whom they go to stays the same. */
    void setEnabled(boolean isEnabled) {
        this.isEnabled = isEnabled;
        cancelUnfollowed();
    }

    private void cancelUnfollowed() {
        if (!isEnabled || touchMode != TouchMode.TAKE) {
            thread.post(() -> renderer.cancelTouches(0));
        }
    }

    /**
     * Takes what the platform says about fingers on the view.
     *
     * @return whether the view takes the touch, so that others do not get it
     */
    boolean onTouch(PointerEvent event) {
        if (isEnabled && touchMode == TouchMode.THROUGH && event.isDown()) {
            tap(event.actionPointer().x, event.actionPointer().y);
        }
        if (isEnabled && touchMode == TouchMode.TAKE) {
            follow(event);
        }
        return touchMode == TouchMode.TAKE;
    }

    /** Follows all fingers of an event, whatever the touch mode is. */
    void follow(PointerEvent event) {
        switch (event.action) {
            case PointerEvent.DOWN:
            case PointerEvent.POINTER_DOWN:
                post(TouchPhase.DOWN, event.actionPointer());
                break;
            case PointerEvent.UP:
            case PointerEvent.POINTER_UP:
                final boolean isCanceled = (event.flags & PointerEvent.FLAG_CANCELED) != 0;
                post(isCanceled ? TouchPhase.CANCEL : TouchPhase.UP, event.actionPointer());
                break;
            case PointerEvent.MOVE:
                post(TouchPhase.MOVE, event.pointers);
                break;
            case PointerEvent.CANCEL:
                post(TouchPhase.CANCEL, event.pointers);
                break;
            default: // a mouse that hovers, a wheel
        }
    }

    private void post(TouchPhase phase, PointerEvent.Pointer... pointers) {
        for (PointerEvent.Pointer pointer : pointers) {
            post(pointer.id, pointer.x, pointer.y, phase);
        }
    }

    /** Touches from code, with points of its own: none of them is a finger's. */
    void touch(int point, float x, float y, TouchPhase phase) {
        if (point < 0) {
            throw new IllegalArgumentException("point must be at least 0, is " + point);
        }
        post(-1 - point, x, y, Objects.requireNonNull(phase, "phase must not be null"));
    }

    /** A touch that is over at once. */
    void tap(float x, float y) {
        post(Integer.MIN_VALUE, x, y, TouchPhase.DOWN);
        post(Integer.MIN_VALUE, x, y, TouchPhase.UP);
    }

    private void post(int point, float x, float y, TouchPhase phase) {
        thread.post(() -> renderer.touch(point, x, y, phase));
    }

    Map<String, Parameter> parameters() {
        return type.parameters();
    }

    float get(String parameter) {
        return isIdle() ? Float.NaN : settings.get(type.parameter(parameter).name);
    }

    void set(String parameter, float value) {
        if (isIdle()) {
            return;
        }
        type.parameter(parameter).require(value);
        settings.put(parameter, value);
        sendSettings();
    }

    /** As layouts have it: the name of a choice, or a number. */
    void setText(String parameter, String value) {
        final int choice = type.parameter(parameter).choices.indexOf(value);
        try {
            set(parameter, choice >= 0 ? choice : Float.parseFloat(value));
        } catch (NumberFormatException exception) {
            throw new IllegalArgumentException(parameter + " is neither a number nor one of "
                    + type.parameter(parameter).choices + ": " + value, exception);
        }
    }

    void usePreset(String preset) {
        if (isIdle()) {
            return;
        }
        settings.putAll(type.preset(preset));
        sendSettings();
    }

    private void sendSettings() {
        final Map<String, Float> copy = new LinkedHashMap<>(settings);
        thread.post(() -> renderer.set(copy));
    }

    /** @param picture null for none */
    void setPicture(@Nullable PictureSource picture) {
        thread.post(() -> {
            thread.enter();
            renderer.setPicture(picture);
        });
    }

    void setFrameLimit(float framesPerSecond) {
        if (!(framesPerSecond >= LEAST_FRAME_LIMIT)) {
            throw new IllegalArgumentException("framesPerSecond must be at least " + LEAST_FRAME_LIMIT
                    + ", or effects would slow down, is " + framesPerSecond);
        }
        thread.post(() -> renderer.setFrameLimit(framesPerSecond));
    }

    void setAdaptive(boolean isAdaptive) {
        thread.post(() -> renderer.setAdaptive(isAdaptive));
    }
}
