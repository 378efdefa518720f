package com.vyn.effect.tidalume.sample;

import android.content.res.Resources;
import android.graphics.Bitmap;
import android.graphics.BitmapFactory;
import android.opengl.GLES30;
import android.opengl.GLSurfaceView;
import android.opengl.GLUtils;
import com.vyn.effect.tidalume.looks.PictureTop;
import com.vyn.effect.tidalume.looks.TouchPhase;
import com.vyn.effect.tidalume.looks.WaterLook;
import javax.microedition.khronos.egl.EGLConfig;
import javax.microedition.khronos.opengles.GL10;

/** Water over pebbles. Every method runs on the GL thread. */
final class RipplesRenderer implements GLSurfaceView.Renderer {
    private final Resources resources;
    private final WaterLook water = new WaterLook();

    RipplesRenderer(Resources resources) {
        this.resources = resources;
    }

    @Override
    public void onSurfaceCreated(GL10 unused, EGLConfig config) {
        water.contextLost(); // the one before, of which Android says nothing
        water.contextCreated();
        showPebbles();
    }

    @Override
    public void onSurfaceChanged(GL10 unused, int width, int height) {
        water.setSize(width, height);
    }

    @Override
    public void onDrawFrame(GL10 unused) {
        water.draw(System.nanoTime() / 1e9);
    }

    void touch(int finger, float x, float y, TouchPhase phase) {
        water.touch(finger, x, y, phase);
    }

    void close() {
        water.close();
    }

    private void showPebbles() {
        BitmapFactory.Options options = new BitmapFactory.Options();
        options.inScaled = false;
        Bitmap bitmap = BitmapFactory.decodeResource(resources, R.drawable.pebbles, options);
        int[] texture = new int[1];
        GLES30.glGenTextures(1, texture, 0);
        GLES30.glBindTexture(GLES30.GL_TEXTURE_2D, texture[0]);
        GLUtils.texImage2D(GLES30.GL_TEXTURE_2D, 0, bitmap, 0);
        water.setPicture(texture[0], bitmap.getWidth(), bitmap.getHeight(), PictureTop.FIRST_ROW);
        bitmap.recycle();
    }
}
