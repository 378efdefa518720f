#include "looks/Look.h"

#include "jni/Bridge.h"

#include <EGL/egl.h>

#include <cstdint>
#include <cstring>
#include <string>

using tidalume::fromHandle;
using tidalume::Look;
using tidalume::Parameter;
using tidalume::Preset;
using tidalume::Setting;
using tidalume::TouchPhase;

namespace {

// The JVM sets the locale, in which a decimal point may be a comma; bits are the same everywhere, and exact.
std::string bitsOf(float value) {
    std::int32_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return std::to_string(bits);
}

void append(std::string& text, const std::string& column) {
    text += '\t' + column;
}

} // namespace

extern "C" {

/// Tells contexts apart, as long as they live; 0 where none is current.
NATIVE(jlong, looks_Look, currentContext)(JNIEnv*, jclass) {
    return reinterpret_cast<jlong>(eglGetCurrentContext());
}

NATIVE(void, looks_Look, Free)(JNIEnv*, jclass, jlong handle) {
    tidalume::release<Look>(handle);
}

NATIVE(void, looks_Look, contextCreated)(JNIEnv*, jclass, jlong handle) {
    fromHandle<Look>(handle)->contextCreated();
}

NATIVE(void, looks_Look, contextLost)(JNIEnv*, jclass, jlong handle) {
    fromHandle<Look>(handle)->contextLost();
}

NATIVE(void, looks_Look, setSize)(JNIEnv*, jclass, jlong handle, jint width, jint height) {
    fromHandle<Look>(handle)->setSize(width, height);
}

NATIVE(void, looks_Look, touch)(JNIEnv*, jclass, jlong handle, jint finger, jfloat x, jfloat y, jint phase) {
    if (phase < static_cast<int>(TouchPhase::Down) || phase > static_cast<int>(TouchPhase::Cancel)) return;
    fromHandle<Look>(handle)->touch(finger, x, y, static_cast<TouchPhase>(phase));
}

NATIVE(void, looks_Look, draw)(JNIEnv*, jclass, jlong handle, jdouble seconds, jint framebuffer) {
    fromHandle<Look>(handle)->draw(seconds, static_cast<GLuint>(framebuffer));
}

NATIVE(jboolean, looks_Look, isMoving)(JNIEnv*, jclass, jlong handle) {
    return fromHandle<Look>(handle)->isMoving() ? JNI_TRUE : JNI_FALSE;
}

NATIVE(void, looks_Look, setSeed)(JNIEnv*, jclass, jlong handle, jint seed) {
    fromHandle<Look>(handle)->setSeed(static_cast<std::uint32_t>(seed));
}

NATIVE(void, looks_Look, set)(JNIEnv*, jclass, jlong handle, jint parameter, jfloat value) {
    fromHandle<Look>(handle)->set(parameter, value);
}

NATIVE(jfloat, looks_Look, get)(JNIEnv*, jclass, jlong handle, jint parameter) {
    return fromHandle<Look>(handle)->get(parameter);
}

NATIVE(void, looks_Look, usePreset)(JNIEnv*, jclass, jlong handle, jint preset) {
    Look* look = fromHandle<Look>(handle);
    const auto index = static_cast<std::size_t>(preset);
    if (preset >= 0 && index < look->presets().size) look->usePreset(look->presets()[index].name);
}

/// The tables of parameters and presets: a row a line, its columns between tabs. Numbers are the bits of floats.
/// - parameter, name, label, unit, minimum, maximum, initial value, sentence, the choices
/// - preset, name, title, then the name of a parameter and its value by turns
NATIVE(jstring, looks_Look, describe)(JNIEnv* env, jclass, jlong handle) {
    const Look* look = fromHandle<Look>(handle);
    std::string text;
    for (const Parameter& parameter : look->parameters()) {
        text += "parameter";
        for (const char* column : {parameter.name, parameter.label, parameter.unit})
            append(text, column);
        for (const float column : {parameter.minimum, parameter.maximum, parameter.initial})
            append(text, bitsOf(column));
        append(text, parameter.sentence);
        for (const char* choice : parameter.choices)
            append(text, choice);
        text += '\n';
    }
    for (const Preset& preset : look->presets()) {
        text += "preset";
        for (const char* column : {preset.name, preset.title})
            append(text, column);
        for (const Setting& setting : preset.settings) {
            append(text, setting.parameter);
            append(text, bitsOf(setting.value));
        }
        text += '\n';
    }
    return env->NewStringUTF(text.c_str());
}

} // extern "C"
