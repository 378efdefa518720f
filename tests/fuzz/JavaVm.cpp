#include "tests/fuzz/JavaVm.h"

#include <cstdio>
#include <cstdlib>
#include <iterator>

/// The machine raises and handles SIGSEGV on purpose, and keeps what it has allocated until the process ends.
extern "C" const char* __asan_default_options() {
    return "handle_segv=0:detect_leaks=0:allocator_may_return_null=1";
}

JNIEnv* startJavaVm() {
    JavaVMOption options[] = {
        {const_cast<char*>("-Xint"), nullptr},
        {const_cast<char*>("-Xrs"), nullptr},
        {const_cast<char*>("-Xmx64m"), nullptr},
        {const_cast<char*>("-XX:+UseSerialGC"), nullptr},
        {const_cast<char*>("-XX:-UsePerfData"), nullptr},
    };
    JavaVMInitArgs arguments = {};
    arguments.version = JNI_VERSION_1_8;
    arguments.nOptions = static_cast<jint>(std::size(options));
    arguments.options = options;
    JavaVM* machine = nullptr;
    void* environment = nullptr;
    if (JNI_CreateJavaVM(&machine, &environment, &arguments) != JNI_OK) {
        std::fputs("no Java virtual machine\n", stderr);
        std::exit(1);
    }
    return static_cast<JNIEnv*>(environment);
}
