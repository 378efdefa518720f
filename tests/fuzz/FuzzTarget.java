package com.vyn.effect.tidalume;

import com.vyn.effect.tidalume.headless.HeadlessContext;
import java.lang.reflect.Method;

/** Sessions of calls of the native methods. */
final class FuzzTarget {
    private static final HeadlessContext CONTEXT = HeadlessContext.create(64, 64);

    /** Leaves the context current, for who looks at what is left in it. */
    static void play(byte[] choices) throws Exception {
        GlobalProperty.setDEBUGLOG(false);
        GlobalProperty.setBINARYSHADER(false);
        GlobalProperty.setROOTDIR("");
        new Session(CONTEXT, true, choices, Method::invoke).run();
    }
}
