#include "effects/water/IntensityMapBuilder.h"

#include "jni/Bridge.h"

using tidalume::allocate;
using tidalume::fromHandle;
using tidalume::PinnedFloats;
using tidalume::release;

extern "C" {

NATIVE(jlong, IntensityMapBuilder, Alloc)(JNIEnv*, jclass) {
    return allocate<IntensityMapBuilder>();
}

NATIVE(void, IntensityMapBuilder, Free)(JNIEnv*, jclass, jlong handle) {
    release<IntensityMapBuilder>(handle);
}

NATIVE(void, IntensityMapBuilder, init)(JNIEnv*, jclass, jlong handle) {
    fromHandle<IntensityMapBuilder>(handle)->init();
}

NATIVE(void, IntensityMapBuilder, setScreenSize)(JNIEnv*, jclass, jlong handle, jint width, jint height) {
    fromHandle<IntensityMapBuilder>(handle)->setScreenSize(width, height);
}

NATIVE(void, IntensityMapBuilder, GLContextDestroyed)(JNIEnv*, jclass, jlong handle) {
    fromHandle<IntensityMapBuilder>(handle)->GLContextDestroyed();
}

NATIVE(void, IntensityMapBuilder, addDropLine)
(JNIEnv* env, jclass, jlong handle, jfloatArray center, jfloatArray center2, jfloat radius, jfloat strength,
 jfloat preserveWeight) {
    const PinnedFloats centerFloats(env, center);
    const PinnedFloats center2Floats(env, center2, centerFloats);
    if (centerFloats && center2Floats) {
        fromHandle<IntensityMapBuilder>(handle)->addDropLine(centerFloats.elements(), center2Floats.elements(), radius,
                                                             strength, preserveWeight);
    }
}

NATIVE(void, IntensityMapBuilder, addHorizontalWave)
(JNIEnv*, jclass, jlong handle, jfloat center, jfloat radius, jfloat strength, jfloat waveRadius, jfloat waveCount,
 jfloat preserveWeight) {
    fromHandle<IntensityMapBuilder>(handle)->addHorizontalWave(center, radius, strength, waveRadius, waveCount,
                                                               preserveWeight);
}

NATIVE(jint, IntensityMapBuilder, getTexture)(JNIEnv*, jclass, jlong handle) {
    return static_cast<jint>(fromHandle<IntensityMapBuilder>(handle)->getTexture());
}

} // extern "C"
