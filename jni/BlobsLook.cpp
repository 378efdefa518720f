#include "looks/BlobsLook.h"

#include "jni/Bridge.h"

using tidalume::allocate;
using tidalume::BlobsLook;
using tidalume::fromHandle;
using tidalume::Look;
using tidalume::PinnedFloats;

extern "C" {

NATIVE(jlong, looks_BlobsLook, Alloc)(JNIEnv*, jclass) {
    return allocate<BlobsLook, Look>();
}

NATIVE(void, looks_BlobsLook, setBalls)(JNIEnv* env, jclass, jlong handle, jfloatArray balls, jint count) {
    const PinnedFloats numbers(env, balls);
    if (!numbers) return;
    static_assert(sizeof(BlobsLook::Ball) == 3 * sizeof(float));
    const auto* pinned = reinterpret_cast<const BlobsLook::Ball*>(numbers.elements());
    static_cast<BlobsLook*>(fromHandle<Look>(handle))->setBalls(pinned, count);
}

} // extern "C"
