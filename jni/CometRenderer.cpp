#include "effects/comet/CometRenderer.h"

#include "jni/Bridge.h"

using tidalume::allocate;
using tidalume::fromHandle;
using tidalume::release;

extern "C" {

JNIEXPORT jlong JNICALL Java_com_vyn_effect_tidalume_CometRenderer_Alloc(JNIEnv*, jclass) {
    return allocate<CometRenderer>();
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_CometRenderer_Free(JNIEnv*, jclass, jlong handle) {
    release<CometRenderer>(handle);
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_CometRenderer_init(JNIEnv*, jclass, jlong handle) {
    fromHandle<CometRenderer>(handle)->init();
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_CometRenderer_setScreenSize(JNIEnv*, jclass, jlong handle,
                                                                                jint width, jint height) {
    fromHandle<CometRenderer>(handle)->setScreenSize(width, height);
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_CometRenderer_GLContextDestroyed(JNIEnv*, jclass, jlong handle) {
    fromHandle<CometRenderer>(handle)->GLContextDestroyed();
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_CometRenderer_render(JNIEnv*, jclass, jlong handle, jdouble t) {
    fromHandle<CometRenderer>(handle)->render(t);
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_CometRenderer_push(JNIEnv*, jclass, jlong handle, jfloat x,
                                                                       jfloat y, jint action) {
    fromHandle<CometRenderer>(handle)->push(x, y, action);
}

JNIEXPORT jfloat JNICALL Java_com_vyn_effect_tidalume_CometRenderer_getCore1X(JNIEnv*, jclass, jlong handle) {
    return fromHandle<CometRenderer>(handle)->getCore1X();
}

JNIEXPORT jfloat JNICALL Java_com_vyn_effect_tidalume_CometRenderer_getCore1Y(JNIEnv*, jclass, jlong handle) {
    return fromHandle<CometRenderer>(handle)->getCore1Y();
}

JNIEXPORT jfloat JNICALL Java_com_vyn_effect_tidalume_CometRenderer_getCore2X(JNIEnv*, jclass, jlong handle) {
    return fromHandle<CometRenderer>(handle)->getCore2X();
}

JNIEXPORT jfloat JNICALL Java_com_vyn_effect_tidalume_CometRenderer_getCore2Y(JNIEnv*, jclass, jlong handle) {
    return fromHandle<CometRenderer>(handle)->getCore2Y();
}

} // extern "C"
