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
            final PictureSource.Texture texture = upload(bitmap);
            bitmap.recycle();
            return texture;
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
        final int[] texture = new int[1];
        GLES30.glGenTextures(1, texture, 0);
        GLES30.glBindTexture(GLES30.GL_TEXTURE_2D, texture[0]);
        GLUtils.texImage2D(GLES30.GL_TEXTURE_2D, 0, bitmap, 0);
        return new PictureSource.Texture(texture[0], bitmap.getWidth(), bitmap.getHeight());
    }
}
