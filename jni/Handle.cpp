#include "jni/Bridge.h"

#include <EGL/egl.h>

extern "C" NATIVE(jboolean, Handle, isContextCurrent)(JNIEnv*, jclass) {
    return eglGetCurrentContext() != EGL_NO_CONTEXT ? JNI_TRUE : JNI_FALSE;
}
