#include "foundation/Diagnostics.h"
#include "testing/BareGL.h"
#include "testing/Effects.h"
#include "tests/support/Files.h"
#include "tests/support/GLTest.h"

#include <array>
#include <climits>
#include <cstdio>
#include <filesystem>
#include <regex>

namespace {

using namespace testing;

/// Whether a line is one of those that an effect may write: its priority, its tag and its words, with any arguments;
/// what compilers and linkers say may have several lines. No build takes less than 0.01 ms or more than 100 s.
bool isInCatalogue(const std::string& line) {
    static const std::regex catalogue(
        R"(6 (\w+): \1 Shader Init : (?!0\.00)\d{1,5}\.\d{6} ms|)"
        R"(2 ShallowWater: addDrop center\[\S+,\S+\] radius\[\S+\] strength\[\S+\]|)"
        R"(6 EGLUtils: after .+\(\) glError \(0x[0-9a-f]+\)( GL_[A-Z_]+)?\n|)"
        R"(6 EGLUtils: Could not (compile shader (35633|35632)|link program):\n[\s\S]+\n)");
    return std::regex_match(line, catalogue);
}

const std::set<GLint> allFormats = {GL_R16F, GL_RG16F, GL_RGB16F, GL_RGBA16F};
const std::vector<GLenum> someErrors = {GL_OUT_OF_MEMORY, GL_INVALID_ENUM, GL_INVALID_FRAMEBUFFER_OPERATION};
const auto isLit = Contains(Gt(0.0F));

class LifeCycleTest : public GLTest, public testing::WithParamInterface<EffectCase> {
  protected:
    const EffectCase& effectCase = GetParam();
    const int programs = static_cast<int>(effectCase.programNames.size());

    AnyEffect ready() const { return effectCase.make().prepare(); }

    /// Without a target, effects that have some draw nothing. All others are not asked to be silent: drawing without
    /// programs is left to the driver.
    void expectSilence(const AnyEffect& effect) {
        if (effectCase.targets == 0) return;
        EXPECT_THAT(glRecorder().record([&] { effect.draw(); }), IsEmpty());
        EXPECT_EQ(effect.texture(), 0);
        EXPECT_THAT(log.take(), Each(StartsWith("2 ")));
    }

    /// What the effect draws, without an error in the log: its own channels.
    std::vector<float> picture(const AnyEffect& effect) {
        const std::vector<float> drawn = effect.picture(effectCase.channels);
        EXPECT_THAT(log.take(), Each(StartsWith("2 ")));
        return drawn;
    }

    /// The calls of a whole life, by operation, in the recorder's notation.
    std::string life() const {
        glRecorder().faults.renderer = "a GPU";
        std::string calls;
        const auto note = [&](const std::string& name, const std::function<void()>& action) {
            calls += "# " + name + "\n" + glRecorder().record(action);
        };
        AnyEffect effect = effectCase.make();
        note("init", effect.init);
        note("setScreenSize", [&] { effect.setScreenSize(width, height); });
        for (const Operation& operation : effect.operations({width, height, 70, 80, 90}))
            note(operation.name, operation.run);
        note("setScreenSize, another size", [&] { effect.setScreenSize(height, width); });
        note("destructor", [&] { effect = {}; });
        return calls;
    }

    std::string frozenLife() const {
        return fileContent(TIDALUME_SOURCE_DIR "/tests/lifecycle/calls/" + effectCase.name + ".txt");
    }

