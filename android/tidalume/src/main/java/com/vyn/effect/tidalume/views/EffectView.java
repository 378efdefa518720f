package com.vyn.effect.tidalume.views;

import android.content.Context;
import android.content.res.TypedArray;
import android.graphics.SurfaceTexture;
import android.os.Handler;
import android.os.Looper;
import android.util.AttributeSet;
import android.util.Log;
import android.view.MotionEvent;
import android.view.TextureView;
import android.view.View;
import com.vyn.effect.tidalume.R;
import com.vyn.effect.tidalume.looks.Parameter;
import com.vyn.effect.tidalume.looks.TouchPhase;
import java.util.Map;
import javax.annotation.Nullable;

/**
 * A view that shows a look. It is transparent where the look is, follows fingers, draws only while something moves and
 * is seen, and has nothing to be closed: while it is detached it holds neither memory of the GPU nor a look. Attached
 * again it begins anew, with its settings.
 *
 * <p>In a layout every parameter is an attribute: {@code speed} is {@code app:effectSpeed}, {@code fieldScale} is
 * {@code app:fieldScale}. The view listens to its surface itself, so {@code setSurfaceTextureListener} must not be called:
 * the view would stay empty. All methods belong on the main thread. In a layout editor, which has no native library, a
 * view stays empty and knows no parameters.
 */
public abstract class EffectView extends TextureView implements TextureView.SurfaceTextureListener {
    /** A view's own queue may wait until it is attached. */
    private static final Handler MAIN = new Handler(Looper.getMainLooper());
    private static AndroidGpu gpu;
    private static RenderThread thread;

    private final Effect effect;
    @Nullable
    private EffectErrorListener errorListener;

    /** @param styleable of the view's parameters; other attributes in it are left to the view */
    EffectView(Context context, @Nullable AttributeSet attributes, LookType type, int[] styleable) {
        super(context, attributes);
        effect = isInEditMode() ? Effect.idle() : new Effect(shared(context), gpu, type, this::postError);
        setOpaque(false);
        setSurfaceTextureListener(this);
        readAttributes(context.obtainStyledAttributes(attributes, R.styleable.EffectView));
        readParameters(context.obtainStyledAttributes(attributes, styleable), styleable);
    }

    private static synchronized RenderThread shared(Context context) {
        if (thread == null) {
            gpu = new AndroidGpu();
            thread = new RenderThread(gpu, new AndroidFrames(context.getApplicationContext()));
        }
        return thread;
    }

    private void readAttributes(TypedArray attributes) {
        final String preset = attributes.getString(R.styleable.EffectView_preset);
        if (preset != null) {
            usePreset(preset);
        }
        final int touches = attributes.getInt(R.styleable.EffectView_effectTouches, TouchMode.TAKE.ordinal());
        setTouchMode(TouchMode.values()[touches]);
        setFrameLimit(attributes.getFloat(R.styleable.EffectView_effectFrameLimit, Float.POSITIVE_INFINITY));
        setAdaptive(attributes.getBoolean(R.styleable.EffectView_effectAdaptive, true));
        attributes.recycle();
    }

    private void readParameters(TypedArray attributes, int[] styleable) {
        for (int i = 0; i < styleable.length; i++) {
            final String value = attributes.getString(i);
            final String parameter = ParameterAttributes.parameterOf(styleable[i]);
            if (value != null && parameters().containsKey(parameter)) {
                effect.setText(parameter, value);
            }
        }
        attributes.recycle();
    }

    final Effect effect() {
        return effect;
    }

    /**
     * What can be set.
     *
     * @return all parameters by their names
     */
    public Map<String, Parameter> parameters() {
        return effect.parameters();
    }

    /**
     * Sets a parameter.
     *
     * @param parameter its name, one of {@link #parameters}
     * @param value in its range and unit
     * @throws IllegalArgumentException if there is no such parameter, or the value is out of range
     */
    public void set(String parameter, float value) {
        effect.set(parameter, value);
    }

    /**
     * The value of a parameter, as it was set; what slow frames make of {@code fieldScale} is not seen in it.
     *
     * @param parameter its name
     * @return the value, in its unit
     * @throws IllegalArgumentException if there is no such parameter
     */
    public float get(String parameter) {
        return effect.get(parameter);
    }

    /**
     * Gives every parameter the value that the preset gives it, or its initial one.
     *
     * @param preset its name, one of the look's constants
     * @throws IllegalArgumentException if there is no such preset
     */
    public void usePreset(String preset) {
        effect.usePreset(preset);
    }

    /**
     * Sets what the view does with touches.
     *
     * @param mode at first {@link TouchMode#TAKE}
     */
    public void setTouchMode(TouchMode mode) {
        effect.setTouchMode(mode);
    }

