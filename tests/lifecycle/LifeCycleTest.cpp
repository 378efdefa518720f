#include "foundation/Diagnostics.h"
#include "tests/lifecycle/EffectCase.h"
#include "tests/support/GLTest.h"
#include "tests/support/LogCatalogue.h"

#include <algorithm>
#include <chrono>
#include <climits>
#include <cstdio>
#include <filesystem>
#include <gmock/gmock.h>
#include <unistd.h>

void PrintTo(const EffectCase& effect, std::ostream* stream) {
    *stream << effect.name;
}

namespace {

using testing::Contains;
using testing::Each;
using testing::Field;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::ResultOf;

class LifeCycleTest : public GLTest, public testing::WithParamInterface<EffectCase> {
  protected:
    const EffectCase& effectCase = GetParam();
    const int programs = static_cast<int>(effectCase.programs.size());

    void TearDown() override {
        EXPECT_EQ(liveObjects(), 0U) << "GL objects leaked";
        GLTest::TearDown();
    }

    std::unique_ptr<AnyEffect> made() const { return effectCase.make(); }

    std::unique_ptr<AnyEffect> ready() const {
        auto effect = made();
        effect->init();
        effect->setScreenSize(width, height);
        return effect;
    }

    /// Draws on a black framebuffer 0 and reads what came out, there or in the effect's texture: the effect's own
    /// channels.
    std::vector<float> picture(AnyEffect& effect) {
        glBindFramebuffer(GL_FRAMEBUFFER, 0);
        glClearColor(0.0F, 0.0F, 0.0F, 0.0F);
        glClear(GL_COLOR_BUFFER_BIT);
        effect.draw();
        takeOwnLines();
        const std::vector<float> rgba = effect.texture()
                                            ? tidalume::headless::readTexture(effect.texture(), width, height).rgba
                                            : tidalume::headless::readFramebuffer(width, height).rgba;
        std::vector<float> drawn;
        for (size_t i = 0; i < rgba.size(); ++i) {
            if (i % 4 < static_cast<size_t>(effectCase.channels)) drawn.push_back(rgba[i]);
        }
        return drawn;
    }

    void takeOwnLines() {
        if (effectCase.logsOnDraw) log.take();
    }

    /// What a fault leaves behind: log lines, and errors that the effect's own checks have left to the next one.
    std::vector<LogLine> takeFaultLines() {
        checkGLError("next");
        return log.take();
    }

    /// Names of the textures and framebuffers that live.
    static std::pair<std::set<GLuint>, std::set<GLuint>> targets() {
        return {glRecorder().live["texture"], glRecorder().live["framebuffer"]};
    }
};

TEST_P(LifeCycleTest, ProgramsAreBuiltOnceAndDeletedWithTheLastObject) {
    GlobalProperty::DEBUG_LOG = true;
    const int perObject = effectCase.sharesPrograms ? 0 : programs;

    auto first = made();
    EXPECT_EQ(liveObjects(), 0U) << "a constructor needs no context";
    const auto start = std::chrono::steady_clock::now();
    first->init();
    const std::chrono::duration<double, std::milli> whole = std::chrono::steady_clock::now() - start;
    EXPECT_EQ(glRecorder().counts["glCreateProgram"], programs);
    std::vector<LogLine> lines = log.take();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].priority, 6);
    EXPECT_EQ(lines[0].tag, effectCase.programClass);
    const std::string words = effectCase.programClass + " Shader Init : ";
    ASSERT_THAT(lines[0].message, MatchesRegex(words + "[0-9]+\\.[0-9]+ ms"));
    const double logged = std::stod(lines[0].message.substr(words.size()));
    EXPECT_LE(logged, whole.count());
    EXPECT_GT(logged, 0.1 * whole.count());

    auto second = made();
    second->init();
    EXPECT_EQ(glRecorder().counts["glCreateProgram"], programs + perObject);
    EXPECT_EQ(log.take().size(), effectCase.sharesPrograms ? 0U : 1U);

    first.reset();
    EXPECT_EQ(glRecorder().live["program"].size(), static_cast<size_t>(programs));
    second->setScreenSize(width, height);
    EXPECT_THAT(picture(*second), Contains(testing::Gt(0.0F))) << "the remaining object still draws";
    second.reset();
    EXPECT_THAT(glRecorder().live["program"], IsEmpty());

    made()->init();
    EXPECT_EQ(glRecorder().counts["glCreateProgram"], 2 * programs + perObject) << "the next object builds anew";
    log.take();
}

