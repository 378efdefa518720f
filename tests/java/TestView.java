package com.vyn.effect.tidalume.views;

import static org.junit.Assert.*;

/** A view as the platform has it, with what it is shown. */
final class TestView {
    static final float[][] COLORS = {{1, 0, 0, 1}, {0, 1, 0, 1}, {0, 0, 1, 1}};

    final int index;
    private final ViewsFixture machine;
    final Effect effect;
    boolean isAttached;
    boolean isVisible = true;
    boolean isPaused;
    boolean isRefused;
    int surfacesToLose;
    int width;
    int height;
    float[] pixels;
    int swaps;

    TestView(ViewsFixture machine, int index) {
        this.machine = machine;
        this.index = index;
        effect = machine.effect(index);
        showPicture();
        attach(true);
    }

    void showPicture() {
        pixels = null;
        effect.setPicture(() -> machine.upload(COLORS[index]));
    }

    void set(String parameter, float value) {
        pixels = null;
        effect.set(parameter, value);
    }

    void attach(boolean isNowAttached) {
        isAttached = isNowAttached;
        pixels = null;
        if (isAttached) {
            effect.attach();
        } else {
            effect.detach();
        }
    }

    void open(int newWidth, int newHeight) {
        width = newWidth;
        height = newHeight;
        pixels = null;
        effect.windowChanged(this, width, height);
    }

    void close() {
        effect.windowGone(() -> { });
        width = 0;
    }

    void show(boolean isNowVisible) {
        isVisible = isNowVisible;
        pixels = null;
        effect.setVisible(isVisible);
    }

    void pause(boolean isNowPaused) {
        isPaused = isNowPaused;
        effect.setPaused(isPaused);
    }

    boolean isSeen() {
        return isAttached && width > 0 && isVisible;
    }

    /** Water shows its own picture, blobs are in front of nothing. */
    void check() {
        final float[] mean = new float[4];
        for (int i = 0; i < pixels.length; i++) {
            mean[i % 4] += 4 * pixels[i] / pixels.length;
        }
        if (index < COLORS.length) {
            assertArrayEquals(COLORS[index], mean, 0.35f);
        } else {
            assertEquals(0.5f, mean[3], 0.45f);
        }
    }
}
