#include "effects/water/ShallowWater.h"

#include "jni/Bridge.h"

using tidalume::allocate;
using tidalume::fromHandle;
using tidalume::PinnedFloats;
using tidalume::release;

extern "C" {

NATIVE(jlong, ShallowWater, Alloc)(JNIEnv*, jclass) {
    return allocate<ShallowWater>();
}

NATIVE(void, ShallowWater, Free)(JNIEnv*, jclass, jlong handle) {
    release<ShallowWater>(handle);
}

NATIVE(void, ShallowWater, init)(JNIEnv*, jclass, jlong handle) {
    fromHandle<ShallowWater>(handle)->init();
}

NATIVE(void, ShallowWater, setScreenSize)(JNIEnv*, jclass, jlong handle, jint width, jint height) {
    fromHandle<ShallowWater>(handle)->setScreenSize(width, height);
}

NATIVE(void, ShallowWater, GLContextDestroyed)(JNIEnv*, jclass, jlong handle) {
    fromHandle<ShallowWater>(handle)->GLContextDestroyed();
}

NATIVE(jboolean, ShallowWater, setPhysics)
(JNIEnv*, jclass, jlong handle, jfloat waveSpeed, jfloat viscosity, jfloat gridSpacing, jfloat timeStep) {
    return fromHandle<ShallowWater>(handle)->setPhysics(waveSpeed, viscosity, gridSpacing, timeStep) ? 1 : 0;
}

NATIVE(jboolean, ShallowWater, setStepRate)(JNIEnv*, jclass, jlong handle, jfloat stepsPerUnit) {
    return fromHandle<ShallowWater>(handle)->setStepRate(stepsPerUnit) ? 1 : 0;
}

NATIVE(void, ShallowWater, addDrop)
(JNIEnv* env, jclass, jlong handle, jfloatArray center, jfloat radius, jfloat strength) {
    const PinnedFloats centerFloats(env, center);
    if (centerFloats) fromHandle<ShallowWater>(handle)->addDrop(centerFloats.elements(), radius, strength);
}

NATIVE(void, ShallowWater, addDropLine)
(JNIEnv* env, jclass, jlong handle, jfloatArray center, jfloatArray center2, jfloat radius, jfloat strength) {
    const PinnedFloats centerFloats(env, center);
    const PinnedFloats center2Floats(env, center2, centerFloats);
    if (centerFloats && center2Floats) {
        fromHandle<ShallowWater>(handle)->addDropLine(centerFloats.elements(), center2Floats.elements(), radius,
                                                      strength);
    }
}

NATIVE(void, ShallowWater, update)(JNIEnv*, jclass, jlong handle) {
    fromHandle<ShallowWater>(handle)->update();
}

NATIVE(jint, ShallowWater, getTexture)(JNIEnv*, jclass, jlong handle) {
    return static_cast<jint>(fromHandle<ShallowWater>(handle)->getTexture());
}

// kept: no-native
} // extern "C"
