#include <EGL/egl.h>
#include <jni.h>

extern "C" JNIEXPORT jboolean JNICALL Java_com_vyn_effect_tidalume_Handle_isContextCurrent(JNIEnv*, jclass) {
    return eglGetCurrentContext() != EGL_NO_CONTEXT ? JNI_TRUE : JNI_FALSE;
}
