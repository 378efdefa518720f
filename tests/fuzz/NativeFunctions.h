#pragma once

#include "tests/fuzz/Arguments.h"

#include <functional>
#include <vector>

/// A call of a native function on an object, with arguments of its own making.
using NativeFunction = std::function<void(Arguments&, jlong handle)>;

/// The native functions of one Java class.
struct NativeClass {
    jlong (*alloc)(JNIEnv*, jclass);
    void (*free)(JNIEnv*, jclass, jlong);
    void (*contextDestroyed)(JNIEnv*, jclass, jlong);
    jint (*getTexture)(JNIEnv*, jclass, jlong); ///< null: hands no texture out

    enum { init = 0, setScreenSize = 1 };
    std::vector<NativeFunction> others; ///< these two first
};

extern const std::vector<NativeClass> nativeClasses;

/// The functions of the settings; the handle is ignored.
extern const std::vector<NativeFunction> settings;
