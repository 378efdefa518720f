#include "effects/comet/CometRenderer.h"

#include "jni/Bridge.h"

using tidalume::allocate;
using tidalume::fromHandle;
using tidalume::release;

extern "C" {

NATIVE(jlong, CometRenderer, Alloc)(JNIEnv*, jclass) {
    return allocate<CometRenderer>();
}

NATIVE(void, CometRenderer, Free)(JNIEnv*, jclass, jlong handle) {
    release<CometRenderer>(handle);
}

NATIVE(void, CometRenderer, init)(JNIEnv*, jclass, jlong handle) {
    fromHandle<CometRenderer>(handle)->init();
}

NATIVE(void, CometRenderer, setScreenSize)(JNIEnv*, jclass, jlong handle, jint width, jint height) {
    fromHandle<CometRenderer>(handle)->setScreenSize(width, height);
}

NATIVE(void, CometRenderer, GLContextDestroyed)(JNIEnv*, jclass, jlong handle) {
    fromHandle<CometRenderer>(handle)->GLContextDestroyed();
}

NATIVE(void, CometRenderer, render)(JNIEnv*, jclass, jlong handle, jdouble t) {
    fromHandle<CometRenderer>(handle)->render(t);
}

NATIVE(void, CometRenderer, push)(JNIEnv*, jclass, jlong handle, jfloat x, jfloat y, jint action) {
    fromHandle<CometRenderer>(handle)->push(x, y, action);
}

NATIVE(jfloat, CometRenderer, getCore1X)(JNIEnv*, jclass, jlong handle) {
    return fromHandle<CometRenderer>(handle)->getCore1X();
}

NATIVE(jfloat, CometRenderer, getCore1Y)(JNIEnv*, jclass, jlong handle) {
    return fromHandle<CometRenderer>(handle)->getCore1Y();
}

NATIVE(jfloat, CometRenderer, getCore2X)(JNIEnv*, jclass, jlong handle) {
    return fromHandle<CometRenderer>(handle)->getCore2X();
}

NATIVE(jfloat, CometRenderer, getCore2Y)(JNIEnv*, jclass, jlong handle) {
    return fromHandle<CometRenderer>(handle)->getCore2Y();
}

} // extern "C"
