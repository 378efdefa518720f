#include "effects/metaball/MetaballRenderer.h"

#include "jni/Bridge.h"

using tidalume::allocate;
using tidalume::fromHandle;
using tidalume::release;

extern "C" {

JNIEXPORT jlong JNICALL Java_com_vyn_effect_tidalume_MetaballRenderer_Alloc(JNIEnv*, jclass) {
    return allocate<MetaballRenderer>();
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_MetaballRenderer_Free(JNIEnv*, jclass, jlong handle) {
    release<MetaballRenderer>(handle);
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_MetaballRenderer_init(JNIEnv*, jclass, jlong handle,
                                                                          jfloat quality) {
    fromHandle<MetaballRenderer>(handle)->init(quality);
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_MetaballRenderer_setScreenSize(JNIEnv*, jclass, jlong handle,
                                                                                   jint width, jint height) {
    fromHandle<MetaballRenderer>(handle)->setScreenSize(width, height);
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_MetaballRenderer_GLContextDestroyed(JNIEnv*, jclass, jlong handle) {
    fromHandle<MetaballRenderer>(handle)->GLContextDestroyed();
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_MetaballRenderer_render(JNIEnv*, jclass, jlong handle,
                                                                            jfloat pressRadius, jfloat alphaFactor) {
    fromHandle<MetaballRenderer>(handle)->render(pressRadius, alphaFactor);
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_MetaballRenderer_push(JNIEnv*, jclass, jlong handle, jfloat x,
                                                                          jfloat y, jint action) {
    fromHandle<MetaballRenderer>(handle)->push(x, y, action);
}

} // extern "C"
