#include "bench/Screen.h"

#include "headless/Pixels.h"
#include "reference/Shaders.h"
#include "testing/Noise.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace tidalume::bench {
namespace {

/// Where the tables are noted that the effects have built; null while nobody asks.
std::vector<ProgramTable>* builtTables = nullptr;

/// The tables of programs that an action builds, each once.
std::vector<ProgramTable> tablesBuiltBy(const std::function<void()>& action) {
    std::vector<ProgramTable> tables;
    builtTables = &tables;
    action();
    builtTables = nullptr;
    return tables;
}

/// Builds the programs anew, with the shaders of a form where it has some.
void buildForm(ProgramTable table, const std::vector<reference::ProgramForm>& forms) {
    for (Program& program : table.programs) {
        for (const reference::ProgramForm& form : forms) {
            if (!program.id || std::strcmp(form.cacheName, program.cacheName) != 0) continue;
            program.vertexSource = form.vertex;
            program.fragmentSource = form.fragment;
        }
    }
    abandonPrograms(table);
    buildPrograms(table);
    for (const Program& program : table.programs) {
        if (program.id && *program.id == 0) throw std::runtime_error(std::string("no program ") + program.cacheName);
    }
}

/// Normals where there are three channels, heights elsewhere.
void fillWithNoise(GLuint texture, const Storage& storage) {
    const float lowest = storage.format == GL_RGB ? 0.3F : -0.5F;
    const float highest = storage.format == GL_RGB ? 1.0F : 0.5F;
    const std::vector<float> values = test::noise(texture, 4 * storage.width * storage.height, lowest, highest);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, storage.width, storage.height, storage.format, GL_FLOAT, values.data());
    glBindTexture(GL_TEXTURE_2D, 0);
}

} // namespace

std::vector<MeasuredOperation> measuredOperations() {
    const Inputs none = {1, 1, 1, 1, 1}; // they are not run, and make nothing where there are textures
    std::vector<MeasuredOperation> operations = {{waterFrame, {1.0, true}}, {"FieldPainter::paint", {1.0}}};
    for (const EffectCase& effectCase : effectCases())
        for (const Operation& operation : effectCase.make().operations(none))
            if (operation.measured) operations.push_back({operation.name, *operation.measured});
    return operations;
}

Screen::Screen(int width, int height) : mContext(width, height) {
    const auto makeEffects = [&] {
        for (const EffectCase& effectCase : effectCases()) {
            const AnyEffect& effect = mEffects[effectCase.name] = effectCase.make();
            effect.init();
            effect.setScreenSize(width, height);
        }
        mFieldPainter.createPrograms();
    };
    mTables = tablesBuiltBy([&] { mTargets = record(makeEffects).storages; });
    mPrograms[Form::Library] = current(mTables);

    // Its colours span half their range: a step of a driver's filter weights, 1/256, is less than one of 8 bits.
    const std::vector<float> colors = test::noise(0, 4 * width * height, 0.25F, 0.75F);
    const Inputs inputs = {width, height, mEffects["ShallowWaterIterative"].texture(),
                           mEffects["NormalMapBuilder"].texture(),
                           headless::makeTexture(GL_RGBA8, width, height, colors)};
    for (const auto& [name, effect] : mEffects) {
        const std::vector<Operation> operations = effect.operations(inputs);
        mOperations.insert(mOperations.end(), operations.begin(), operations.end());
    }
    const FieldPainter::Colors sunset = {{1.0F, 0.85F, 0.4F}, {1.0F, 0.44F, 0.46F}, {0.58F, 0.26F, 0.62F}};
    mFieldScreen.fit(width, height);
    mOperations.push_back({"FieldPainter::paint", [=] { mFieldPainter.paint(inputs.heights, mFieldScreen, sunset); }});
    mOperations.push_back({waterFrame, [pass = operation("ShallowWaterIterative::update, a pass"),
                                        build = operation("NormalMapBuilder::build"),
                                        render = operation("ShallowWaterRenderer::render")] {
                               for (int i = 0; i < 8; ++i)
                                   pass();
                               build();
                               render();
                           }});
    for (const Operation& operation : mOperations)
        operation.run();
    for (const auto& [texture, storage] : mTargets)
        fillWithNoise(texture, storage);
}

/// The context takes the other forms' programs with it.
Screen::~Screen() {
    putInPlace(mPrograms[Form::Library]);
}

std::function<void()> Screen::operation(const std::string& name) const {
    for (const Operation& operation : mOperations)
        if (operation.name == name) return operation.run;
    throw std::logic_error("no operation " + name);
}

void Screen::use(Form form) {
    if (mPrograms.count(form) == 0) {
        for (const ProgramTable& table : mTables)
            buildForm(table, form == Form::Plain ? reference::plain::programs : reference::floors::programs);
        mPrograms[form] = current(mTables);
    }
    putInPlace(mPrograms[form]);
}

void Screen::putInPlace(const Programs& programs) {
    for (const auto& [member, value] : programs)
        *member = value;
}

Screen::Programs Screen::current(const std::vector<ProgramTable>& tables) {
    Programs programs;
    const auto add = [&](GLint* member) {
        if (member) programs.emplace_back(member, *member);
    };
    for (const ProgramTable& table : tables) {
        for (const Program& program : table.programs) {
            add(reinterpret_cast<GLint*>(program.id));
            for (const Location& uniform : program.uniforms)
                add(uniform.member);
            for (const Location& attribute : program.attributes)
                add(attribute.member);
        }
    }
    return programs;
}

} // namespace tidalume::bench

// The linker sends the effects' calls of buildPrograms through here (--wrap).
// NOLINTBEGIN(bugprone-reserved-identifier): the names that it asks for
extern "C" {
void __real__ZN8tidalume13buildProgramsERKNS_12ProgramTableE(const tidalume::ProgramTable& table);
void __wrap__ZN8tidalume13buildProgramsERKNS_12ProgramTableE(const tidalume::ProgramTable& table) {
    using tidalume::bench::builtTables;
    __real__ZN8tidalume13buildProgramsERKNS_12ProgramTableE(table);
    if (!builtTables) return;
    const bool known = std::any_of(builtTables->begin(), builtTables->end(),
                                   [&](const auto& other) { return other.programs[0].id == table.programs[0].id; });
    if (!known) builtTables->push_back(table);
}
}
// NOLINTEND(bugprone-reserved-identifier)
