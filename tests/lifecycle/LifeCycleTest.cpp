#include "effects/comet/CometRenderer.h"
#include "effects/metaball/Metaball2DRenderer.h"
#include "effects/metaball/MetaballRenderer.h"
#include "effects/vector/VectorGraphicRenderer.h"
#include "effects/water/IntensityMapBuilder.h"
#include "effects/water/NormalMapBuilder.h"
#include "effects/water/ShallowWater.h"
#include "effects/water/ShallowWaterIterative.h"
#include "effects/water/ShallowWaterRenderer.h"
#include "foundation/Diagnostics.h"
#include "tests/support/GLTest.h"
#include "tests/support/LogCatalogue.h"

#include <android/log.h>

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <gmock/gmock.h>

namespace {

using namespace testing;

// What each effect draws on a screen of 97 x 61 pixels: every call that draws, disturbs or builds.

float orange[4] = {1, 0.5F, 0, 1};
float ends[4] = {20, 10, 70, 15};

void draw(Metaball2DRenderer& effect) {
    float ball[6] = {48, 30, 20};
    effect.addMetaballs(ball, 1);
    effect.render(orange);
}

void draw(MetaballRenderer& effect) {
    effect.push(48, 30, 0);
    effect.render(20, 12.5F);
}

void draw(VectorGraphicRenderer& effect) {
    float rim[4] = {0, 0.5F, 1, 0.5F};
    effect.renderRadialGradient(48, 30, 5, orange, 40, rim);
    effect.renderCircle(20, 20, 12, orange);
    effect.renderBitmapCircle(70, 40, 12, orange, 0);
    effect.renderRotatedBitmapRectangle(5, 5, 10, 10, 0, 1);
    effect.renderRotatedAlphaMaskedBitmapRectangle(5, 40, 9, 9, 0, 2, 0);
}

void draw(CometRenderer& effect) {
    srand48(1);
    effect.push(48, 30, 0);
    effect.render(0.6);
}

void draw(IntensityMapBuilder& effect) {
    effect.addDropLine(ends, ends + 2, 9, 0.5F, 1);
    effect.addHorizontalWave(40, 8, 0.7F, 5, 2, 1);
}

void draw(NormalMapBuilder& effect) {
    effect.build(0);
}

void draw(ShallowWaterIterative& effect) {
    effect.addDrop(ends, 9, 0.5F, 0);
    effect.addDropLine(ends, ends + 2, 9, 0.5F, 1);
    effect.addHorizontalWave(40, 8, 0.7F, 5, 2, 1);
    effect.update();
}

void draw(ShallowWater& effect) {
    float line[4] = {-0.5F, -0.5F, 0.4F, 0.2F};
    effect.addDropLine(line, line + 2, 0.4F, 0.5F);
    effect.addDrop(ends, 20, 0.5F);
    for (int i = 0; i < 5; ++i)
        effect.update(); // two steps, wherever the time counter is
}

/// Of a picture of one white texel. In plain GL, since it must go on where a driver refuses.
void draw(ShallowWaterRenderer& effect) {
    const unsigned char white[4] = {255, 255, 255, 255};
    GLuint picture = 0;
    glGenTextures(1, &picture);
    glBindTexture(GL_TEXTURE_2D, picture);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, 1, 1, 0, GL_RGBA, GL_UNSIGNED_BYTE, white);
    effect.setTexture(static_cast<int>(picture));
    effect.render(0, 0);
    glDeleteTextures(1, &picture);
}

/// Any effect, as far as its life goes.
struct AnyEffect {
    virtual ~AnyEffect() = default;
    virtual void init() = 0;
    virtual void setScreenSize(int width, int height) = 0;
    virtual void GLContextDestroyed() = 0;
    virtual void draw() = 0;
    /// The texture that the effect draws into; 0 when that is framebuffer 0.
    virtual GLuint texture() = 0;
};

enum Output { Screen, Target };

template <typename Effect, Output output, int... quality>
struct Adapter : AnyEffect {
    Effect effect;
    void init() override { effect.init(quality...); }
    void setScreenSize(int width, int height) override { effect.setScreenSize(width, height); }
    void GLContextDestroyed() override { effect.GLContextDestroyed(); }
    void draw() override { ::draw(effect); }
    GLuint texture() override {
        if constexpr (output == Target) return effect.getTexture();
        return 0;
    }
};

