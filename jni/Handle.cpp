#include "jni/Bridge.h"

#include <EGL/egl.h>
#include <GLES3/gl3.h>

extern "C" NATIVE(jboolean, Handle, isContextCurrent)(JNIEnv*, jclass) {
    return eglGetCurrentContext() != EGL_NO_CONTEXT ? JNI_TRUE : JNI_FALSE;
}

/// 0 where no context is current.
extern "C" NATIVE(jint, Handle, largestTexture)(JNIEnv*, jclass) {
    GLint size = 0;
    if (eglGetCurrentContext() != EGL_NO_CONTEXT) glGetIntegerv(GL_MAX_TEXTURE_SIZE, &size);
    return size;
}
