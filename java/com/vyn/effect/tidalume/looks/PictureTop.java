package com.vyn.effect.tidalume.looks;

/** Which row of a texture is the top of the picture that it shows. */
public enum PictureTop {
    /** As in textures that have been drawn into. */
    LAST_ROW,
    /** As in bitmaps that have been uploaded from the top. */
    FIRST_ROW
}