struct EffectCase {
    std::string name;
    std::unique_ptr<AnyEffect> (*make)();
    std::vector<std::string> programNames; ///< in the cache: the class, "Program" and this
    int targets = 0;                       ///< textures, each with a framebuffer, per object
    int channels = 3;                      ///< that count; a wider format holds anything in its further ones
    std::string programClass = name;       ///< whose programs it draws with
    bool sharesPrograms = true;            ///< among all objects of the class
};

void PrintTo(const EffectCase& effect, std::ostream* stream) {
    *stream << effect.name;
}

template <typename Effect, Output output = Screen, int... quality>
std::unique_ptr<AnyEffect> make() {
    return std::make_unique<Adapter<Effect, output, quality...>>();
}

/// All effects; add a row for a new one.
const EffectCase effectCases[] = {
    {"Metaball2DRenderer", make<Metaball2DRenderer, Screen, 1>, {"Metaball", "Draw"}, 1},
    {"MetaballRenderer", make<MetaballRenderer, Screen, 1>, {"Metaball", "Draw"}, 1, 3, "Metaball2DRenderer"},
    {"VectorGraphicRenderer",
     make<VectorGraphicRenderer>,
     {"GradientFill", "Bitmap", "AlphaMaskedBitmap", "Circle", "BitmapCircle"}},
    {"CometRenderer", make<CometRenderer>, {"CoreOfComet", "TailOfComet"}},
    {"IntensityMapBuilder", make<IntensityMapBuilder, Target>, {"DropLine", "HorizontalWave"}, 1, 1},
    {"NormalMapBuilder", make<NormalMapBuilder, Target>, {""}, 1},
    {"ShallowWaterIterative",
     make<ShallowWaterIterative, Target>,
     {"Drop", "DropLine", "HorizontalWave", "Update"},
     2,
     2},
    {"ShallowWater", make<ShallowWater, Target>, {"Drop", "DropLine", "Update"}, 3, 1, "ShallowWater", false},
    {"ShallowWaterRenderer", make<ShallowWaterRenderer>, {""}},
};

const std::set<GLint> allFormats = {GL_R16F, GL_RG16F, GL_RGB16F, GL_RGBA16F};
const auto isLit = Contains(Gt(0.0F));

class LifeCycleTest : public GLTest, public testing::WithParamInterface<EffectCase> {
  protected:
    const EffectCase& effectCase = GetParam();
    const int programs = static_cast<int>(effectCase.programNames.size());

    void TearDown() override {
        EXPECT_EQ(liveObjects(), 0) << "GL objects leaked";
        GLTest::TearDown();
    }

    static void prepare(AnyEffect& effect) {
        effect.init();
        effect.setScreenSize(width, height);
    }

    std::unique_ptr<AnyEffect> ready() const {
        auto effect = effectCase.make();
        prepare(*effect);
        return effect;
    }

    /// Draws without an error in the log.
    void draw(AnyEffect& effect) {
        effect.draw();
        EXPECT_THAT(log.take(), Each(Field(&LogLine::priority, ANDROID_LOG_VERBOSE)));
    }

    /// Without a target, effects that have some draw nothing. All others are not asked to be silent: drawing without
    /// programs is left to the driver.
    void expectSilence(AnyEffect& effect) {
        if (effectCase.targets == 0) return;
        EXPECT_THAT(glRecorder().record([&] { draw(effect); }), IsEmpty());
        EXPECT_EQ(effect.texture(), 0);
    }

    /// Draws on a black framebuffer 0 and reads what came out, there or in the effect's texture: the effect's own
    /// channels.
    std::vector<float> picture(AnyEffect& effect) {
        glBindFramebuffer(GL_FRAMEBUFFER, 0);
        glClearColor(0, 0, 0, 0);
        glClear(GL_COLOR_BUFFER_BIT);
        draw(effect);
        const auto pixels = effect.texture() ? tidalume::headless::readTexture(effect.texture(), width, height)
                                             : tidalume::headless::readFramebuffer(width, height);
        std::vector<float> drawn;
        for (int i = 0; i < width * height; ++i)
            drawn.insert(drawn.end(), &pixels.rgba[4 * i], &pixels.rgba[4 * i] + effectCase.channels);
        return drawn;
    }

