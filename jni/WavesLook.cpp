#include "looks/WavesLook.h"

#include "jni/Bridge.h"

using tidalume::allocate;
using tidalume::fromHandle;
using tidalume::Look;
using tidalume::PictureTop;
using tidalume::WavesLook;

extern "C" {

NATIVE(jlong, looks_WavesLook, Alloc)(JNIEnv*, jclass) {
    return allocate<WavesLook, Look>();
}

NATIVE(void, looks_WavesLook, setPicture)
(JNIEnv*, jclass, jlong handle, jint texture, jint width, jint height, jboolean firstRowIsTop) {
    const PictureTop top = firstRowIsTop ? PictureTop::FirstRow : PictureTop::LastRow;
    static_cast<WavesLook*>(fromHandle<Look>(handle))->setPicture(static_cast<GLuint>(texture), width, height, top);
}

} // extern "C"
