#include "effects/water/IntensityMapBuilder.h"

#include "jni/Bridge.h"

using tidalume::allocate;
using tidalume::fromHandle;
using tidalume::PinnedFloats;
using tidalume::release;

extern "C" {

JNIEXPORT jlong JNICALL Java_com_vyn_effect_tidalume_IntensityMapBuilder_Alloc(JNIEnv*, jclass) {
    return allocate<IntensityMapBuilder>();
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_IntensityMapBuilder_Free(JNIEnv*, jclass, jlong handle) {
    release<IntensityMapBuilder>(handle);
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_IntensityMapBuilder_init(JNIEnv*, jclass, jlong handle) {
    fromHandle<IntensityMapBuilder>(handle)->init();
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_IntensityMapBuilder_setScreenSize(JNIEnv*, jclass, jlong handle,
                                                                                      jint width, jint height) {
    fromHandle<IntensityMapBuilder>(handle)->setScreenSize(width, height);
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_IntensityMapBuilder_GLContextDestroyed(JNIEnv*, jclass,
                                                                                           jlong handle) {
    fromHandle<IntensityMapBuilder>(handle)->GLContextDestroyed();
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_IntensityMapBuilder_addDropLine(JNIEnv* env, jclass, jlong handle,
                                                                                    jfloatArray center,
                                                                                    jfloatArray center2, jfloat radius,
                                                                                    jfloat strength,
                                                                                    jfloat preserveWeight) {
    const PinnedFloats centerFloats(env, center);
    const PinnedFloats center2Floats(env, centerFloats ? center2 : nullptr);
    if (centerFloats && center2Floats) {
        fromHandle<IntensityMapBuilder>(handle)->addDropLine(centerFloats.elements(), center2Floats.elements(), radius,
                                                             strength, preserveWeight);
    }
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_IntensityMapBuilder_addHorizontalWave(
    JNIEnv*, jclass, jlong handle, jfloat center, jfloat radius, jfloat strength, jfloat waveRadius, jfloat waveCount,
    jfloat preserveWeight) {
    fromHandle<IntensityMapBuilder>(handle)->addHorizontalWave(center, radius, strength, waveRadius, waveCount,
                                                               preserveWeight);
}

JNIEXPORT jint JNICALL Java_com_vyn_effect_tidalume_IntensityMapBuilder_getTexture(JNIEnv*, jclass, jlong handle) {
    return static_cast<jint>(fromHandle<IntensityMapBuilder>(handle)->getTexture());
}

} // extern "C"
