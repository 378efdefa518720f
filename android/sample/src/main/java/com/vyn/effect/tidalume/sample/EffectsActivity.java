package com.vyn.effect.tidalume.sample;

import android.app.Activity;
import android.os.Bundle;
import android.view.View;
import android.widget.ViewFlipper;

/** A screen for each effect; all of it is in the layout. Views that are not seen draw nothing. */
public final class EffectsActivity extends Activity {
    @Override
    protected void onCreate(Bundle savedState) {
        super.onCreate(savedState);
        setContentView(R.layout.effects);
    }

    /** Of the buttons. */
    public void showNext(View button) {
        ((ViewFlipper) findViewById(R.id.screens)).showNext();
    }
}
