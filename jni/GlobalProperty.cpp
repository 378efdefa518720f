#include "foundation/GlobalProperty.h"

#include "jni/Bridge.h"

#include <cstring>

extern "C" {

// kept: run-together
NATIVE(void, GlobalProperty, setDEBUGLOG)(JNIEnv*, jclass, jboolean enable) {
    GlobalProperty::DEBUG_LOG = enable != 0;
}

NATIVE(void, GlobalProperty, setROOTDIR)(JNIEnv* env, jclass, jstring directory) {
    const char* characters = directory ? env->GetStringUTFChars(directory, nullptr) : nullptr;
    if (!characters) return;
    // A directory that does not fit is rejected whole: half a path would name another folder.
    const size_t size = std::strlen(characters) + 1;
    if (size <= sizeof(GlobalProperty::ROOT_DIR)) std::memcpy(GlobalProperty::ROOT_DIR, characters, size);
    env->ReleaseStringUTFChars(directory, characters);
}

NATIVE(void, GlobalProperty, setBINARYSHADER)(JNIEnv*, jclass, jboolean enable) {
    GlobalProperty::BINARY_SHADER = enable != 0;
}

} // extern "C"
