#include "effects/water/NormalMapBuilder.h"

#include "jni/Bridge.h"

using tidalume::allocate;
using tidalume::fromHandle;
using tidalume::release;

extern "C" {

NATIVE(jlong, NormalMapBuilder, Alloc)(JNIEnv*, jclass) {
    return allocate<NormalMapBuilder>();
}

NATIVE(void, NormalMapBuilder, Free)(JNIEnv*, jclass, jlong handle) {
    release<NormalMapBuilder>(handle);
}

NATIVE(void, NormalMapBuilder, init)(JNIEnv*, jclass, jlong handle) {
    fromHandle<NormalMapBuilder>(handle)->init();
}

NATIVE(void, NormalMapBuilder, setScreenSize)(JNIEnv*, jclass, jlong handle, jint width, jint height) {
    fromHandle<NormalMapBuilder>(handle)->setScreenSize(width, height);
}

NATIVE(void, NormalMapBuilder, GLContextDestroyed)(JNIEnv*, jclass, jlong handle) {
    fromHandle<NormalMapBuilder>(handle)->GLContextDestroyed();
}

NATIVE(void, NormalMapBuilder, setHeightMax)(JNIEnv*, jclass, jlong handle, jfloat heightMax) {
    fromHandle<NormalMapBuilder>(handle)->setHeightMax(heightMax);
}

NATIVE(void, NormalMapBuilder, build)(JNIEnv*, jclass, jlong handle, jint texture) {
    fromHandle<NormalMapBuilder>(handle)->build(static_cast<unsigned int>(texture));
}

NATIVE(jint, NormalMapBuilder, getTexture)(JNIEnv*, jclass, jlong handle) {
    return static_cast<jint>(fromHandle<NormalMapBuilder>(handle)->getTexture());
}

} // extern "C"
