// A hostile caller: in a real JVM, a Session turns bytes into calls of the native functions on a real GL context.

#include "tests/support/LiveNames.h"

#include <android/log.h>
#include <jni.h>

#include <cassert>
#include <cstdlib>

namespace {

JNIEnv* java = nullptr;
jclass session = nullptr;
jmethodID playNative = nullptr;
constexpr GLuint invented = 1000; ///< as in Session, and no effect's; once bound, the driver goes on from it

} // namespace

/// The machine raises and handles SIGSEGV on purpose, and keeps what it has allocated until the process ends.
extern "C" const char* __asan_default_options() {
    return "handle_segv=0:detect_leaks=0:allocator_may_return_null=1";
}

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    // The machine interprets only and handles no signal that it can do without, so that sanitizers see what there is.
    setenv("JAVA_TOOL_OPTIONS", TIDALUME_JAVA_PATHS " -Xint -Xrs -Xmx64m -XX:+UseSerialGC -XX:-UsePerfData", 1);
    JavaVMInitArgs arguments = {JNI_VERSION_1_8, 0, nullptr, JNI_FALSE};
    JavaVM* machine = nullptr;
    const jint started = JNI_CreateJavaVM(&machine, reinterpret_cast<void**>(&java), &arguments);
    assert(started == JNI_OK && "no Java virtual machine");
    session = java->FindClass("com/vyn/effect/tidalume/Session");
    playNative = java->GetStaticMethodID(session, "playNative", "([B)V");
    assert(playNative != nullptr && "no method playNative");
    __android_log_set_logger([](const __android_logger_data*, const char*) {});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    srand48(1);
    const auto count = static_cast<jsize>(size);
    jbyteArray choices = java->NewByteArray(count);
    java->SetByteArrayRegion(choices, 0, count, reinterpret_cast<const jbyte*>(data));
    java->CallStaticVoidMethod(session, playNative, choices);
    java->DeleteLocalRef(choices);
    if (java->ExceptionCheck()) {
        java->ExceptionDescribe();
        assert(false && "a native function left a Java exception");
    }
    assert(liveObjects(1, invented) + liveObjects(invented + 1, 2 * invented) == 0 && "a GL object was leaked");
    return 0;
}