    /// Names of the textures and of the framebuffers that live.
    static std::vector<std::set<GLuint>> targets() {
        return {glRecorder().live["texture"], glRecorder().live["framebuffer"]};
    }
};

TEST_P(LifeCycleTest, ProgramsAreBuiltOnceAndDeletedWithTheLastObject) {
    GlobalProperty::DEBUG_LOG = true;
    const auto isBuildTime = AllOf(Field(&LogLine::tag, effectCase.programClass), ResultOf(isInCatalogue, true));
    const int perObject = effectCase.sharesPrograms ? 0 : programs;
    const int& built = glRecorder().counts["glCreateProgram"];
    auto first = effectCase.make();
    EXPECT_EQ(built, 0) << "a constructor needs no context";
    first->init();
    EXPECT_EQ(built, programs);
    EXPECT_THAT(log.take(), ElementsAre(isBuildTime));

    auto second = ready();
    EXPECT_EQ(built, programs + perObject);
    EXPECT_THAT(log.take(), SizeIs(perObject == 0 ? 0 : 1));
    first.reset();
    EXPECT_THAT(glRecorder().live["program"], SizeIs(programs));
    EXPECT_THAT(picture(*second), isLit) << "the remaining object still draws";
    second.reset();
    EXPECT_THAT(glRecorder().live["program"], IsEmpty());

    effectCase.make()->init();
    EXPECT_EQ(built, 2 * programs + perObject) << "the next object builds anew";
    log.take();
}

TEST_P(LifeCycleTest, TargetsFollowTheScreenSize) {
    auto effect = ready();
    const auto before = targets();
    EXPECT_THAT(before, Each(SizeIs(effectCase.targets)));
    effect->setScreenSize(width, height);
    EXPECT_EQ(targets(), before) << "the same size keeps the names";
    effect->setScreenSize(height, width);
    EXPECT_THAT(targets(), Each(SizeIs(effectCase.targets))) << "old targets are deleted";
    EXPECT_EQ(glRecorder().counts["glGenTextures"], effectCase.targets ? 2 : 0) << "a new size makes new ones";
    draw(*effect);
    for (const auto& [w, h] : {std::pair{0, height}, {INT_MAX, INT_MAX}, {width, INT_MIN}, {width, 1 << 20}}) {
        effect->setScreenSize(w, h);
        EXPECT_THAT(targets(), Each(IsEmpty())) << "impossible: " << w << " x " << h;
        expectSilence(*effect);
        effect->setScreenSize(width, height);
        EXPECT_THAT(picture(*effect), isLit) << "the next possible size draws again";
    }
}

TEST_P(LifeCycleTest, TwoObjectsSurviveLossesOfTheContextWithoutACallToIt) {
    std::unique_ptr<AnyEffect> effects[] = {ready(), ready()};
    const std::vector<float> expected = picture(*ready());
    EXPECT_THAT(expected, isLit);
    for (const auto& drawing : effects) {
        draw(*drawing);
        for (auto& effect : effects)
            EXPECT_THAT(glRecorder().record([&] { effect->GLContextDestroyed(); }), IsEmpty());
        expectSilence(*drawing);
        context.recreate();
        glRecorder().live.clear();
        for (auto& effect : effects)
            prepare(*effect);
        EXPECT_EQ(picture(*drawing), expected);
    }
    for (auto& effect : effects)
        effect->GLContextDestroyed();
    for (auto& effect : effects)
        EXPECT_THAT(glRecorder().record([&] { effect.reset(); }), IsEmpty()) << "nothing of a lost context is deleted";
    context.recreate();
    glRecorder().live.clear();
}

