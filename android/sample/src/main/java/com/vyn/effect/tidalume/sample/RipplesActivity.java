package com.vyn.effect.tidalume.sample;

import android.app.Activity;
import android.opengl.GLSurfaceView;
import android.os.Bundle;
import android.view.MotionEvent;
import com.vyn.effect.tidalume.looks.TouchPhase;

/** Water over pebbles. Rotation makes a new activity, and so a new renderer and new water. */
public final class RipplesActivity extends Activity {
    private GLSurfaceView view;
    private RipplesRenderer renderer;

    @Override
    protected void onCreate(Bundle savedState) {
        super.onCreate(savedState);
        renderer = new RipplesRenderer(getResources());
        view = new GLSurfaceView(this);
        view.setEGLContextClientVersion(3);
        view.setRenderer(renderer);
        setContentView(view);
    }

    @Override
    protected void onResume() {
        super.onResume();
        view.onResume();
    }

    @Override
    protected void onPause() {
        if (isFinishing() || isChangingConfigurations()) {
            // While the context is still there; view.onPause() waits for the GL thread to have done this.
            view.queueEvent(renderer::close);
        }
        view.onPause();
        super.onPause();
    }

    @Override
    public boolean onTouchEvent(MotionEvent event) {
        switch (event.getActionMasked()) {
            case MotionEvent.ACTION_DOWN:
            case MotionEvent.ACTION_POINTER_DOWN:
                touch(event, event.getActionIndex(), TouchPhase.DOWN);
                return true;
            case MotionEvent.ACTION_UP:
            case MotionEvent.ACTION_POINTER_UP:
                touch(event, event.getActionIndex(), TouchPhase.UP);
                return true;
            case MotionEvent.ACTION_MOVE:
                touchAll(event, TouchPhase.MOVE);
                return true;
            case MotionEvent.ACTION_CANCEL:
                touchAll(event, TouchPhase.CANCEL);
                return true;
            default:
                return super.onTouchEvent(event);
        }
    }

    private void touchAll(MotionEvent event, TouchPhase phase) {
        for (int i = 0; i < event.getPointerCount(); i++) {
            touch(event, i, phase);
        }
    }

    /** Hands a finger of the event to the GL thread. The event itself is Android's again before that thread runs. */
    private void touch(MotionEvent event, int index, TouchPhase phase) {
        final int finger = event.getPointerId(index);
        final float x = event.getX(index);
        final float y = event.getY(index);
        view.queueEvent(() -> renderer.touch(finger, x, y, phase));
    }
}
