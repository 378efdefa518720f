#include "effects/vector/VectorGraphicRenderer.h"

#include "jni/Bridge.h"

using tidalume::allocate;
using tidalume::fromHandle;
using tidalume::PinnedFloats;
using tidalume::release;

extern "C" {

JNIEXPORT jlong JNICALL Java_com_vyn_effect_tidalume_VectorGraphicRenderer_Alloc(JNIEnv*, jclass) {
    return allocate<VectorGraphicRenderer>();
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_VectorGraphicRenderer_Free(JNIEnv*, jclass, jlong handle) {
    release<VectorGraphicRenderer>(handle);
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_VectorGraphicRenderer_init(JNIEnv*, jclass, jlong handle) {
    fromHandle<VectorGraphicRenderer>(handle)->init();
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_VectorGraphicRenderer_setScreenSize(JNIEnv*, jclass, jlong handle,
                                                                                        jint width, jint height) {
    fromHandle<VectorGraphicRenderer>(handle)->setScreenSize(width, height);
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_VectorGraphicRenderer_GLContextDestroyed(JNIEnv*, jclass,
                                                                                             jlong handle) {
    fromHandle<VectorGraphicRenderer>(handle)->GLContextDestroyed();
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_VectorGraphicRenderer_setBlendEquation(JNIEnv*, jclass,
                                                                                           jlong handle, jint mode) {
    fromHandle<VectorGraphicRenderer>(handle)->setBlendEquation(mode);
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_VectorGraphicRenderer_setBlendFunction(JNIEnv*, jclass,
                                                                                           jlong handle, jint srcRGB,
                                                                                           jint dstRGB, jint srcAlpha,
                                                                                           jint dstAlpha) {
    fromHandle<VectorGraphicRenderer>(handle)->setBlendFunction(srcRGB, dstRGB, srcAlpha, dstAlpha);
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_VectorGraphicRenderer_setBlendColor(JNIEnv*, jclass, jlong handle,
                                                                                        jfloat r, jfloat g, jfloat b,
                                                                                        jfloat a) {
    fromHandle<VectorGraphicRenderer>(handle)->setBlendColor(r, g, b, a);
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_VectorGraphicRenderer_renderRadialGradient(
    JNIEnv* env, jclass, jlong handle, jfloat x, jfloat y, jfloat begin, jfloatArray beginColor, jfloat end,
    jfloatArray endColor) {
    const PinnedFloats beginRgba(env, beginColor);
    const PinnedFloats endRgba(env, beginRgba ? endColor : nullptr);
    if (!beginRgba || !endRgba) return;
    fromHandle<VectorGraphicRenderer>(handle)->renderRadialGradient(x, y, begin, beginRgba.elements(), end,
                                                                    endRgba.elements());
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_VectorGraphicRenderer_renderCircle(JNIEnv* env, jclass,
                                                                                       jlong handle, jfloat x, jfloat y,
                                                                                       jfloat radius,
                                                                                       jfloatArray color) {
    const PinnedFloats rgba(env, color);
    if (rgba) fromHandle<VectorGraphicRenderer>(handle)->renderCircle(x, y, radius, rgba.elements());
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_VectorGraphicRenderer_renderBitmapCircle(
    JNIEnv* env, jclass, jlong handle, jfloat x, jfloat y, jfloat diameter, jfloatArray color, jint texture) {
    const PinnedFloats rgba(env, color);
    if (!rgba) return;
    fromHandle<VectorGraphicRenderer>(handle)->renderBitmapCircle(x, y, diameter, rgba.elements(),
                                                                  static_cast<unsigned int>(texture));
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_VectorGraphicRenderer_renderBitmapRectangle(
    JNIEnv*, jclass, jlong handle, jfloat x, jfloat y, jfloat width, jfloat height, jint texture) {
    fromHandle<VectorGraphicRenderer>(handle)->renderBitmapRectangle(x, y, width, height,
                                                                     static_cast<unsigned int>(texture));
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_VectorGraphicRenderer_renderAlphaMaskedBitmapRectangle(
    JNIEnv*, jclass, jlong handle, jfloat x, jfloat y, jfloat width, jfloat height, jint texture, jint mask) {
    fromHandle<VectorGraphicRenderer>(handle)->renderAlphaMaskedBitmapRectangle(x, y, width, height, texture, mask);
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_VectorGraphicRenderer_renderRotatedBitmapRectangle(
    JNIEnv*, jclass, jlong handle, jfloat x, jfloat y, jfloat width, jfloat height, jint texture, jint rotation) {
    fromHandle<VectorGraphicRenderer>(handle)->renderRotatedBitmapRectangle(
        x, y, width, height, static_cast<unsigned int>(texture), rotation);
}

JNIEXPORT void JNICALL Java_com_vyn_effect_tidalume_VectorGraphicRenderer_renderRotatedAlphaMaskedBitmapRectangle(
    JNIEnv*, jclass, jlong handle, jfloat x, jfloat y, jfloat width, jfloat height, jint texture, jint rotation,
    jint mask) {
    fromHandle<VectorGraphicRenderer>(handle)->renderRotatedAlphaMaskedBitmapRectangle(x, y, width, height, texture,
                                                                                       rotation, mask);
}

} // extern "C"
