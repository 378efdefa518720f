#include "bench/phones/Figures.h"
#include "effects/water/ShallowWaterIterative.h"
#include "testing/GLRecorder.h"

#include <iostream>
#include <memory>
#include <sstream>

namespace tidalume::phones {
namespace {

/// What an application calls in every frame.
struct Frame {
    const char* name;
    std::vector<const char*> operations;
    int frames = 1; ///< for which the operations draw
};

const Frame frames[] = {
    {"water: a drop, an update of 8 passes, normal map, picture",
     {"ShallowWaterIterative::addDrop", "update", "NormalMapBuilder::build", "ShallowWaterRenderer::render"}},
    {"pond: an update of one step, normal map, picture",
     {"ShallowWater::update, a step", "NormalMapBuilder::build", "ShallowWaterRenderer::render"}},
    {"painted heights: a wave, normal map, picture",
     {"IntensityMapBuilder::addHorizontalWave", "NormalMapBuilder::build", "ShallowWaterRenderer::render"}},
    {"metaballs: 64 balls, one colour", {"Metaball2DRenderer::addMetaballs, 64 balls", "Metaball2DRenderer::render"}},
    {"particle metaballs", {"MetaballRenderer::render"}, 8},
    {"comets", {"CometRenderer::render"}},
    {"a disc", {"VectorGraphicRenderer::renderCircle"}},
    {"a bitmap rectangle", {"VectorGraphicRenderer::renderBitmapRectangle"}},
    {"a gradient", {"VectorGraphicRenderer::renderRadialGradient"}},
};

/// How many calls of each kind a recorded sequence has.
std::vector<int> countByKind(const std::string& sequence) {
    std::vector<int> counts(callKinds.size());
    std::istringstream calls(sequence);
    for (std::string call; std::getline(calls, call);) {
        const bool isDraw = call.rfind("glDraw", 0) == 0 || call.rfind("glClear ", 0) == 0;
        const bool isLookUp = call[0] == '?' || call.rfind("glGet", 0) == 0;
        const bool isUniform = call.find(" =") != std::string::npos;
        ++counts[isDraw ? 0 : call[0] == '[' ? 4 : isLookUp ? 3 : isUniform ? 1 : 2];
    }
    return counts;
}

} // namespace

const std::vector<const char*> callKinds = {"draws and clears", "uniforms", "other state", "look-ups", "error checks"};

void printCalls(const std::map<std::string, std::function<void()>>& operations, int width, int height) {
    ShallowWaterIterative water;
    water.init();
    water.setScreenSize(width, height);
    for (const Frame& frame : frames) {
        const std::string sequence = glRecorder().record([&] {
            for (const std::string operation : frame.operations)
                operation == "update" ? water.update() : operations.at(operation)();
        });
        std::cout << "calls " << frame.name;
        for (const int count : countByKind(sequence))
            std::cout << "=" << count / frame.frames;
        std::cout << "\n";
    }
}

} // namespace tidalume::phones