    /**
     * Sets how many frames there are at most.
     *
     * @param framesPerSecond at least 15, as effects slow down below that; infinite for as many as the display has,
     *     which is so at first
     * @throws IllegalArgumentException if it is below 15
     */
    public void setFrameLimit(float framesPerSecond) {
        effect.setFrameLimit(framesPerSecond);
    }

    /**
     * Sets whether fields become coarser where frames are late, and finer again where there is room.
     *
     * @param isAdaptive at first true
     */
    public void setAdaptive(boolean isAdaptive) {
        effect.setAdaptive(isAdaptive);
    }

    /**
     * Stops the effect where it is, or lets it go on. A view that is hidden or whose window is stops by itself.
     *
     * @param isPaused whether it stands
     */
    public void setPaused(boolean isPaused) {
        effect.setPaused(isPaused);
    }

    /**
     * Touches the effect from code, as for music or a sensor.
     *
     * @param point at least 0, of your own numbering; fingers on the screen are other points
     * @param x in pixels from the left
     * @param y in pixels from the top
     * @param phase what the point does
     * @throws IllegalArgumentException if the point is below 0
     */
    public void touch(int point, float x, float y, TouchPhase phase) {
        effect.touch(point, x, y, phase);
    }

    /**
     * Touches the effect and lets go at once.
     *
     * @param x in pixels from the left
     * @param y in pixels from the top
     */
    public void tap(float x, float y) {
        effect.tap(x, y);
    }

    /**
     * Follows the fingers of an event that is another's, whatever the touch mode is: for an activity's or a layout's
     * {@code dispatchTouchEvent}.
     *
     * @param event as any view gets it
     */
    public void follow(MotionEvent event) {
        final int[] place = new int[2];
        getLocationOnScreen(place);
        final float left = place[0] - (event.getRawX() - event.getX());
        final float top = place[1] - (event.getRawY() - event.getY());
        effect.follow(pointerEvent(event, left, top));
    }

    /**
     * Sets who is told of errors, on the main thread.
     *
     * @param listener null for the log, which is told at first
     */
    public void setErrorListener(@Nullable EffectErrorListener listener) {
        errorListener = listener;
    }

    private void postError(EffectError error, String message) {
        MAIN.post(() -> report(error, message));
    }

    private void report(EffectError error, String message) {
        if (errorListener != null) {
            errorListener.onEffectError(error, message);
        } else {
            Log.e(getClass().getSimpleName(), error + ": " + message);
        }
    }

    /** Clicks stay the platform's, for those who listen. */
    @Override
    public boolean onTouchEvent(MotionEvent event) {
        final boolean isClick = super.onTouchEvent(event);
        return effect.onTouch(pointerEvent(event, 0, 0)) || isClick;
    }

    @Override
    public void setEnabled(boolean isEnabled) {
        super.setEnabled(isEnabled);
        if (effect != null) { // the constructor above this one may call
            effect.setEnabled(isEnabled);
        }
    }

    /** A copy: the event is Android's again before the GL thread sees it. */
    private static PointerEvent pointerEvent(MotionEvent event, float left, float top) {
        final PointerEvent.Pointer[] pointers = new PointerEvent.Pointer[event.getPointerCount()];
        for (int i = 0; i < pointers.length; i++) {
            pointers[i] = new PointerEvent.Pointer(event.getPointerId(i), event.getX(i) - left, event.getY(i) - top);
        }
        return new PointerEvent(event.getActionMasked(), event.getActionIndex(), event.getFlags(), pointers);
    }

    @Override
    protected void onAttachedToWindow() {
        super.onAttachedToWindow();
        effect.attach();
    }

    @Override
    protected void onDetachedFromWindow() {
        effect.detach();
        super.onDetachedFromWindow();
    }

    @Override
    protected void onVisibilityChanged(View changed, int visibility) {
        super.onVisibilityChanged(changed, visibility);
        showOrHide();
    }

    @Override
    protected void onWindowVisibilityChanged(int visibility) {
        super.onWindowVisibilityChanged(visibility);
        showOrHide();
    }

    private void showOrHide() {
        if (effect != null) { // the constructor above this one may call
            effect.setVisible(isShown() && getWindowVisibility() == VISIBLE);
        }
    }

    @Override
    public void onSurfaceTextureAvailable(SurfaceTexture surface, int width, int height) {
        effect.windowChanged(surface, width, height);
    }

    @Override
    public void onSurfaceTextureSizeChanged(SurfaceTexture surface, int width, int height) {
        effect.windowChanged(surface, width, height);
    }

    @Override
    public boolean onSurfaceTextureDestroyed(SurfaceTexture surface) {
        effect.windowGone(surface::release);
        return false; // it is released once the GL thread has let go of it
    }

    @Override
    public void onSurfaceTextureUpdated(SurfaceTexture surface) {
    }
}
