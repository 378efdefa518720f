#pragma once

#include "bench/GLReplay.h"
#include "foundation/ProgramTable.h"
#include "headless/HeadlessContext.h"
#include "looks/FieldPainter.h"
#include "testing/Effects.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace tidalume::bench {

/// Eight passes of the water, the normal map and the renderer.
constexpr char waterFrame[] = "water frame: 8 passes, normals, render";

/// What is measured: such operations of the effects, the painting of a field, and the water frame.
struct MeasuredOperation {
    std::string name;
    Measured measured;
};

std::vector<MeasuredOperation> measuredOperations();

/// Whose shaders the effects draw with: their own or those of reference/.
enum class Form { Library, Plain, Floor };

/// All effects in a context of their own. Each has run every operation once; then noise was put into every texture that
/// they draw into, the same on all screens of a size.
class Screen {
  public:
    /// @param width, height  of the screen and of framebuffer 0, in pixels
    Screen(int width, int height);
    ~Screen();
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    int width() const { return mContext.width(); }
    int height() const { return mContext.height(); }

    /// All operations of all effects, the painting of a field, and the water frame, which is made of some of them.
    const std::vector<Operation>& operations() const { return mOperations; }

    /// What runs the operation of this name; throws std::logic_error where there is none.
    std::function<void()> operation(const std::string& name) const;

    /// From now on all effects draw with the shaders of a form; with their own where it has none.
    void use(Form form);

    /// The textures of half floats that the effects draw into.
    const std::map<GLuint, Storage>& targets() const { return mTargets; }

  private:
    /// Ids and locations of programs, and the members that hold them.
    using Programs = std::vector<std::pair<GLint*, GLint>>;

    static Programs current(const std::vector<ProgramTable>& tables);
    static void putInPlace(const Programs& programs);

    headless::HeadlessContext mContext;
    std::vector<ProgramTable> mTables;
    std::map<GLuint, Storage> mTargets;
    std::map<std::string, AnyEffect> mEffects;
    FieldPainter mFieldPainter;
    FieldScreen mFieldScreen{540};
    std::vector<Operation> mOperations;
    std::map<Form, Programs> mPrograms;
};

} // namespace tidalume::bench
