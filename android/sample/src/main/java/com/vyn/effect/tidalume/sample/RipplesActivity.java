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
        final float x = event.getX();
        final float y = event.getY();
        switch (event.getActionMasked()) {
            case MotionEvent.ACTION_DOWN:
                view.queueEvent(() -> renderer.touchDown(x, y));
                return true;
            case MotionEvent.ACTION_MOVE:
                view.queueEvent(() -> renderer.touchMove(x, y));
                return true;
            default:
                return super.onTouchEvent(event);
        }
    }
}
