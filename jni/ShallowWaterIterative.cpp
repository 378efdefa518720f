#include "effects/water/ShallowWaterIterative.h"

#include "jni/Bridge.h"

using tidalume::allocate;
using tidalume::fromHandle;
using tidalume::PinnedFloats;
using tidalume::release;

extern "C" {

JNIEXPORT jlong JNICALL Java_com_vyn_effect_tidalume_ShallowWaterIterative_Alloc(JNIEnv*, jclass) {
    return allocate<ShallowWaterIterative>();
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_ShallowWaterIterative_Free(JNIEnv*, jclass, jlong handle) {
    release<ShallowWaterIterative>(handle);
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_ShallowWaterIterative_init(JNIEnv*, jclass, jlong handle) {
    fromHandle<ShallowWaterIterative>(handle)->init();
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_ShallowWaterIterative_setScreenSize(JNIEnv*, jclass, jlong handle,
                                                                                        jint width, jint height) {
    fromHandle<ShallowWaterIterative>(handle)->setScreenSize(width, height);
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_ShallowWaterIterative_GLContextDestroyed(JNIEnv*, jclass,
                                                                                             jlong handle) {
    fromHandle<ShallowWaterIterative>(handle)->GLContextDestroyed();
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_ShallowWaterIterative_setIterationCount(JNIEnv*, jclass,
                                                                                            jlong handle, jint count) {
    fromHandle<ShallowWaterIterative>(handle)->setIterationCount(count);
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_ShallowWaterIterative_addDrop(JNIEnv* env, jclass, jlong handle,
                                                                                  jfloatArray center, jfloat radius,
                                                                                  jfloat strength,
                                                                                  jfloat preserveWeight) {
    const PinnedFloats centerFloats(env, center);
    if (centerFloats)
        fromHandle<ShallowWaterIterative>(handle)->addDrop(centerFloats.elements(), radius, strength, preserveWeight);
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_ShallowWaterIterative_addDropLine(JNIEnv* env, jclass, jlong handle,
                                                                                      jfloatArray center,
                                                                                      jfloatArray center2,
                                                                                      jfloat radius, jfloat strength,
                                                                                      jfloat preserveWeight) {
    const PinnedFloats centerFloats(env, center);
    const PinnedFloats center2Floats(env, centerFloats ? center2 : nullptr);
    if (centerFloats && center2Floats) {
        fromHandle<ShallowWaterIterative>(handle)->addDropLine(centerFloats.elements(), center2Floats.elements(),
                                                               radius, strength, preserveWeight);
    }
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_ShallowWaterIterative_addHorizontalWave(
    JNIEnv*, jclass, jlong handle, jfloat center, jfloat radius, jfloat strength, jfloat waveRadius, jfloat waveCount,
    jfloat preserveWeight) {
    fromHandle<ShallowWaterIterative>(handle)->addHorizontalWave(center, radius, strength, waveRadius, waveCount,
                                                                 preserveWeight);
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_ShallowWaterIterative_update(JNIEnv*, jclass, jlong handle) {
    fromHandle<ShallowWaterIterative>(handle)->update();
}

JNIEXPORT jint JNICALL Java_com_vyn_effect_tidalume_ShallowWaterIterative_getTexture(JNIEnv*, jclass, jlong handle) {
    return static_cast<jint>(fromHandle<ShallowWaterIterative>(handle)->getTexture());
}

} // extern "C"
