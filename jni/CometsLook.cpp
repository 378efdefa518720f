#include "looks/CometsLook.h"

#include "jni/Bridge.h"

using tidalume::allocate;
using tidalume::CometsLook;
using tidalume::Look;

extern "C" {

NATIVE(jlong, looks_CometsLook, Alloc)(JNIEnv*, jclass) {
    return allocate<CometsLook, Look>();
}

} // extern "C"
