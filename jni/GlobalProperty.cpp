#include "foundation/GlobalProperty.h"

#include <jni.h>

#include <cstring>

extern "C" {

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_GlobalProperty_setDEBUGLOG(JNIEnv*, jclass, jboolean enable) {
    GlobalProperty::DEBUG_LOG = enable != 0;
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_GlobalProperty_setROOTDIR(JNIEnv* env, jclass, jstring directory) {
    const char* characters = directory ? env->GetStringUTFChars(directory, nullptr) : nullptr;
    if (!characters) return;
    // A directory that does not fit is rejected whole: half a path would name another folder.
    const size_t size = std::strlen(characters) + 1;
    if (size <= sizeof(GlobalProperty::ROOT_DIR)) std::memcpy(GlobalProperty::ROOT_DIR, characters, size);
    env->ReleaseStringUTFChars(directory, characters);
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_GlobalProperty_setBINARYSHADER(JNIEnv*, jclass, jboolean enable) {
    GlobalProperty::BINARY_SHADER = enable != 0;
}

} // extern "C"
