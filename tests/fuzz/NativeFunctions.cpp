#include "tests/fuzz/NativeFunctions.h"

#include "com_vyn_effect_tidalume_CometRenderer.h"
#include "com_vyn_effect_tidalume_GlobalProperty.h"
#include "com_vyn_effect_tidalume_IntensityMapBuilder.h"
#include "com_vyn_effect_tidalume_Metaball2DRenderer.h"
#include "com_vyn_effect_tidalume_MetaballRenderer.h"
#include "com_vyn_effect_tidalume_NormalMapBuilder.h"
#include "com_vyn_effect_tidalume_ShallowWater.h"
#include "com_vyn_effect_tidalume_ShallowWaterIterative.h"
#include "com_vyn_effect_tidalume_ShallowWaterRenderer.h"
#include "com_vyn_effect_tidalume_VectorGraphicRenderer.h"

#include <tuple>

namespace {

/// A function with the kinds of its arguments, one character each: s screen size, t texture, p texture to keep, o
/// framebuffer, b blend code, n small count, i other int, f float, d double, z boolean, l string, or the number of
/// floats in an array. Braces make the arguments in order.
template <typename Result, typename... Types>
NativeFunction native(Result (*function)(JNIEnv*, jclass, jlong, Types...), const char* kinds) {
    return [=](Arguments& arguments, jlong handle) {
        [[maybe_unused]] const char* kind = kinds;
        const std::tuple<Types...> values{arguments.make<Types>(*kind++)...};
        std::apply([&](Types... value) { function(arguments.env(), nullptr, handle, value...); }, values);
    };
}

template <typename Type>
NativeFunction setting(void (*function)(JNIEnv*, jclass, Type), char kind) {
    return [=](Arguments& arguments, jlong) { function(arguments.env(), nullptr, arguments.make<Type>(kind)); };
}

/// The last ball needs its first four floats alone.
void addMetaballs(Arguments& arguments, jlong handle) {
    const auto count = arguments.bytes().ConsumeIntegralInRange<jint>(0, 4);
    std::vector<float> balls(static_cast<size_t>(count == 0 ? 0 : 6 * count - 2));
    for (float& value : balls)
        value = arguments.make<jfloat>('f');
    jfloatArray array = arguments.env()->NewFloatArray(static_cast<jsize>(balls.size()));
    arguments.env()->SetFloatArrayRegion(array, 0, static_cast<jsize>(balls.size()), balls.data());
    Java_com_vyn_effect_tidalume_Metaball2DRenderer_addMetaballs(arguments.env(), nullptr, handle, array, count);
}

} // namespace

#define NATIVE(function, kinds) native(Java_com_vyn_effect_tidalume_##function, kinds)
#define LIFE(class)                                                                                                    \
    Java_com_vyn_effect_tidalume_##class##_Alloc, Java_com_vyn_effect_tidalume_##class##_Free,                         \
        Java_com_vyn_effect_tidalume_##class##_GLContextDestroyed

