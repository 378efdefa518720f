// A hostile caller: bytes become calls of the native functions, on a real GL context and with a real JVM.

#include "foundation/GlobalProperty.h"
#include "headless/HeadlessContext.h"
#include "headless/Pixels.h"
#include "tests/fuzz/NativeFunctions.h"
#include "tests/fuzz/Require.h"

#include <GLES3/gl3.h>
#include <android/log.h>

#include <cstdlib>
#include <vector>

namespace {

using tidalume::headless::HeadlessContext;

constexpr size_t maxObjects = 6;
constexpr int maxSteps = 60;

JNIEnv* java = nullptr;

/// Starts the process's machine. It interprets only and handles no signal that it can do without, so that sanitizers
/// see what there is to see.
JNIEnv* startJavaVm() {
    setenv("JAVA_TOOL_OPTIONS", "-Xint -Xrs -Xmx64m -XX:+UseSerialGC -XX:-UsePerfData", 1);
    JavaVMInitArgs arguments = {JNI_VERSION_1_8, 0, nullptr, JNI_FALSE};
    JavaVM* machine = nullptr;
    void* environment = nullptr;
    require(JNI_CreateJavaVM(&machine, &environment, &arguments) == JNI_OK, "no Java virtual machine");
    return static_cast<JNIEnv*>(environment);
}

/// What a caller does within one context after another.
class Session {
  public:
    explicit Session(FuzzedDataProvider& bytes) : mBytes(bytes), mArguments{bytes, java}, mContext(64, 64) {
        GlobalProperty::DEBUG_LOG = false;
        GlobalProperty::BINARY_SHADER = false;
        GlobalProperty::ROOT_DIR[0] = '\0';
        makePicture();
    }

    void run() {
        for (int step = 0; step < maxSteps && mBytes.remaining_bytes() > 0; ++step) {
            java->PushLocalFrame(16);
            act();
            require(!java->ExceptionCheck(), "a native function left a Java exception");
            java->PopLocalFrame(nullptr);
        }
        while (!mObjects.empty())
            freeOldest();
        requireNoNames();
    }

  private:
    struct Object {
        const NativeClass* of;
        jlong handle;
    };

    void act() {
        const auto choice = mBytes.ConsumeIntegral<uint8_t>();
        if (mObjects.empty() || (choice < 24 && mObjects.size() < maxObjects)) return allocate();
        if (choice < 32) return freeOldest();
        if (choice < 36) return loseContext();
        if (choice < 44) return pick(settings)(mArguments, 0);
        call();
    }

    template <typename Element>
    const Element& pick(const std::vector<Element>& elements) {
        return elements[mBytes.ConsumeIntegralInRange<size_t>(0, elements.size() - 1)];
    }

    void allocate() {
        const NativeClass& of = pick(nativeClasses);
        const jlong handle = of.alloc(java, nullptr);
        require(handle != 0, "Alloc gave no object");
        mObjects.push_back({&of, handle});
        if (mBytes.ConsumeIntegral<uint8_t>() < 64) return; // to meet calls that come too early
        of.others[NativeClass::init](mArguments, handle);
        of.others[NativeClass::setScreenSize](mArguments, handle);
    }

    void freeOldest() {
        mObjects.front().of->free(java, nullptr, mObjects.front().handle);
        mObjects.erase(mObjects.begin());
    }

    void loseContext() {
        for (const Object& object : mObjects)
            object.of->contextDestroyed(java, nullptr, object.handle);
        mContext.recreate();
        makePicture();
    }

    /// The caller's own texture; as the first one of its context, it has the same name in each.
    void makePicture() {
        const std::vector<uint8_t> texels = {255, 0, 0, 255, 0, 255, 0, 128, 0, 0, 255, 255, 0, 0, 0, 0};
        mArguments.picture = static_cast<jint>(tidalume::headless::makeTexture(GL_RGBA8, 2, 2, texels));
    }

    void call() {
        mArguments.textures = {0, mArguments.picture};
        for (const Object& object : mObjects) {
            if (object.of->getTexture) {
                mArguments.textures.push_back(object.of->getTexture(java, nullptr, object.handle));
            }
        }
        const Object& object = pick(mObjects);
        pick(object.of->others)(mArguments, object.handle);
    }

    void requireNoNames() {
        const auto picture = static_cast<GLuint>(mArguments.picture);
        glDeleteTextures(1, &picture);
        for (GLuint name = 1; name < 100; ++name) {
            require(!glIsTexture(name) && !glIsFramebuffer(name), "a texture or a framebuffer was leaked");
            require(!glIsProgram(name) && !glIsShader(name), "a program or a shader was leaked");
        }
    }

    FuzzedDataProvider& mBytes;
    Arguments mArguments;
    HeadlessContext mContext;
    std::vector<Object> mObjects;
};

} // namespace

/// The machine raises and handles SIGSEGV on purpose, and keeps what it has allocated until the process ends.
extern "C" const char* __asan_default_options() {
    return "handle_segv=0:detect_leaks=0:allocator_may_return_null=1";
}

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    java = startJavaVm();
    __android_log_set_logger([](const __android_logger_data*, const char*) {});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzedDataProvider bytes(data, size);
    srand48(1);
    Session(bytes).run();
    return 0;
}
