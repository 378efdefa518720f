#include "effects/vector/VectorGraphicRenderer.h"

#include "jni/Bridge.h"

using tidalume::allocate;
using tidalume::fromHandle;
using tidalume::PinnedFloats;
using tidalume::release;

extern "C" {

NATIVE(jlong, VectorGraphicRenderer, Alloc)(JNIEnv*, jclass) {
    return allocate<VectorGraphicRenderer>();
}

NATIVE(void, VectorGraphicRenderer, Free)(JNIEnv*, jclass, jlong handle) {
    release<VectorGraphicRenderer>(handle);
}

NATIVE(void, VectorGraphicRenderer, init)(JNIEnv*, jclass, jlong handle) {
    fromHandle<VectorGraphicRenderer>(handle)->init();
}

NATIVE(void, VectorGraphicRenderer, setScreenSize)(JNIEnv*, jclass, jlong handle, jint width, jint height) {
    fromHandle<VectorGraphicRenderer>(handle)->setScreenSize(width, height);
}

NATIVE(void, VectorGraphicRenderer, GLContextDestroyed)(JNIEnv*, jclass, jlong handle) {
    fromHandle<VectorGraphicRenderer>(handle)->GLContextDestroyed();
}

NATIVE(void, VectorGraphicRenderer, setBlendEquation)(JNIEnv*, jclass, jlong handle, jint mode) {
    fromHandle<VectorGraphicRenderer>(handle)->setBlendEquation(mode);
}

NATIVE(void, VectorGraphicRenderer, setBlendFunction)
(JNIEnv*, jclass, jlong handle, jint srcRGB, jint dstRGB, jint srcAlpha, jint dstAlpha) {
    fromHandle<VectorGraphicRenderer>(handle)->setBlendFunction(srcRGB, dstRGB, srcAlpha, dstAlpha);
}

NATIVE(void, VectorGraphicRenderer, setBlendColor)
(JNIEnv*, jclass, jlong handle, jfloat r, jfloat g, jfloat b, jfloat a) {
    fromHandle<VectorGraphicRenderer>(handle)->setBlendColor(r, g, b, a);
}

NATIVE(void, VectorGraphicRenderer, renderRadialGradient)
(JNIEnv* env, jclass, jlong handle, jfloat x, jfloat y, jfloat begin, jfloatArray beginColor, jfloat end,
 jfloatArray endColor) {
    const PinnedFloats beginRgba(env, beginColor);
    const PinnedFloats endRgba(env, endColor, beginRgba);
    if (!beginRgba || !endRgba) return;
    fromHandle<VectorGraphicRenderer>(handle)->renderRadialGradient(x, y, begin, beginRgba.elements(), end,
                                                                    endRgba.elements());
}

NATIVE(void, VectorGraphicRenderer, renderCircle)
(JNIEnv* env, jclass, jlong handle, jfloat x, jfloat y, jfloat radius, jfloatArray color) {
    const PinnedFloats rgba(env, color);
    if (rgba) fromHandle<VectorGraphicRenderer>(handle)->renderCircle(x, y, radius, rgba.elements());
}

NATIVE(void, VectorGraphicRenderer, renderBitmapCircle)
(JNIEnv* env, jclass, jlong handle, jfloat x, jfloat y, jfloat diameter, jfloatArray color, jint texture) {
    const PinnedFloats rgba(env, color);
    if (!rgba) return;
    fromHandle<VectorGraphicRenderer>(handle)->renderBitmapCircle(x, y, diameter, rgba.elements(),
                                                                  static_cast<unsigned int>(texture));
}

NATIVE(void, VectorGraphicRenderer, renderBitmapRectangle)
(JNIEnv*, jclass, jlong handle, jfloat x, jfloat y, jfloat width, jfloat height, jint texture) {
    fromHandle<VectorGraphicRenderer>(handle)->renderBitmapRectangle(x, y, width, height,
                                                                     static_cast<unsigned int>(texture));
}

NATIVE(void, VectorGraphicRenderer, renderAlphaMaskedBitmapRectangle)
(JNIEnv*, jclass, jlong handle, jfloat x, jfloat y, jfloat width, jfloat height, jint texture, jint mask) {
    fromHandle<VectorGraphicRenderer>(handle)->renderAlphaMaskedBitmapRectangle(x, y, width, height, texture, mask);
}

NATIVE(void, VectorGraphicRenderer, renderRotatedBitmapRectangle)
(JNIEnv*, jclass, jlong handle, jfloat x, jfloat y, jfloat width, jfloat height, jint texture, jint rotation) {
    fromHandle<VectorGraphicRenderer>(handle)->renderRotatedBitmapRectangle(
        x, y, width, height, static_cast<unsigned int>(texture), rotation);
}

NATIVE(void, VectorGraphicRenderer, renderRotatedAlphaMaskedBitmapRectangle)
(JNIEnv*, jclass, jlong handle, jfloat x, jfloat y, jfloat width, jfloat height, jint texture, jint rotation,
 jint mask) {
    fromHandle<VectorGraphicRenderer>(handle)->renderRotatedAlphaMaskedBitmapRectangle(x, y, width, height, texture,
                                                                                       rotation, mask);
}

} // extern "C"
