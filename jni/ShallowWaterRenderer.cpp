#include "effects/water/ShallowWaterRenderer.h"

#include "jni/Bridge.h"

using tidalume::allocate;
using tidalume::fromHandle;
using tidalume::release;

extern "C" {

JNIEXPORT jlong JNICALL Java_com_vyn_effect_tidalume_ShallowWaterRenderer_Alloc(JNIEnv*, jclass) {
    return allocate<ShallowWaterRenderer>();
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_ShallowWaterRenderer_Free(JNIEnv*, jclass, jlong handle) {
    release<ShallowWaterRenderer>(handle);
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_ShallowWaterRenderer_init(JNIEnv*, jclass, jlong handle) {
    fromHandle<ShallowWaterRenderer>(handle)->init();
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_ShallowWaterRenderer_setScreenSize(JNIEnv*, jclass, jlong handle,
                                                                                       jint width, jint height) {
    fromHandle<ShallowWaterRenderer>(handle)->setScreenSize(width, height);
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_ShallowWaterRenderer_GLContextDestroyed(JNIEnv*, jclass,
                                                                                            jlong handle) {
    fromHandle<ShallowWaterRenderer>(handle)->GLContextDestroyed();
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_ShallowWaterRenderer_setHeightMax(JNIEnv*, jclass, jlong handle,
                                                                                      jfloat heightMax) {
    fromHandle<ShallowWaterRenderer>(handle)->setHeightMax(heightMax);
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_ShallowWaterRenderer_setDrawFrameBuffer(JNIEnv*, jclass,
                                                                                            jlong handle,
                                                                                            jint framebuffer) {
    fromHandle<ShallowWaterRenderer>(handle)->setDrawFrameBuffer(static_cast<unsigned int>(framebuffer));
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_ShallowWaterRenderer_setBGFlip(JNIEnv*, jclass, jlong handle,
                                                                                   jboolean flip) {
    fromHandle<ShallowWaterRenderer>(handle)->setBGFlip(flip != 0);
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_ShallowWaterRenderer_setTexture(JNIEnv*, jclass, jlong handle,
                                                                                    jint texture) {
    fromHandle<ShallowWaterRenderer>(handle)->setTexture(texture);
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_ShallowWaterRenderer_render(JNIEnv*, jclass, jlong handle,
                                                                                jint textureHeight,
                                                                                jint textureNormal) {
    fromHandle<ShallowWaterRenderer>(handle)->render(static_cast<unsigned int>(textureHeight),
                                                     static_cast<unsigned int>(textureNormal));
}

} // extern "C"