TEST_P(LifeCycleTest, TargetsFollowTheScreenSize) {
    auto effect = ready();
    const auto before = targets();
    EXPECT_EQ(before.first.size(), static_cast<size_t>(effectCase.targets));
    EXPECT_EQ(before.second.size(), static_cast<size_t>(effectCase.targets));

    effect->setScreenSize(width, height);
    EXPECT_EQ(targets(), before) << "the same size keeps the names";

    effect->setScreenSize(height, width);
    EXPECT_EQ(targets().first.size(), before.first.size()) << "old targets are deleted";
    EXPECT_EQ(glRecorder().counts["glGenTextures"], effectCase.targets ? 2 : 0) << "a new size makes new ones";
    effect->draw();
    takeOwnLines();
}

TEST_P(LifeCycleTest, ImpossibleSizesMakeNoTargetAndDrawNothing) {
    for (const auto& [w, h] :
         {std::pair{0, 61}, {97, 0}, {-5, -7}, {INT_MAX, INT_MAX}, {INT_MIN, INT_MIN}, {97, 1 << 20}}) {
        auto effect = ready();
        effect->setScreenSize(w, h);
        EXPECT_EQ(targets().first.size() + targets().second.size(), 0U) << w << " x " << h;
        if (effectCase.targets > 0) {
            EXPECT_THAT(glRecorder().record([&] { effect->draw(); }), IsEmpty()) << w << " x " << h;
            takeOwnLines();
        }
        effect->setScreenSize(width, height);
        EXPECT_THAT(picture(*effect), Contains(testing::Gt(0.0F))) << "the next possible size draws again";
    }
}

/// Drawing without programs is left to the driver, in effects without targets: those are not asked to be silent then.
TEST_P(LifeCycleTest, AForgottenContextGetsNoCallAndNoDrawingIntoTargets) {
    auto effect = ready();
    effect->draw();
    takeOwnLines();
    EXPECT_THAT(glRecorder().record([&] { effect->GLContextDestroyed(); }), IsEmpty());
    if (effectCase.targets > 0) {
        EXPECT_THAT(glRecorder().record([&] { effect->draw(); }), IsEmpty());
        takeOwnLines();
    }
    EXPECT_EQ(effect->texture(), 0U);
    EXPECT_THAT(glRecorder().record([&] { effect.reset(); }), IsEmpty()) << "nothing of a lost context is deleted";
    context.recreate();
    glRecorder().live.clear();
}

TEST_P(LifeCycleTest, TwoObjectsSurviveTwoLossesOfTheContext) {
    std::vector<float> first;
    std::unique_ptr<AnyEffect> effects[2] = {ready(), ready()};
    for (int loss = 0; loss <= 2; ++loss) {
        const std::vector<float> drawn = picture(*effects[loss % 2]);
        if (loss == 0) first = drawn;
        EXPECT_THAT(drawn, Contains(testing::Gt(0.0F)));
        EXPECT_EQ(drawn, first) << "after loss " << loss;
        for (auto& effect : effects)
            effect->GLContextDestroyed();
        context.recreate();
        glRecorder().live.clear();
        for (auto& effect : effects) {
            effect->init();
            effect->setScreenSize(width, height);
        }
    }
}

TEST_P(LifeCycleTest, CacheFilesHaveTheGivenNames) {
    const auto folder = std::filesystem::temp_directory_path() / ("tidalume-" + std::to_string(getpid()));
    std::filesystem::create_directory(folder);
    std::snprintf(GlobalProperty::ROOT_DIR, sizeof(GlobalProperty::ROOT_DIR), "%s/", folder.c_str());

    ready();
    EXPECT_TRUE(std::filesystem::is_empty(folder)) << "the cache is off";

    GlobalProperty::BINARY_SHADER = true;
    ready();
    for (const std::string& program : effectCase.programs)
        EXPECT_TRUE(std::filesystem::remove(folder / (effectCase.programClass + "Program" + program + ".dat")));
    EXPECT_TRUE(std::filesystem::is_empty(folder)) << "no further file";

    ready();
    glRecorder().faults.acceptsProgramBinaries = true;
    glRecorder().counts.clear();
    auto effect = ready();
    EXPECT_EQ(glRecorder().counts["glCompileShader"], 0) << "an accepted binary needs no compiler";
    EXPECT_THAT(picture(*effect), Contains(testing::Gt(0.0F)));
    effect.reset();
    std::filesystem::remove_all(folder);
}

TEST_P(LifeCycleTest, ShadersPassTheReferenceCompiler) {
    made()->init();
    ASSERT_EQ(glRecorder().shaderTexts.size(), static_cast<size_t>(2 * programs));
    for (const auto& [type, text] : glRecorder().shaderTexts) {
        const std::string stage = type == GL_VERTEX_SHADER ? "vert" : "frag";
        FILE* compiler = popen(("glslangValidator --stdin -S " + stage).c_str(), "w");
        ASSERT_NE(compiler, nullptr);
        std::fwrite(text.data(), 1, text.size(), compiler);
        EXPECT_EQ(pclose(compiler), 0) << text;
    }
}

