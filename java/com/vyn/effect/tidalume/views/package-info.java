/**
 * Views that show a look, for Android. What stands here knows nothing of Android and runs on any JVM; the views
 * themselves, which come with the Android module, pass on what the platform tells them.
 *
 * <p>All views of a process share one thread and one GL context. A view owns its look while it is attached, and its
 * surface.
 */
@ParametersAreNonnullByDefault
package com.vyn.effect.tidalume.views;

import javax.annotation.ParametersAreNonnullByDefault;