const std::vector<NativeClass>& nativeClasses() {
    static const std::vector<NativeClass> classes = {
        {LIFE(CometRenderer),
         nullptr,
         {NATIVE(CometRenderer_init, ""), NATIVE(CometRenderer_setScreenSize, "ss"), NATIVE(CometRenderer_render, "d"),
          NATIVE(CometRenderer_push, "ffi"), NATIVE(CometRenderer_getCore1X, ""), NATIVE(CometRenderer_getCore1Y, ""),
          NATIVE(CometRenderer_getCore2X, ""), NATIVE(CometRenderer_getCore2Y, "")}},
        {LIFE(IntensityMapBuilder),
         Java_com_vyn_effect_tidalume_IntensityMapBuilder_getTexture,
         {NATIVE(IntensityMapBuilder_init, ""), NATIVE(IntensityMapBuilder_setScreenSize, "ss"),
          NATIVE(IntensityMapBuilder_addDropLine, "22fff"), NATIVE(IntensityMapBuilder_addHorizontalWave, "ffffff")}},
        {LIFE(Metaball2DRenderer),
         Java_com_vyn_effect_tidalume_Metaball2DRenderer_getTexture,
         {NATIVE(Metaball2DRenderer_init, "f"), NATIVE(Metaball2DRenderer_setScreenSize, "ss"), addMetaballs,
          NATIVE(Metaball2DRenderer_render, "4")}},
        {LIFE(MetaballRenderer),
         nullptr,
         {NATIVE(MetaballRenderer_init, "f"), NATIVE(MetaballRenderer_setScreenSize, "ss"),
          NATIVE(MetaballRenderer_render, "ff"), NATIVE(MetaballRenderer_push, "ffi")}},
        {LIFE(NormalMapBuilder),
         Java_com_vyn_effect_tidalume_NormalMapBuilder_getTexture,
         {NATIVE(NormalMapBuilder_init, ""), NATIVE(NormalMapBuilder_setScreenSize, "ss"),
          NATIVE(NormalMapBuilder_setHeightMax, "f"), NATIVE(NormalMapBuilder_build, "t")}},
        {LIFE(ShallowWater),
         Java_com_vyn_effect_tidalume_ShallowWater_getTexture,
         {NATIVE(ShallowWater_init, ""), NATIVE(ShallowWater_setScreenSize, "ss"), NATIVE(ShallowWater_addDrop, "2ff"),
          NATIVE(ShallowWater_addDropLine, "22ff"), NATIVE(ShallowWater_update, "")}},
        {LIFE(ShallowWaterIterative),
         Java_com_vyn_effect_tidalume_ShallowWaterIterative_getTexture,
         {NATIVE(ShallowWaterIterative_init, ""), NATIVE(ShallowWaterIterative_setScreenSize, "ss"),
          NATIVE(ShallowWaterIterative_setIterationCount, "n"), NATIVE(ShallowWaterIterative_addDrop, "2fff"),
          NATIVE(ShallowWaterIterative_addDropLine, "22fff"), NATIVE(ShallowWaterIterative_addHorizontalWave, "ffffff"),
          NATIVE(ShallowWaterIterative_update, "")}},
        {LIFE(ShallowWaterRenderer),
         nullptr,
         {NATIVE(ShallowWaterRenderer_init, ""), NATIVE(ShallowWaterRenderer_setScreenSize, "ss"),
          NATIVE(ShallowWaterRenderer_setHeightMax, "f"), NATIVE(ShallowWaterRenderer_setDrawFrameBuffer, "o"),
          NATIVE(ShallowWaterRenderer_setBGFlip, "z"), NATIVE(ShallowWaterRenderer_setTexture, "p"),
          NATIVE(ShallowWaterRenderer_render, "tt")}},
        {LIFE(VectorGraphicRenderer),
         nullptr,
         {NATIVE(VectorGraphicRenderer_init, ""), NATIVE(VectorGraphicRenderer_setScreenSize, "ss"),
          NATIVE(VectorGraphicRenderer_setBlendEquation, "b"), NATIVE(VectorGraphicRenderer_setBlendFunction, "bbbb"),
          NATIVE(VectorGraphicRenderer_setBlendColor, "ffff"),
          NATIVE(VectorGraphicRenderer_renderRadialGradient, "fff4f4"),
          NATIVE(VectorGraphicRenderer_renderCircle, "fff4"), NATIVE(VectorGraphicRenderer_renderBitmapCircle, "fff4t"),
          NATIVE(VectorGraphicRenderer_renderBitmapRectangle, "fffft"),
          NATIVE(VectorGraphicRenderer_renderAlphaMaskedBitmapRectangle, "fffftt"),
          NATIVE(VectorGraphicRenderer_renderRotatedBitmapRectangle, "ffffti"),
          NATIVE(VectorGraphicRenderer_renderRotatedAlphaMaskedBitmapRectangle, "fffftit")}},
    };
    return classes;
}

const std::vector<NativeFunction>& settings() {
    static const std::vector<NativeFunction> functions = {
        setting(Java_com_vyn_effect_tidalume_GlobalProperty_setDEBUGLOG, 'z'),
        setting(Java_com_vyn_effect_tidalume_GlobalProperty_setROOTDIR, 'l'),
        setting(Java_com_vyn_effect_tidalume_GlobalProperty_setBINARYSHADER, 'z'),
    };
    return functions;
}
