package com.vyn.effect.tidalume.views;

import android.content.res.Resources;
import android.graphics.Bitmap;
import android.graphics.BitmapFactory;
import android.opengl.GLES30;
import android.opengl.GLUtils;
import java.io.IOException;

/** Pictures of Android, whose bitmaps are premultiplied. */
final class BitmapSource {
    private BitmapSource() {
    }

    /** A picture that is decoded on the GL thread, in its own size. */
    static PictureSource of(Resources resources, int resource) {
        return () -> {
            final BitmapFactory.Options options = new BitmapFactory.Options();
            options.inScaled = false;
            final Bitmap bitmap = BitmapFactory.decodeResource(resources, resource, options);
            if (bitmap == null) {
                throw new IOException(resources.getResourceName(resource) + " is no bitmap");
            }
            try {
                return upload(bitmap);
            } finally {
                bitmap.recycle();
            }
        };
    }

    /** A bitmap of the application's. */
    static PictureSource of(Bitmap bitmap) {
        return () -> upload(bitmap);
    }

    private static PictureSource.Texture upload(Bitmap bitmap) throws IOException {
        if (bitmap.isRecycled()) {
            throw new IOException("the bitmap is recycled");
        }
        final int[] limit = new int[1];
        GLES30.glGetIntegerv(GLES30.GL_MAX_TEXTURE_SIZE, limit, 0);
        if (Math.max(bitmap.getWidth(), bitmap.getHeight()) > limit[0]) {
            throw new IOException("the picture has " + bitmap.getWidth() + " x " + bitmap.getHeight()
                    + " pixels, this phone's textures end at " + limit[0]);
        }
        if (bitmap.getConfig() == Bitmap.Config.ARGB_8888) {
            return uploadPixels(bitmap);
        }
        // Of other kinds GL reads no pixels, as from the GPU's own memory, or no colours.
        final Bitmap copy = bitmap.copy(Bitmap.Config.ARGB_8888, false);
        if (copy == null) {
            throw new IOException("the bitmap cannot be copied");
        }
        try {
            return uploadPixels(copy);
        } finally {
            copy.recycle();
        }
    }

    private static PictureSource.Texture uploadPixels(Bitmap bitmap) throws IOException {
        final int[] texture = new int[1];
        GLES30.glGenTextures(1, texture, 0);
        boolean isDone = false;
        try {
            GLES30.glBindTexture(GLES30.GL_TEXTURE_2D, texture[0]);
            GLUtils.texImage2D(GLES30.GL_TEXTURE_2D, 0, bitmap, 0);
            if (GLES30.glGetError() == GLES30.GL_OUT_OF_MEMORY) {
                throw new IOException("the GPU has no memory for the picture");
            }
            isDone = true;
        } finally {
            if (!isDone) {
                GLES30.glDeleteTextures(1, texture, 0);
            }
        }
        return new PictureSource.Texture(texture[0], bitmap.getWidth(), bitmap.getHeight());
    }
}
