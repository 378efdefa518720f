#pragma once

namespace tidalume::bench {

/// An operation of an effect that is measured against its plain form.
struct MeasuredOperation {
    const char* name = ""; ///< in testing/Effects.cpp
    double goal = 0.0;     ///< largest share of the plain form's time; 0: none is set
    bool hasFloor = false; ///< reference::floors has a form for it
    bool canReplay = true; ///< its vertices stay where they are after the call
};

constexpr char waterFrame[] = "water frame: 8 passes, normals, render";

constexpr MeasuredOperation measuredOperations[] = {
    {"ShallowWaterIterative::update, a pass", 1.0, true},
    {"ShallowWater::update, a step", 1.0, true},
    {"NormalMapBuilder::build", 1.0, true},
    {"ShallowWaterRenderer::render", 1.0, true},
    {waterFrame, 1.0, true},
    {"ShallowWaterIterative::addDrop", 1.0},
    {"ShallowWaterIterative::addDropLine", 1.0},
    {"ShallowWaterIterative::addHorizontalWave", 1.0},
    {"ShallowWater::addDrop", 1.0},
    {"ShallowWater::addDropLine", 1.0},
    {"IntensityMapBuilder::addDropLine", 1.0},
    {"IntensityMapBuilder::addHorizontalWave", 1.0},
    {"Metaball2DRenderer::addMetaballs, 64 balls", 1.0, true},
    {"Metaball2DRenderer::render", 1.03},
    {"VectorGraphicRenderer::renderRadialGradient", 0.90, true},
    {"VectorGraphicRenderer::renderCircle", 1.03},
    {"VectorGraphicRenderer::renderBitmapCircle", 1.03},
    {"VectorGraphicRenderer::renderBitmapRectangle", 1.03},
    {"VectorGraphicRenderer::renderAlphaMaskedBitmapRectangle", 1.03},
    {"CometRenderer::render", 0.0, false, false},
};

} // namespace tidalume::bench
