package com.vyn.effect.tidalume.views;

import android.content.Context;
import android.hardware.display.DisplayManager;
import android.os.Handler;
import android.os.HandlerThread;
import android.os.Process;
import android.view.Choreographer;
import android.view.Display;

/** A thread of our own with the display's frames. */
final class AndroidFrames implements Frames {
    private final Handler handler;
    private final DisplayManager displays;

    AndroidFrames(Context context) {
        displays = (DisplayManager) context.getSystemService(Context.DISPLAY_SERVICE);
        final HandlerThread thread = new HandlerThread("Tidalume GL", Process.THREAD_PRIORITY_DISPLAY);
        thread.start();
        handler = new Handler(thread.getLooper());
    }

    @Override
    public void post(Runnable task) {
        handler.post(task);
    }

    @Override
    public void request(Listener listener) {
        Choreographer.getInstance().postFrameCallback(listener::frame);
    }

    @Override
    public long periodNanoseconds() {
        return (long) (1e9 / displays.getDisplay(Display.DEFAULT_DISPLAY).getRefreshRate());
    }
}