TEST_P(LifeCycleTest, CacheFilesHaveTheGivenNames) {
    char folder[] = "/tmp/tidalume-XXXXXX";
    std::snprintf(GlobalProperty::ROOT_DIR, sizeof(GlobalProperty::ROOT_DIR), "%s/", mkdtemp(folder));
    ready();
    EXPECT_TRUE(std::filesystem::is_empty(folder)) << "the cache is off";
    GlobalProperty::BINARY_SHADER = true;
    ready();
    glRecorder().faults.acceptsProgramBinaries = true;
    glRecorder().counts.clear();
    EXPECT_THAT(picture(*ready()), isLit);
    EXPECT_EQ(glRecorder().counts["glCompileShader"], 0) << "an accepted binary needs no compiler";
    for (const std::string& program : effectCase.programNames) {
        const std::string file = GlobalProperty::ROOT_DIR + effectCase.programClass + "Program" + program + ".dat";
        EXPECT_TRUE(std::filesystem::remove(file)) << file;
    }
    EXPECT_TRUE(std::filesystem::remove(folder)) << "no further file";
}

TEST_P(LifeCycleTest, ShadersPassTheReferenceCompiler) {
    effectCase.make()->init();
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
    enum Meets { programs, targets };
    const struct {
        const char* name;
        Meets meets;
        const char* says; ///< in the log of an effect that meets it; empty: nothing need be said
        void (*refuse)(Faults&);
    } refusals[] = {
        {"compile", programs, "Could not compile shader 35633:\n", [](Faults& f) { f.compileFails = true; }},
        {"link", programs, "Could not link program:\n", [](Faults& f) { f.linkFails = true; }},
        {"link, no log", programs, "", [](Faults& f) { f.linkFails = f.infoLogIsEmpty = true; }},
        {"shader", programs, "", [](Faults& f) { f.givesZero = {"glCreateShader"}; }},
        {"program", programs, "", [](Faults& f) { f.givesZero = {"glCreateProgram"}; }},
        {"texture", targets, "", [](Faults& f) { f.givesZero = {"glGenTextures"}; }},
        {"target", targets, "(0x502) GL_INVALID_OPERATION", [](Faults& f) { f.givesZero = {"glGenFramebuffers"}; }},
        {"formats", targets, "(0x506)", [](Faults& f) { f.notRenderable = allFormats; }},
        {"pending", targets, "(0x505) GL_OUT_OF_MEMORY",
         [](Faults& f) {
             f.pendingErrors = {0x505, 0x500, 0x506};
         }},
    };
    for (const auto& [name, meets, says, refuse] : refusals) {
        SCOPED_TRACE(name);
        auto effect = effectCase.make();
        refuse(glRecorder().faults);
        prepare(*effect);
        effect->draw();
        checkGLError("next"); // errors that the effect's own checks have left to the next one
        const std::vector<LogLine> lines = log.take();
        glRecorder().faults = {};
        EXPECT_THAT(lines, Each(ResultOf(isInCatalogue, true)));
        if (*says && (meets == programs || effectCase.targets > 0)) {
            EXPECT_THAT(lines, Contains(Field(&LogLine::message, HasSubstr(says))));
        }
        // A target that no format completes stays so until the next size.
        if (name == std::string("formats")) effect->setScreenSize(height, width);
        prepare(*effect);
        EXPECT_THAT(picture(*effect), isLit);
    }
}

/// Where points are single pixels, what is drawn with them shrinks, and all else stays.
TEST_P(LifeCycleTest, SurvivesADriverOfSmallPoints) {
    const std::vector<float> expected = picture(*ready());
    const auto drawPoints = Contains(Pair(_, HasSubstr("gl_PointSize")));
    const bool drawsPoints = Value(glRecorder().shaderTexts, drawPoints);
    glRecorder().faults.pointsAreSinglePixels = true;
    EXPECT_EQ(picture(*ready()) != expected, drawsPoints);
}

/// Where the driver cannot render to a format, the next wider one takes its place and the picture stays.
TEST_P(LifeCycleTest, WiderFormatsGiveTheSamePicture) {
    const std::vector<float> expected = picture(*ready());
    glRecorder().faults.notRenderable = {GL_R16F, GL_RG16F, GL_RGB16F};
    EXPECT_EQ(picture(*ready()), expected);
}

INSTANTIATE_TEST_SUITE_P(Effects, LifeCycleTest, ValuesIn(effectCases),
                         [](const auto& info) { return info.param.name; });

} // namespace
