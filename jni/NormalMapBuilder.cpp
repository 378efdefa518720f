#include "effects/water/NormalMapBuilder.h"

#include "jni/Bridge.h"

using tidalume::allocate;
using tidalume::fromHandle;
using tidalume::release;

extern "C" {

JNIEXPORT jlong JNICALL Java_com_vyn_effect_tidalume_NormalMapBuilder_Alloc(JNIEnv*, jclass) {
    return allocate<NormalMapBuilder>();
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_NormalMapBuilder_Free(JNIEnv*, jclass, jlong handle) {
    release<NormalMapBuilder>(handle);
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_NormalMapBuilder_init(JNIEnv*, jclass, jlong handle) {
    fromHandle<NormalMapBuilder>(handle)->init();
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_NormalMapBuilder_setScreenSize(JNIEnv*, jclass, jlong handle,
                                                                                   jint width, jint height) {
    fromHandle<NormalMapBuilder>(handle)->setScreenSize(width, height);
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_NormalMapBuilder_GLContextDestroyed(JNIEnv*, jclass, jlong handle) {
    fromHandle<NormalMapBuilder>(handle)->GLContextDestroyed();
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_NormalMapBuilder_setHeightMax(JNIEnv*, jclass, jlong handle,
                                                                                  jfloat heightMax) {
    fromHandle<NormalMapBuilder>(handle)->setHeightMax(heightMax);
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_NormalMapBuilder_build(JNIEnv*, jclass, jlong handle,
                                                                           jint texture) {
    fromHandle<NormalMapBuilder>(handle)->build(static_cast<unsigned int>(texture));
}

JNIEXPORT jint JNICALL Java_com_vyn_effect_tidalume_NormalMapBuilder_getTexture(JNIEnv*, jclass, jlong handle) {
    return static_cast<jint>(fromHandle<NormalMapBuilder>(handle)->getTexture());
}

} // extern "C"
