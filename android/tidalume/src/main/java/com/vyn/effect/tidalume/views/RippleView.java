package com.vyn.effect.tidalume.views;

import android.content.Context;
import android.content.res.TypedArray;
import android.graphics.Bitmap;
import android.util.AttributeSet;
import com.vyn.effect.tidalume.R;
import com.vyn.effect.tidalume.looks.WaterLook;
import javax.annotation.Nullable;

/** Water over a picture. {@link WaterLook} says what it shows and has the names of its presets. */
public final class RippleView extends EffectView {
    private static final LookType TYPE = new LookType(WaterLook::new);

    /**
     * For code.
     *
     * @param context of the activity
     */
    public RippleView(Context context) {
        this(context, null);
    }

    /**
     * For layouts. {@code app:src} is the picture.
     *
     * @param context of the activity
     * @param attributes of the layout's element
     */
    public RippleView(Context context, @Nullable AttributeSet attributes) {
        super(context, attributes, TYPE, R.styleable.RippleView);
        final TypedArray values = context.obtainStyledAttributes(attributes, R.styleable.RippleView);
        final int resource = values.getResourceId(R.styleable.RippleView_src, 0);
        values.recycle();
        if (resource != 0) {
            setPicture(resource);
        }
    }

    /**
     * Sets the picture on the ground.
     *
     * @param resource a bitmap among the drawables
     */
    public void setPicture(int resource) {
        effect().setPicture(BitmapSource.of(getResources(), resource));
    }

    /**
     * Sets the picture on the ground.
     *
     * @param bitmap is kept, and uploaded again for each new context; null for none
     */
    public void setPicture(@Nullable Bitmap bitmap) {
        effect().setPicture(bitmap == null ? null : BitmapSource.of(bitmap));
    }
}
