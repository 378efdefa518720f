package com.vyn.effect.tidalume.views;

import android.content.Context;
import android.util.AttributeSet;
import com.vyn.effect.tidalume.R;
import com.vyn.effect.tidalume.looks.SprayLook;
import javax.annotation.Nullable;

/**
 * Fingers that spray drops over what lies behind. {@link SprayLook} says what it shows and has the names of its
 * presets.
 */
public final class SprayView extends EffectView {
    private static final LookType TYPE = new LookType(SprayLook::new);

    /**
     * For code.
     *
     * @param context of the activity
     */
    public SprayView(Context context) {
        this(context, null);
    }

    /**
     * For layouts.
     *
     * @param context of the activity
     * @param attributes of the layout's element
     */
    public SprayView(Context context, @Nullable AttributeSet attributes) {
        super(context, attributes, TYPE, R.styleable.SprayView);
    }
}