    /// Names of the textures and of the framebuffers that live.
    static std::vector<std::set<GLuint>> targets() { return {liveNames(glIsTexture), liveNames(glIsFramebuffer)}; }
};

TEST_P(LifeCycleTest, ProgramsAreBuiltOnceAndDeletedWithTheLastObject) {
    GlobalProperty::DEBUG_LOG = true;
    const auto isBuildTime = AllOf(StartsWith("6 " + effectCase.programClass), ResultOf(isInCatalogue, true));
    const int perObject = effectCase.sharesPrograms ? 0 : programs;
    const int& built = glRecorder().counts["glCreateProgram"];
    auto first = effectCase.make();
    EXPECT_EQ(built, 0) << "a constructor needs no context";
    first.init();
    EXPECT_EQ(built, programs);
    EXPECT_THAT(log.take(), ElementsAre(isBuildTime));

    auto second = ready();
    EXPECT_EQ(built, programs + perObject);
    EXPECT_THAT(log.take(), SizeIs(perObject == 0 ? 0 : 1));
    first = {};
    EXPECT_THAT(liveNames(glIsProgram), SizeIs(programs));
    EXPECT_THAT(picture(second), isLit) << "the remaining object still draws";
    second = {};
    EXPECT_THAT(liveNames(glIsProgram), IsEmpty());

    effectCase.make().init();
    EXPECT_EQ(built, 2 * programs + perObject) << "the next object builds anew";
    log.take();
}

TEST_P(LifeCycleTest, TargetsFollowTheScreenSize) {
    auto effect = ready();
    const auto before = targets();
    EXPECT_THAT(before, Each(SizeIs(effectCase.targets)));
    effect.setScreenSize(width, height);
    EXPECT_EQ(targets(), before) << "the same size keeps the names";
    effect.setScreenSize(height, width);
    EXPECT_THAT(targets(), Each(SizeIs(effectCase.targets))) << "old targets are deleted";
    EXPECT_EQ(glRecorder().counts["glGenTextures"], effectCase.targets ? 2 : 0) << "a new size makes new ones";
    picture(effect);
    const auto isRefusal = MatchesRegex(
        "6 EGLUtils: after glTexImage2D mTexture(sWater\\[0\\]|Normal)?\\(\\) glError \\(0x501\\) GL_INVALID_VALUE\n");
    for (const auto& [w, h] : {std::pair{0, height}, {INT_MAX, INT_MAX}, {width, INT_MIN}, {width, 1 << 20}}) {
        effect.setScreenSize(w, h);
        EXPECT_THAT(targets(), Each(IsEmpty())) << "impossible: " << w << " x " << h;
        const std::size_t refusals = effectCase.targets > 0 && w != 0 ? 1 : 0;
        EXPECT_THAT(log.take(), AllOf(SizeIs(refusals), Each(isRefusal))) << w << " x " << h;
        expectSilence(effect);
        effect.setScreenSize(width, height);
        EXPECT_THAT(picture(effect), isLit) << "the next possible size draws again";
    }
}

TEST_P(LifeCycleTest, TwoObjectsSurviveLossesOfTheContextWithoutACallToIt) {
    AnyEffect effects[] = {ready(), ready()};
    const std::vector<float> expected = picture(ready());
    EXPECT_THAT(expected, isLit);
    for (const auto& drawing : effects) {
        picture(drawing);
        for (auto& effect : effects)
            EXPECT_THAT(glRecorder().record([&] { effect.GLContextDestroyed(); }), IsEmpty());
        expectSilence(drawing);
        context.recreate();
        for (auto& effect : effects)
            effect.prepare();
        EXPECT_TRUE(same(picture(drawing), expected));
    }
    for (auto& effect : effects)
        effect.GLContextDestroyed();
    for (auto& effect : effects)
        EXPECT_THAT(glRecorder().record([&] { effect = {}; }), IsEmpty()) << "nothing of a lost context is deleted";
    context.recreate();
}

TEST_P(LifeCycleTest, CacheFilesHaveTheGivenNames) {
    const WorkingFolder folder; // where files lie while no other is set
    ready();
    EXPECT_TRUE(std::filesystem::is_empty(".")) << "the cache is off";
    GlobalProperty::BINARY_SHADER = true;
    ready();
    glRecorder().faults.acceptsProgramBinaries = true;
    glRecorder().counts.clear();
    EXPECT_THAT(picture(ready()), isLit);
    EXPECT_EQ(glRecorder().counts["glCompileShader"], 0) << "an accepted binary needs no compiler";
    for (const std::string& program : effectCase.programNames) {
        const std::string file = effectCase.programClass + "Program" + program + ".dat";
        EXPECT_TRUE(std::filesystem::remove(file)) << file;
    }
    EXPECT_TRUE(std::filesystem::is_empty(".")) << "no further file";
}

TEST_P(LifeCycleTest, ShadersPassTheReferenceCompiler) {
    effectCase.make().init();
    EXPECT_THAT(glRecorder().shaderTexts, SizeIs(2 * programs));
    for (const auto& [type, text] : glRecorder().shaderTexts) {
        const std::string stage = type == GL_VERTEX_SHADER ? "vert" : "frag";
        FILE* compiler = popen(("glslangValidator --stdin -S " + stage).c_str(), "w");
        std::fwrite(text.data(), 1, text.size(), compiler);
        EXPECT_EQ(pclose(compiler), 0) << text;
    }
}

/// A driver that refuses one thing at a time: no crash, no leak, the log says what happened, and the next good call
/// recovers.
TEST_P(LifeCycleTest, SurvivesAHostileDriver) {
    using Faults = GLRecorder::Faults;
    constexpr bool targets = true, programs = false;
    // Who meets it, and what the log says then; empty: nothing need be said.
    const std::tuple<std::string, bool, std::string, void (*)(Faults&)> refusals[] = {
        {"compile", programs, "Could not compile shader 35633:\n", [](Faults& f) { f.cannotCompile = "main"; }},
        {"link", programs, "Could not link program:\n", [](Faults& f) { f.linkFails = true; }},
        {"link, no log", programs, "", [](Faults& f) { f.linkFails = f.infoLogIsEmpty = true; }},
        {"shader", programs, "", [](Faults& f) { f.givesZero = {"glCreateShader"}; }},
        {"program", programs, "", [](Faults& f) { f.givesZero = {"glCreateProgram"}; }},
        {"texture", targets, "", [](Faults& f) { f.givesZero = {"glGenTextures"}; }},
        {"target", targets, "(0x502) GL_INVALID_OPERATION", [](Faults& f) { f.givesZero = {"glGenFramebuffers"}; }},
        {"formats", targets, "(0x506)", [](Faults& f) { f.notRenderable = allFormats; }},
        {"pending", targets, "(0x505) GL_OUT_OF_MEMORY", [](Faults& f) { f.pendingErrors = someErrors; }},
    };
    for (const auto& [name, meets, says, refuse] : refusals) {
        std::vector<std::string> saidBefore;
        for (const char* renderer : {"llvmpipe", "a GPU"}) {
            SCOPED_TRACE(name + " of " + renderer);
            auto effect = effectCase.make();
            refuse(glRecorder().faults);
            glRecorder().faults.renderer = renderer;
            effect.setScreenSize(height, width); // what is made by halves goes with the next size
            effect.prepare();
            effect.draw();
            checkGLError("next"); // errors that the effect's own checks have left to the next one
            const std::vector<std::string> lines = log.take();
            glRecorder().faults = {};
            EXPECT_THAT(lines, Each(ResultOf(isInCatalogue, true)));
            if (!says.empty() && (meets == programs || effectCase.targets > 0)) {
                EXPECT_THAT(lines, Contains(HasSubstr(says)));
            }
            EXPECT_TRUE(saidBefore.empty() || lines == saidBefore) << "hints go to no target that cannot be drawn into";
            saidBefore = lines;
            // A target that no format completes stays so until the next size.
            if (name == "formats") effect.setScreenSize(height, width);
            effect.prepare();
            EXPECT_THAT(picture(effect), isLit);
        }
    }
}

/// Where a format cannot be rendered to, the fallback format takes its place.
TEST_P(LifeCycleTest, DrawsTheSameInWiderFormats) {
    const std::vector<float> expected = picture(ready());
    glRecorder().faults.notRenderable = {GL_R16F, GL_RG16F, GL_RGB16F};
    EXPECT_TRUE(same(picture(ready()), expected));
}

TEST_P(LifeCycleTest, CallsAndTheirOrderAreFrozen) {
    EXPECT_EQ(life(), frozenLife()) << "see docs/compatibility.md";
    log.take();
    glDeleteTextures(3, std::array{70U, 80U, 90U}.data());
}

/// The hint to tile-based GPUs changes no picture, whatever blending and scissor the caller has left on.
TEST_P(LifeCycleTest, WhatIsDiscardedWasToBeOverwritten) {
    for (const GLenum state : {GL_DITHER, GL_SCISSOR_TEST, GL_BLEND}) {
        std::vector<std::vector<float>> pictures;
        for (const char* driver : {"llvmpipe", "a GPU"}) {
            glRecorder().faults.renderer = driver;
            const AnyEffect effect = ready();
            glScissor(10, 10, 50, 30);
            glBlendFunc(GL_ONE, GL_ONE);
            glEnable(state);
            effect.draw();
            pictures.push_back(picture(effect));
            glDisable(state);
        }
        EXPECT_TRUE(same(pictures[1], pictures[0])) << std::hex << state;
    }
}

/// On a driver with attribute locations of its own that leaves optional queries unanswered, the same calls go out; the
/// comets' points have an array of their own there, which they disable again.
TEST_P(LifeCycleTest, MakesTheSameCallsOnABareGL) {
    std::string calls = frozenLife();
    glRecorder().driver = dlopen(TIDALUME_BARE_GL, RTLD_NOW | RTLD_LOCAL);
    if (effectCase.name == "CometRenderer") {
        const std::string points = "glDrawArrays POINTS 0 2\n";
        calls = std::regex_replace(calls, std::regex(points), points + "glDisableVertexAttribArray vertices\n");
    }
    EXPECT_EQ(life(), calls);
    using Count = decltype(&bareGLLiveObjects);
    EXPECT_EQ(reinterpret_cast<Count>(dlsym(glRecorder().driver, "bareGLLiveObjects"))(), 0) << "GL objects leaked";
    glRecorder().reset();
    EXPECT_THAT(log.take(), Each(StartsWith("2 ")));
}

INSTANTIATE_TEST_SUITE_P(Effects, LifeCycleTest, ValuesIn(effectCases()), PrintToStringParamName());

} // namespace
