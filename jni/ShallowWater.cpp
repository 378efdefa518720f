#include "effects/water/ShallowWater.h"

#include "jni/Bridge.h"

using tidalume::allocate;
using tidalume::fromHandle;
using tidalume::PinnedFloats;
using tidalume::release;

extern "C" {

JNIEXPORT jlong JNICALL Java_com_vyn_effect_tidalume_ShallowWater_Alloc(JNIEnv*, jclass) {
    return allocate<ShallowWater>();
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_ShallowWater_Free(JNIEnv*, jclass, jlong handle) {
    release<ShallowWater>(handle);
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_ShallowWater_init(JNIEnv*, jclass, jlong handle) {
    fromHandle<ShallowWater>(handle)->init();
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_ShallowWater_setScreenSize(JNIEnv*, jclass, jlong handle,
                                                                               jint width, jint height) {
    fromHandle<ShallowWater>(handle)->setScreenSize(width, height);
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_ShallowWater_GLContextDestroyed(JNIEnv*, jclass, jlong handle) {
    fromHandle<ShallowWater>(handle)->GLContextDestroyed();
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_ShallowWater_addDrop(JNIEnv* env, jclass, jlong handle,
                                                                         jfloatArray center, jfloat radius,
                                                                         jfloat strength) {
    const PinnedFloats centerFloats(env, center);
    if (centerFloats) fromHandle<ShallowWater>(handle)->addDrop(centerFloats.elements(), radius, strength);
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_ShallowWater_addDropLine(JNIEnv* env, jclass, jlong handle,
                                                                             jfloatArray center, jfloatArray center2,
                                                                             jfloat radius, jfloat strength) {
    const PinnedFloats centerFloats(env, center);
    const PinnedFloats center2Floats(env, centerFloats ? center2 : nullptr);
    if (centerFloats && center2Floats) {
        fromHandle<ShallowWater>(handle)->addDropLine(centerFloats.elements(), center2Floats.elements(), radius,
                                                      strength);
    }
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_ShallowWater_update(JNIEnv*, jclass, jlong handle) {
    fromHandle<ShallowWater>(handle)->update();
}

JNIEXPORT jint JNICALL Java_com_vyn_effect_tidalume_ShallowWater_getTexture(JNIEnv*, jclass, jlong handle) {
    return static_cast<jint>(fromHandle<ShallowWater>(handle)->getTexture());
}

} // extern "C"
