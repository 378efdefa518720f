#include "tests/support/LiveNames.h"

#include <jni.h>

extern "C" JNIEXPORT jlong JNICALL Java_com_vyn_effect_tidalume_views_LiveNames_count(JNIEnv*, jclass) {
    return static_cast<jlong>(liveObjects());
}
