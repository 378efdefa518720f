package com.vyn.effect.tidalume.sample;

import android.content.res.Resources;
import android.graphics.Bitmap;
import android.graphics.BitmapFactory;
import android.opengl.GLES30;
import android.opengl.GLSurfaceView;
import android.opengl.GLUtils;
import javax.microedition.khronos.egl.EGLConfig;
import javax.microedition.khronos.opengles.GL10;

/** Joins {@link Ripples} to a GLSurfaceView. Every method runs on the GL thread. */
final class RipplesRenderer implements GLSurfaceView.Renderer {
    private final Resources resources;
    private final Ripples ripples = new Ripples();

    RipplesRenderer(Resources resources) {
        this.resources = resources;
    }

    @Override
    public void onSurfaceCreated(GL10 unused, EGLConfig config) {
        ripples.contextCreated(loadPicture());
    }

    @Override
    public void onSurfaceChanged(GL10 unused, int width, int height) {
        ripples.sizeChanged(width, height);
    }

    @Override
    public void onDrawFrame(GL10 unused) {
        ripples.drawFrame(System.nanoTime());
    }

    void touchDown(int finger, float x, float y) {
        ripples.touchDown(finger, x, y);
    }

    void touchMove(int finger, float x, float y) {
        ripples.touchMove(finger, x, y);
    }

    void close() {
        ripples.close();
    }

    private int loadPicture() {
        BitmapFactory.Options options = new BitmapFactory.Options();
        options.inScaled = false;
        Bitmap bitmap = BitmapFactory.decodeResource(resources, R.drawable.pebbles, options);
        int[] texture = new int[1];
        GLES30.glGenTextures(1, texture, 0);
        GLES30.glBindTexture(GLES30.GL_TEXTURE_2D, texture[0]);
        GLUtils.texImage2D(GLES30.GL_TEXTURE_2D, 0, bitmap, 0);
        bitmap.recycle();
        return texture[0];
    }
}
