package com.vyn.effect.tidalume.sample;

import android.app.Activity;
import android.opengl.GLSurfaceView;
import android.os.Bundle;
import android.view.MotionEvent;

/** Water over pebbles. Rotation makes a new activity, and so a new renderer and new effects. */
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
                queue(renderer::touchDown, event, event.getActionIndex());
                return true;
            case MotionEvent.ACTION_MOVE:
                for (int i = 0; i < event.getPointerCount(); i++) {
                    queue(renderer::touchMove, event, i);
                }
                return true;
            default:
                return super.onTouchEvent(event);
        }
    }

    private interface Touch {
        void at(int finger, float x, float y);
    }

    /** Hands a finger of the event to the GL thread. The event itself is Android's again before that thread runs. */
    private void queue(Touch touch, MotionEvent event, int index) {
        final int finger = event.getPointerId(index);
        final float x = event.getX(index);
        final float y = event.getY(index);
        view.queueEvent(() -> touch.at(finger, x, y));
    }
}
