#include "effects/metaball/Metaball2DRenderer.h"

#include "jni/Bridge.h"

using tidalume::allocate;
using tidalume::fromHandle;
using tidalume::PinnedFloats;
using tidalume::release;

extern "C" {

JNIEXPORT jlong JNICALL Java_com_vyn_effect_tidalume_Metaball2DRenderer_Alloc(JNIEnv*, jclass) {
    return allocate<Metaball2DRenderer>();
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_Metaball2DRenderer_Free(JNIEnv*, jclass, jlong handle) {
    release<Metaball2DRenderer>(handle);
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_Metaball2DRenderer_init(JNIEnv*, jclass, jlong handle,
                                                                            jfloat quality) {
    fromHandle<Metaball2DRenderer>(handle)->init(quality);
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_Metaball2DRenderer_setScreenSize(JNIEnv*, jclass, jlong handle,
                                                                                     jint width, jint height) {
    fromHandle<Metaball2DRenderer>(handle)->setScreenSize(width, height);
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_Metaball2DRenderer_GLContextDestroyed(JNIEnv*, jclass,
                                                                                          jlong handle) {
    fromHandle<Metaball2DRenderer>(handle)->GLContextDestroyed();
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_Metaball2DRenderer_addMetaballs(JNIEnv* env, jclass, jlong handle,
                                                                                    jfloatArray metaballs, jint count) {
    const PinnedFloats balls(env, metaballs);
    if (balls) fromHandle<Metaball2DRenderer>(handle)->addMetaballs(balls.elements(), static_cast<unsigned int>(count));
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_Metaball2DRenderer_render(JNIEnv* env, jclass, jlong handle,
                                                                              jfloatArray color) {
    const PinnedFloats rgba(env, color);
    if (rgba) fromHandle<Metaball2DRenderer>(handle)->render(rgba.elements());
}

JNIEXPORT jint JNICALL Java_com_vyn_effect_tidalume_Metaball2DRenderer_getTexture(JNIEnv*, jclass, jlong handle) {
    return static_cast<jint>(fromHandle<Metaball2DRenderer>(handle)->getTexture());
}

} // extern "C"
