#include "effects/water/ShallowWaterIterative.h"

#include "jni/Bridge.h"

using tidalume::allocate;
using tidalume::fromHandle;
using tidalume::PinnedFloats;
using tidalume::release;

extern "C" {

NATIVE(jlong, ShallowWaterIterative, Alloc)(JNIEnv*, jclass) {
    return allocate<ShallowWaterIterative>();
}

NATIVE(void, ShallowWaterIterative, Free)(JNIEnv*, jclass, jlong handle) {
    release<ShallowWaterIterative>(handle);
}

NATIVE(void, ShallowWaterIterative, init)(JNIEnv*, jclass, jlong handle) {
    fromHandle<ShallowWaterIterative>(handle)->init();
}

NATIVE(void, ShallowWaterIterative, setScreenSize)(JNIEnv*, jclass, jlong handle, jint width, jint height) {
    fromHandle<ShallowWaterIterative>(handle)->setScreenSize(width, height);
}

NATIVE(void, ShallowWaterIterative, GLContextDestroyed)(JNIEnv*, jclass, jlong handle) {
    fromHandle<ShallowWaterIterative>(handle)->GLContextDestroyed();
}

NATIVE(void, ShallowWaterIterative, setIterationCount)(JNIEnv*, jclass, jlong handle, jint count) {
    fromHandle<ShallowWaterIterative>(handle)->setIterationCount(count);
}

NATIVE(void, ShallowWaterIterative, addDrop)
(JNIEnv* env, jclass, jlong handle, jfloatArray center, jfloat radius, jfloat strength, jfloat preserveWeight) {
    const PinnedFloats centerFloats(env, center);
    if (centerFloats)
        fromHandle<ShallowWaterIterative>(handle)->addDrop(centerFloats.elements(), radius, strength, preserveWeight);
}

NATIVE(void, ShallowWaterIterative, addDropLine)
(JNIEnv* env, jclass, jlong handle, jfloatArray center, jfloatArray center2, jfloat radius, jfloat strength,
 jfloat preserveWeight) {
    const PinnedFloats centerFloats(env, center);
    const PinnedFloats center2Floats(env, center2, centerFloats);
    if (centerFloats && center2Floats) {
        fromHandle<ShallowWaterIterative>(handle)->addDropLine(centerFloats.elements(), center2Floats.elements(),
                                                               radius, strength, preserveWeight);
    }
}

NATIVE(void, ShallowWaterIterative, addHorizontalWave)
(JNIEnv*, jclass, jlong handle, jfloat center, jfloat radius, jfloat strength, jfloat waveRadius, jfloat waveCount,
 jfloat preserveWeight) {
    fromHandle<ShallowWaterIterative>(handle)->addHorizontalWave(center, radius, strength, waveRadius, waveCount,
                                                                 preserveWeight);
}

NATIVE(void, ShallowWaterIterative, update)(JNIEnv*, jclass, jlong handle) {
    fromHandle<ShallowWaterIterative>(handle)->update();
}

NATIVE(jint, ShallowWaterIterative, getTexture)(JNIEnv*, jclass, jlong handle) {
    return static_cast<jint>(fromHandle<ShallowWaterIterative>(handle)->getTexture());
}

} // extern "C"
