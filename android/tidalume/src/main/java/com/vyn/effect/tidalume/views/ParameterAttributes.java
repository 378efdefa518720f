package com.vyn.effect.tidalume.views;

import com.vyn.effect.tidalume.R;
import java.util.HashMap;
import java.util.Map;
import javax.annotation.Nullable;

/** Which parameter an attribute sets. A release build may have taken the attributes' own names away. */
final class ParameterAttributes {
    private static final Map<Integer, String> PARAMETERS = new HashMap<>();

    static {
        PARAMETERS.put(R.attr.effectSimulation, "simulation");
        PARAMETERS.put(R.attr.fieldScale, "fieldScale");
        PARAMETERS.put(R.attr.effectSpeed, "speed");
        PARAMETERS.put(R.attr.effectFade, "fade");
        PARAMETERS.put(R.attr.effectTouchRadius, "touchRadius");
        PARAMETERS.put(R.attr.effectTouchStrength, "touchStrength");
        PARAMETERS.put(R.attr.effectDepth, "depth");
        PARAMETERS.put(R.attr.effectSteepness, "steepness");
        PARAMETERS.put(R.attr.effectSky, "sky");
        PARAMETERS.put(R.attr.effectLight, "light");
        PARAMETERS.put(R.attr.effectRain, "rain");
        PARAMETERS.put(R.attr.effectPalette, "palette");
        PARAMETERS.put(R.attr.effectHue, "hue");
        PARAMETERS.put(R.attr.effectOpacity, "opacity");
        PARAMETERS.put(R.attr.effectDropSize, "dropSize");
        PARAMETERS.put(R.attr.effectDrops, "drops");
        PARAMETERS.put(R.attr.effectPools, "pools");
        PARAMETERS.put(R.attr.effectDuration, "duration");
        PARAMETERS.put(R.attr.effectBrightness, "brightness");
        PARAMETERS.put(R.attr.effectGlow, "glow");
        PARAMETERS.put(R.attr.effectSparks, "sparks");
        PARAMETERS.put(R.attr.effectHeadHue, "headHue");
        PARAMETERS.put(R.attr.effectTailHue, "tailHue");
        PARAMETERS.put(R.attr.effectMeteors, "meteors");
    }

    private ParameterAttributes() {
    }

    /** @return null for an attribute that is no parameter's */
    @Nullable
    static String parameterOf(int attribute) {
        return PARAMETERS.get(attribute);
    }
}
