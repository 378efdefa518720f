#include "effects/water/ShallowWaterRenderer.h"

#include "jni/Bridge.h"

using tidalume::allocate;
using tidalume::fromHandle;
using tidalume::release;

extern "C" {

NATIVE(jlong, ShallowWaterRenderer, Alloc)(JNIEnv*, jclass) {
    return allocate<ShallowWaterRenderer>();
}

NATIVE(void, ShallowWaterRenderer, Free)(JNIEnv*, jclass, jlong handle) {
    release<ShallowWaterRenderer>(handle);
}

NATIVE(void, ShallowWaterRenderer, init)(JNIEnv*, jclass, jlong handle) {
    fromHandle<ShallowWaterRenderer>(handle)->init();
}

NATIVE(void, ShallowWaterRenderer, setScreenSize)(JNIEnv*, jclass, jlong handle, jint width, jint height) {
    fromHandle<ShallowWaterRenderer>(handle)->setScreenSize(width, height);
}

NATIVE(void, ShallowWaterRenderer, GLContextDestroyed)(JNIEnv*, jclass, jlong handle) {
    fromHandle<ShallowWaterRenderer>(handle)->GLContextDestroyed();
}

NATIVE(void, ShallowWaterRenderer, setHeightMax)(JNIEnv*, jclass, jlong handle, jfloat heightMax) {
    fromHandle<ShallowWaterRenderer>(handle)->setHeightMax(heightMax);
}

NATIVE(void, ShallowWaterRenderer, setLight)(JNIEnv*, jclass, jlong handle, jfloat x, jfloat y, jfloat z) {
    fromHandle<ShallowWaterRenderer>(handle)->setLight(x, y, z);
}

NATIVE(void, ShallowWaterRenderer, setSpecular)(JNIEnv*, jclass, jlong handle, jfloat strength, jfloat shininess) {
    fromHandle<ShallowWaterRenderer>(handle)->setSpecular(strength, shininess);
}

NATIVE(void, ShallowWaterRenderer, setDrawFrameBuffer)(JNIEnv*, jclass, jlong handle, jint framebuffer) {
    fromHandle<ShallowWaterRenderer>(handle)->setDrawFrameBuffer(static_cast<unsigned int>(framebuffer));
}

NATIVE(void, ShallowWaterRenderer, setBGFlip)(JNIEnv*, jclass, jlong handle, jboolean flip) {
    fromHandle<ShallowWaterRenderer>(handle)->setBGFlip(flip != 0);
}

NATIVE(void, ShallowWaterRenderer, setTexture)(JNIEnv*, jclass, jlong handle, jint texture) {
    fromHandle<ShallowWaterRenderer>(handle)->setTexture(texture);
}

NATIVE(void, ShallowWaterRenderer, render)(JNIEnv*, jclass, jlong handle, jint textureHeight, jint textureNormal) {
    fromHandle<ShallowWaterRenderer>(handle)->render(static_cast<unsigned int>(textureHeight),
                                                     static_cast<unsigned int>(textureNormal));
}

} // extern "C"
