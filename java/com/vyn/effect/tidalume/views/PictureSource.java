package com.vyn.effect.tidalume.views;

import java.io.IOException;

/** Where a picture comes from; asked anew for each context. */
interface PictureSource {
    /** A picture on the GPU, the first row of which is its top; colours are premultiplied. */
    final class Texture {
        final int name;
        final int width;
        final int height;

        Texture(int name, int width, int height) {
            this.name = name;
            this.width = width;
            this.height = height;
        }
    }

    /** Reads the picture and uploads it, on the GL thread. The receiver deletes the texture. */
    Texture upload() throws IOException;
}
