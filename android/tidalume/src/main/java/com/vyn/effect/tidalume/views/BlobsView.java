package com.vyn.effect.tidalume.views;

import android.content.Context;
import android.util.AttributeSet;
import com.vyn.effect.tidalume.R;
import com.vyn.effect.tidalume.looks.BlobsLook;
import javax.annotation.Nullable;

/** Lit blobs over what lies behind. {@link BlobsLook} says what it shows and has the names of its presets. */
public final class BlobsView extends EffectView {
    private static final LookType TYPE = new LookType(BlobsLook::new);

    /**
     * For code.
     *
     * @param context of the activity
     */
    public BlobsView(Context context) {
        this(context, null);
    }

    /**
     * For layouts.
     *
     * @param context of the activity
     * @param attributes of the layout's element
     */
    public BlobsView(Context context, @Nullable AttributeSet attributes) {
        super(context, attributes, TYPE, R.styleable.BlobsView);
    }
}