/// A driver that refuses one thing at a time: no crash, no leak, the log says what happened, and the next good call
/// recovers.
TEST_P(LifeCycleTest, SurvivesAHostileDriver) {
    using Faults = GLRecorder::Faults;
    struct Refusal {
        const char* name;
        void (*refuse)(Faults&);
        const char* says; ///< in the log of an effect that meets it; null: nothing is said
        bool meetsTargets;
    };
    const Refusal refusals[] = {
        {"compile", [](Faults& faults) { faults.compileFails = true; }, "Could not compile shader 35633:\nrefused\n",
         false},
        {"link", [](Faults& faults) { faults.linkFails = true; }, "Could not link program:\nrefused\n", false},
        {"link without a log", [](Faults& faults) { faults.linkFails = faults.infoLogIsEmpty = true; }, nullptr, false},
        {"glCreateShader", [](Faults& faults) { faults.givesZero = {"glCreateShader"}; }, nullptr, false},
        {"glCreateProgram", [](Faults& faults) { faults.givesZero = {"glCreateProgram"}; }, nullptr, false},
        {"glGenTextures", [](Faults& faults) { faults.givesZero = {"glGenTextures"}; }, nullptr, true},
        {"glGenFramebuffers", [](Faults& faults) { faults.givesZero = {"glGenFramebuffers"}; },
         "(0x502) GL_INVALID_OPERATION", true},
        {"no float format",
         [](Faults& faults) {
             faults.notRenderable = {GL_R16F, GL_RG16F, GL_RGB16F, GL_RGBA16F};
         },
         "(0x506)", true},
        {"pending errors",
         [](Faults& faults) {
             faults.pendingErrors = {GL_OUT_OF_MEMORY, GL_INVALID_ENUM, 0x506};
         },
         "(0x505) GL_OUT_OF_MEMORY", true},
    };
    for (const Refusal& refusal : refusals) {
        SCOPED_TRACE(refusal.name);
        auto effect = made();
        refusal.refuse(glRecorder().faults);
        effect->init();
        effect->setScreenSize(width, height);
        effect->draw();
        const std::vector<LogLine> lines = takeFaultLines();
        glRecorder().faults = {};
        EXPECT_THAT(lines, Each(ResultOf(isInCatalogue, true)));
        if (refusal.says && (effectCase.targets > 0 || !refusal.meetsTargets)) {
            EXPECT_THAT(lines, Contains(Field(&LogLine::message, HasSubstr(refusal.says))));
        }

        effect->init();
        effect->setScreenSize(width, height);
        EXPECT_THAT(picture(*effect), Contains(testing::Gt(0.0F)));
    }
}

/// Where points are single pixels, what is drawn with them shrinks, and all else stays.
TEST_P(LifeCycleTest, SurvivesADriverOfSmallPoints) {
    const std::vector<float> expected = picture(*ready());
    const bool drawsPoints =
        std::any_of(glRecorder().shaderTexts.begin(), glRecorder().shaderTexts.end(),
                    [](const auto& shader) { return shader.second.find("gl_PointSize") != std::string::npos; });
    glRecorder().faults.pointsAreSinglePixels = true;
    const std::vector<float> drawn = picture(*ready());
    EXPECT_EQ(drawn != expected, drawsPoints);
}

/// Where the driver cannot render to a format, the next wider one takes its place and the picture stays.
TEST_P(LifeCycleTest, WiderFormatsGiveTheSamePicture) {
    if (effectCase.targets == 0) GTEST_SKIP() << "no targets";
    auto effect = ready();
    const std::vector<float> expected = picture(*effect);
    for (const std::set<GLint>& refused : {std::set<GLint>{GL_R16F, GL_RG16F, GL_RGB16F}, {GL_R16F, GL_RGB16F}}) {
        effect = made();
        glRecorder().faults.notRenderable = refused;
        effect->init();
        effect->setScreenSize(width, height);
        EXPECT_EQ(picture(*effect), expected);
        glRecorder().counts.clear();
        effect->draw();
        takeOwnLines();
        EXPECT_EQ(glRecorder().counts["glCheckFramebufferStatus"], 0) << "never asked per frame";
        glRecorder().faults = {};
    }
}

INSTANTIATE_TEST_SUITE_P(Effects, LifeCycleTest, testing::ValuesIn(effectCases()),
                         [](const auto& info) { return info.param.name; });

} // namespace
