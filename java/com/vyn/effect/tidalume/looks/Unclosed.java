package com.vyn.effect.tidalume.looks;

import java.lang.ref.PhantomReference;
import java.lang.ref.ReferenceQueue;
import java.util.HashSet;
import java.util.Set;
import java.util.logging.Level;
import java.util.logging.Logger;

/** Finds looks that are gone without having been closed, while debugging. */
final class Unclosed extends PhantomReference<Look> {
    private static final Set<Unclosed> WATCHED = new HashSet<>();
    private static final ReferenceQueue<Look> GONE = new ReferenceQueue<>();
    private static boolean isWatching;

    private final Throwable place;

    private Unclosed(Look look) {
        super(look, GONE);
        place = new Throwable("a " + look.getClass().getSimpleName() + " was never closed; it was made here");
    }

    static synchronized void setWatching(boolean isNowWatching) {
        isWatching = isNowWatching;
    }

    /** Reports those that are gone by now. Returns null where nothing is watched. */
    static synchronized Unclosed watch(Look look) {
        for (Object gone = GONE.poll(); gone != null; gone = GONE.poll()) {
            if (WATCHED.remove(gone)) {
                final Throwable place = ((Unclosed) gone).place;
                Logger.getLogger("Tidalume").log(Level.WARNING, place.getMessage(), place);
            }
        }
        if (!isWatching) {
            return null;
        }
        final Unclosed watched = new Unclosed(look);
        WATCHED.add(watched);
        return watched;
    }

    static synchronized void closed(Unclosed watched) {
        WATCHED.remove(watched);
    }
}
