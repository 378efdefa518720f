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

#include <algorithm>
#include <tuple>

namespace {

/// A function with the kinds of its arguments, one character each (see Arguments). Braces make the arguments in order.
template <typename Result, typename... Types>
NativeFunction native(Result (*function)(JNIEnv*, jclass, jlong, Types...), const char* kinds) {
    return [=](Arguments& arguments, jlong handle) {
        [[maybe_unused]] const char* kind = kinds;
        const std::tuple<Types...> values{arguments.make<Types>(*kind++)...};
        std::apply([&](Types... value) { function(arguments.env, nullptr, handle, value...); }, values);
    };
}

template <typename Type>
NativeFunction setting(void (*function)(JNIEnv*, jclass, Type)) {
    return [=](Arguments& arguments, jlong) { function(arguments.env, nullptr, arguments.make<Type>(' ')); };
}

/// The last ball needs its first four floats alone.
void addMetaballs(Arguments& arguments, jlong handle) {
    const auto count = arguments.bytes.ConsumeIntegralInRange<jint>(0, 4);
    jfloatArray balls = arguments.floats(std::max(0, 6 * count - 2));
    Java_com_vyn_effect_tidalume_Metaball2DRenderer_addMetaballs(arguments.env, nullptr, handle, balls, count);
}

} // namespace

#define FUNCTION(name) Java_com_vyn_effect_tidalume_##name
#define NATIVE(name, kinds) native(FUNCTION(name), kinds)
#define CLASS(name, getTexture, init, ...)                                                                             \
    {                                                                                                                  \
        FUNCTION(name##_Alloc), FUNCTION(name##_Free), FUNCTION(name##_GLContextDestroyed), getTexture, {              \
            NATIVE(name##_init, init), NATIVE(name##_setScreenSize, "ss"), __VA_ARGS__                                 \
        }                                                                                                              \
    }

const std::vector<NativeClass> nativeClasses = {
    CLASS(CometRenderer, nullptr, "", NATIVE(CometRenderer_render, "d"), NATIVE(CometRenderer_push, "ffi"),
          NATIVE(CometRenderer_getCore1X, ""), NATIVE(CometRenderer_getCore1Y, ""), NATIVE(CometRenderer_getCore2X, ""),
          NATIVE(CometRenderer_getCore2Y, "")),
    CLASS(IntensityMapBuilder, FUNCTION(IntensityMapBuilder_getTexture), "",
          NATIVE(IntensityMapBuilder_addDropLine, "22fff"), NATIVE(IntensityMapBuilder_addHorizontalWave, "ffffff")),
    CLASS(Metaball2DRenderer, FUNCTION(Metaball2DRenderer_getTexture), "f", addMetaballs,
          NATIVE(Metaball2DRenderer_render, "4")),
    CLASS(MetaballRenderer, nullptr, "f", NATIVE(MetaballRenderer_render, "ff"), NATIVE(MetaballRenderer_push, "ffi")),
    CLASS(NormalMapBuilder, FUNCTION(NormalMapBuilder_getTexture), "", NATIVE(NormalMapBuilder_setHeightMax, "f"),
          NATIVE(NormalMapBuilder_build, "t")),
    CLASS(ShallowWater, FUNCTION(ShallowWater_getTexture), "", NATIVE(ShallowWater_addDrop, "2ff"),
          NATIVE(ShallowWater_addDropLine, "22ff"), NATIVE(ShallowWater_update, "")),
    CLASS(ShallowWaterIterative, FUNCTION(ShallowWaterIterative_getTexture), "",
          NATIVE(ShallowWaterIterative_setIterationCount, "n"), NATIVE(ShallowWaterIterative_addDrop, "2fff"),
          NATIVE(ShallowWaterIterative_addDropLine, "22fff"), NATIVE(ShallowWaterIterative_addHorizontalWave, "ffffff"),
          NATIVE(ShallowWaterIterative_update, "")),
    CLASS(ShallowWaterRenderer, nullptr, "", NATIVE(ShallowWaterRenderer_setHeightMax, "f"),
          NATIVE(ShallowWaterRenderer_setDrawFrameBuffer, "o"), NATIVE(ShallowWaterRenderer_setBGFlip, "z"),
          NATIVE(ShallowWaterRenderer_setTexture, "p"), NATIVE(ShallowWaterRenderer_render, "tt")),
    CLASS(VectorGraphicRenderer, nullptr, "", NATIVE(VectorGraphicRenderer_setBlendEquation, "b"),
          NATIVE(VectorGraphicRenderer_setBlendFunction, "bbbb"), NATIVE(VectorGraphicRenderer_setBlendColor, "ffff"),
          NATIVE(VectorGraphicRenderer_renderRadialGradient, "fff4f4"),
          NATIVE(VectorGraphicRenderer_renderCircle, "fff4"), NATIVE(VectorGraphicRenderer_renderBitmapCircle, "fff4t"),
          NATIVE(VectorGraphicRenderer_renderBitmapRectangle, "fffft"),
          NATIVE(VectorGraphicRenderer_renderAlphaMaskedBitmapRectangle, "fffftt"),
          NATIVE(VectorGraphicRenderer_renderRotatedBitmapRectangle, "ffffti"),
          NATIVE(VectorGraphicRenderer_renderRotatedAlphaMaskedBitmapRectangle, "fffftit")),
};

const std::vector<NativeFunction> settings = {
    setting(FUNCTION(GlobalProperty_setDEBUGLOG)),
    setting(FUNCTION(GlobalProperty_setROOTDIR)),
    setting(FUNCTION(GlobalProperty_setBINARYSHADER)),
};
