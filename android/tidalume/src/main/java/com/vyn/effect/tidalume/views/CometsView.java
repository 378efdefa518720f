package com.vyn.effect.tidalume.views;

import android.content.Context;
import android.util.AttributeSet;
import com.vyn.effect.tidalume.R;
import com.vyn.effect.tidalume.looks.CometsLook;
import javax.annotation.Nullable;

/**
 * Comets over what lies behind, two for every finger. {@link CometsLook} says what it shows and has the names of its
 * presets.
 */
public final class CometsView extends EffectView {
    private static final LookType TYPE = new LookType(CometsLook::new);

    /**
     * For code.
     *
     * @param context of the activity
     */
    public CometsView(Context context) {
        this(context, null);
    }

    /**
     * For layouts.
     *
     * @param context of the activity
     * @param attributes of the layout's element
     */
    public CometsView(Context context, @Nullable AttributeSet attributes) {
        super(context, attributes, TYPE, R.styleable.CometsView);
    }
}
