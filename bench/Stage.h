#pragma once

#include "bench/ProgramSet.h"
#include "effects/comet/CometRenderer.h"
#include "effects/metaball/Metaball2DRenderer.h"
#include "effects/metaball/MetaballRenderer.h"
#include "effects/vector/VectorGraphicRenderer.h"
#include "effects/water/IntensityMapBuilder.h"
#include "effects/water/NormalMapBuilder.h"
#include "effects/water/ShallowWater.h"
#include "effects/water/ShallowWaterIterative.h"
#include "effects/water/ShallowWaterRenderer.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tidalume::bench {

/// What the programs of all effects are at the moment.
enum class Form { Library, Plain, Floor };

/// A call of an effect that is measured.
struct Operation {
    std::string name;
    double goal;    ///< largest share of the plain form's time; 0: none was set
    bool hasFloor;  ///< there is a form with next to no arithmetic
    bool canReplay; ///< its vertices stay where they are after the call
    std::function<void()> run;
};

/// A texture of half floats that operations read and draw on.
struct Surface {
    GLuint texture;
    GLenum format; ///< its channels
    int width;
    int height;
    float lowest; ///< of the noise that it holds at first
    float highest;
};

/// Every effect on one screen. Every texture holds noise of its own, the same in every new context.
class Stage {
  public:
    /// Resizes nothing: framebuffer 0 must be at least as large.
    Stage(int width, int height);
    ~Stage();
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    void use(Form form);

    /// All operations that draw.
    std::vector<Operation> operations();

    /// All textures that operations draw on, in the same order on every stage.
    std::vector<Surface> surfaces();

    /// The field of the balls, summed in a loop in every fragment.
    void sumBallsInFragments();

    void setBalls(int count, float radius);

    int width() const { return mWidth; }
    int height() const { return mHeight; }

    ShallowWaterIterative iterative;
    ShallowWater threeBuffers;
    IntensityMapBuilder intensity;
    NormalMapBuilder normals;
    ShallowWaterRenderer water;
    Metaball2DRenderer metaballs;
    MetaballRenderer particles;
    VectorGraphicRenderer graphics;
    CometRenderer comets;
    std::vector<float> balls; ///< six floats each

  private:
    std::vector<ProgramTable> tables();
    std::vector<ProgramSet>& sets(Form form);

    int mWidth;
    int mHeight;
    float mCenters[2][2]; ///< of the disturbances and shapes
    float mColors[2][4] = {{1.0F, 0.5F, 0.25F, 0.5F}, {0.0F, 0.25F, 0.5F, 0.5F}};
    GLuint mBitmap;
    GLuint mLoopProgram = 0;
    std::optional<std::vector<ProgramSet>> mSets[3];
};

} // namespace tidalume::bench
