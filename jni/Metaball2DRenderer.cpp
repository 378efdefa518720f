#include "effects/metaball/Metaball2DRenderer.h"

#include "jni/Bridge.h"

using tidalume::allocate;
using tidalume::fromHandle;
using tidalume::PinnedFloats;
using tidalume::release;

extern "C" {

NATIVE(jlong, Metaball2DRenderer, Alloc)(JNIEnv*, jclass) {
    return allocate<Metaball2DRenderer>();
}

NATIVE(void, Metaball2DRenderer, Free)(JNIEnv*, jclass, jlong handle) {
    release<Metaball2DRenderer>(handle);
}

NATIVE(void, Metaball2DRenderer, init)(JNIEnv*, jclass, jlong handle, jfloat quality) {
    fromHandle<Metaball2DRenderer>(handle)->init(quality);
}

NATIVE(void, Metaball2DRenderer, setScreenSize)(JNIEnv*, jclass, jlong handle, jint width, jint height) {
    fromHandle<Metaball2DRenderer>(handle)->setScreenSize(width, height);
}

NATIVE(void, Metaball2DRenderer, GLContextDestroyed)(JNIEnv*, jclass, jlong handle) {
    fromHandle<Metaball2DRenderer>(handle)->GLContextDestroyed();
}

NATIVE(void, Metaball2DRenderer, addMetaballs)(JNIEnv* env, jclass, jlong handle, jfloatArray metaballs, jint count) {
    const PinnedFloats balls(env, metaballs);
    if (balls) fromHandle<Metaball2DRenderer>(handle)->addMetaballs(balls.elements(), static_cast<unsigned int>(count));
}

NATIVE(void, Metaball2DRenderer, render)(JNIEnv* env, jclass, jlong handle, jfloatArray color) {
    const PinnedFloats rgba(env, color);
    if (rgba) fromHandle<Metaball2DRenderer>(handle)->render(rgba.elements());
}

NATIVE(jint, Metaball2DRenderer, getTexture)(JNIEnv*, jclass, jlong handle) {
    return static_cast<jint>(fromHandle<Metaball2DRenderer>(handle)->getTexture());
}

} // extern "C"
