#include "looks/WaterLook.h"

#include "jni/Bridge.h"

using tidalume::allocate;
using tidalume::fromHandle;
using tidalume::Look;
using tidalume::PictureTop;
using tidalume::WaterLook;

extern "C" {

NATIVE(jlong, looks_WaterLook, Alloc)(JNIEnv*, jclass) {
    return allocate<WaterLook, Look>();
}

NATIVE(void, looks_WaterLook, setPicture)
(JNIEnv*, jclass, jlong handle, jint texture, jint width, jint height, jboolean firstRowIsTop) {
    const PictureTop top = firstRowIsTop ? PictureTop::FirstRow : PictureTop::LastRow;
    static_cast<WaterLook*>(fromHandle<Look>(handle))->setPicture(static_cast<GLuint>(texture), width, height, top);
}

} // extern "C"
