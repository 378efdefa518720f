#pragma once

#include <jni.h>

#include <cstdint>
#include <new>
#include <type_traits>

/// The head of a native method of a Java class, up to its parameters: NATIVE(jint, ShallowWater, getTexture)(...).
#define NATIVE(result, Class, method) JNIEXPORT result JNICALL Java_com_vyn_effect_tidalume_##Class##_##method

namespace tidalume {

template <typename Address>
jlong signExtended(Address address) {
    return static_cast<jlong>(static_cast<std::make_signed_t<Address>>(address));
}

/// A handle is an object's address, sign-extended to 64 bits; 0 stands for no object.
inline jlong toHandle(void* object) {
    return signExtended(reinterpret_cast<uintptr_t>(object));
}

template <typename Effect>
Effect* fromHandle(jlong handle) {
    return reinterpret_cast<Effect*>(static_cast<uintptr_t>(handle)); // NOLINT(performance-no-int-to-ptr): see above
}

/// A handle to a new effect, or to the base that its natives share; 0 when there is no memory for it.
template <typename Effect, typename Base = Effect>
jlong allocate() {
    return toHandle(static_cast<Base*>(new (std::nothrow) Effect()));
}

template <typename Effect>
void release(jlong handle) {
    delete fromHandle<Effect>(handle);
}

/// The elements of a Java float array, pinned for the life of this object and then copied back and released. Declare
/// several in parameter order: they release in reverse. False when the array is null or cannot be pinned.
class PinnedFloats {
  public:
    PinnedFloats(JNIEnv* env, jfloatArray array)
        : mEnv(env), mArray(array), mElements(array ? env->GetFloatArrayElements(array, nullptr) : nullptr) {}
    /// Pins only where the array before is pinned: a failed pin may leave an exception pending, under which JNI allows
    /// no more pinning.
    PinnedFloats(JNIEnv* env, jfloatArray array, const PinnedFloats& before)
        : PinnedFloats(env, before ? array : nullptr) {}
    ~PinnedFloats() {
        if (mElements) mEnv->ReleaseFloatArrayElements(mArray, mElements, 0); // kept: pin-mode
    }
    PinnedFloats(const PinnedFloats&) = delete;
    PinnedFloats& operator=(const PinnedFloats&) = delete;

    explicit operator bool() const { return mElements != nullptr; }
    float* elements() const { return mElements; }

  private:
    JNIEnv* mEnv;
    jfloatArray mArray;
    jfloat* mElements;
};

} // namespace tidalume
