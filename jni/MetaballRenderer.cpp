#include "effects/metaball/MetaballRenderer.h"

#include "jni/Bridge.h"

using tidalume::allocate;
using tidalume::fromHandle;
using tidalume::release;

extern "C" {

NATIVE(jlong, MetaballRenderer, Alloc)(JNIEnv*, jclass) {
    return allocate<MetaballRenderer>();
}

NATIVE(void, MetaballRenderer, Free)(JNIEnv*, jclass, jlong handle) {
    release<MetaballRenderer>(handle);
}

NATIVE(void, MetaballRenderer, init)(JNIEnv*, jclass, jlong handle, jfloat quality) {
    fromHandle<MetaballRenderer>(handle)->init(quality);
}

NATIVE(void, MetaballRenderer, setScreenSize)(JNIEnv*, jclass, jlong handle, jint width, jint height) {
    fromHandle<MetaballRenderer>(handle)->setScreenSize(width, height);
}

NATIVE(void, MetaballRenderer, GLContextDestroyed)(JNIEnv*, jclass, jlong handle) {
    fromHandle<MetaballRenderer>(handle)->GLContextDestroyed();
}

NATIVE(void, MetaballRenderer, render)(JNIEnv*, jclass, jlong handle, jfloat pressRadius, jfloat alphaFactor) {
    fromHandle<MetaballRenderer>(handle)->render(pressRadius, alphaFactor);
}

NATIVE(void, MetaballRenderer, addToField)(JNIEnv*, jclass, jlong handle, jfloat pressRadius) {
    fromHandle<MetaballRenderer>(handle)->addToField(pressRadius);
}

NATIVE(jint, MetaballRenderer, getTexture)(JNIEnv*, jclass, jlong handle) {
    return static_cast<jint>(fromHandle<MetaballRenderer>(handle)->getTexture());
}

NATIVE(void, MetaballRenderer, push)(JNIEnv*, jclass, jlong handle, jfloat x, jfloat y, jint action) {
    fromHandle<MetaballRenderer>(handle)->push(x, y, action);
}

} // extern "C"
