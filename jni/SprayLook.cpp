#include "looks/SprayLook.h"

#include "jni/Bridge.h"

using tidalume::allocate;
using tidalume::Look;
using tidalume::SprayLook;

extern "C" {

NATIVE(jlong, looks_SprayLook, Alloc)(JNIEnv*, jclass) {
    return allocate<SprayLook, Look>();
}

} // extern "C"
