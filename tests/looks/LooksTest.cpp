#include "testing/Looks.h"

#include "foundation/ColorTarget.h"
#include "headless/Pixels.h"
#include "looks/Color.h"
#include "tests/support/GLTest.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <limits>
#include <map>
#include <numeric>
#include <set>

namespace {

using namespace testing;
using tidalume::Look;
using tidalume::LookCase;
using tidalume::TouchPhase;

using Pixels = std::vector<float>;

constexpr float level = 1.0F / 255; // of an 8-bit channel
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

float largestDifference(const Pixels& a, const Pixels& b) {
    float largest = 0;
    for (std::size_t i = 0; i < a.size(); ++i)
        largest = std::max(largest, std::fabs(a[i] - b[i]));
    return largest;
}

double difference(const Pixels& a, const Pixels& b) {
    return std::inner_product(a.begin(), a.end(), b.begin(), 0.0, std::plus<>(),
                              [](float x, float y) { return std::fabs(x - y); });
}

class LooksTest : public GLTest, public WithParamInterface<LookCase> {
  protected:
    LooksTest() { context.resize(surfaceWidth, surfaceHeight); }

    static constexpr int surfaceWidth = 112;
    static constexpr int surfaceHeight = 128;

    /// In this context, without a touch, and with the same chance each time.
    static std::unique_ptr<Look> ready(const char* preset = nullptr) {
        srand48(1);
        std::unique_ptr<Look> look = GetParam().make();
        look->contextCreated();
        look->setSize(surfaceWidth, surfaceHeight);
        if (preset) look->usePreset(preset);
        return look;
    }

    /// What a look draws at a time onto a colour.
    static Pixels picture(Look& look, double seconds, float grey = 0, float alpha = 0) {
        glBindFramebuffer(GL_FRAMEBUFFER, 0);
        glClearColor(grey, grey, grey, alpha);
        glClear(GL_COLOR_BUFFER_BIT);
        look.draw(seconds);
        return tidalume::headless::readFramebuffer(surfaceWidth, surfaceHeight).rgba;
    }

    /// How much is to be seen: what covers the surface, or on a look that covers all of it the difference of rows.
    static double amount(const Pixels& pixels) {
        if (!GetParam().isOpaque) return std::accumulate(pixels.begin(), pixels.end(), 0.0);
        const auto row = std::ptrdiff_t{4} * surfaceWidth;
        return difference({pixels.begin(), pixels.end() - row}, {pixels.begin() + row, pixels.end()});
    }

    /// A finger zigzags over the surface between frames 6 and 48 of 60 a second, and lifts.
    static void touchAt(Look& look, int frame) {
        const auto along = static_cast<float>(frame);
        if (frame == 6) look.touch(0, 20, 30, TouchPhase::Down);
        if (frame > 6 && frame < 48)
            look.touch(0, 20 + std::fmod(23 * along, 70.0F), 20 + 1.8F * along, TouchPhase::Move);
        if (frame == 48) look.touch(0, 50, 90, TouchPhase::Up);
    }

    /// The picture after some seconds at a display's rate, every other frame of which comes 2 ms early, of a look that
    /// was stroked on the way.
    /// @param repeats  each move with every frame, as Android reports all fingers when one of them moves
    static Pixels pictureAfter(Look& look, double seconds, int rate, bool repeats = false) {
        int touched = 0;
        for (int frame = 0; frame < static_cast<int>(seconds * rate); ++frame) {
            for (; touched * rate <= frame * 60; touched += 6)
                touchAt(look, touched);
            if (repeats && touched > 12 && touched <= 30) touchAt(look, touched - 6);
            look.draw(static_cast<double>(frame) / rate - 0.002 * (frame % 2));
        }
        return picture(look, seconds);
    }
};

TEST_P(LooksTest, MovesAlikeAtEveryRateOfADisplay) {
    const Pixels at60 = pictureAfter(*ready(), 2, 60);
    EXPECT_TRUE(same(pictureAfter(*ready(), 2, 90), at60));
    EXPECT_TRUE(same(pictureAfter(*ready(), 2, 120, true), at60)) << "a finger that rests changes nothing";
}

TEST_P(LooksTest, SkipsAPauseAndDrawsTheSameTwice) {
    const auto pictures = [](std::initializer_list<double> times) {
        const auto look = ready();
        pictureAfter(*look, 1, 60);
        std::vector<Pixels> drawn;
        for (const double seconds : times)
            drawn.push_back(picture(*look, seconds));
        return drawn;
    };
    constexpr double frame = 1.0 / 60;
    const auto steady = pictures({1 + frame, 1 + frame, 1 + 2 * frame, 1 + 3 * frame, 1 + 4 * frame});
    EXPECT_EQ(pictures({1 + 5.2 * frame, 1 + 5.2 * frame + 0.001, 3601, 5, notANumber}), steady)
        << "five steps are one, so are an hour, a clock that goes back and one that is broken; before a step is due, "
           "nothing moves";
}

// Of a preset that is still before a touch. All steps are run, though few are drawn.
TEST_P(LooksTest, ComesToRest) {
    constexpr int rate = 15;
    bool rests = false;
    for (const tidalume::Preset& preset : GetParam().make()->presets()) {
        const auto look = ready(preset.name);
        const Pixels undisturbed = picture(*look, 0);
        if (look->isMoving()) continue;
        rests = true;
        pictureAfter(*look, 1, rate);
        int frame = rate;
        for (; frame < 31 * rate && look->isMoving(); ++frame)
            look->draw(1.0 * frame / rate);
        EXPECT_FALSE(look->isMoving()) << preset.name << " after " << frame / rate << " s";
        const Pixels before = picture(*look, 1.0 * frame / rate);
        EXPECT_LE(largestDifference(undisturbed, before), 2.5F * level) << preset.name;
        for (const int end = frame + 10 * rate; frame < end; ++frame)
            look->draw(1.0 * frame / rate);
        EXPECT_LE(largestDifference(picture(*look, 1.0 * frame / rate), before), level) << preset.name;
        look->touch(0, 30, 30, TouchPhase::Down);
        EXPECT_TRUE(look->isMoving()) << preset.name;
    }
    EXPECT_EQ(rests, GetParam().rests);
}

TEST_P(LooksTest, LeavesTheStateThatItSays) {
    const auto look = ready();
    tidalume::ColorTarget target;
    target.resize(surfaceWidth, surfaceHeight, Pixels(std::size_t{surfaceWidth} * surfaceHeight).data());
    GLuint array = 0, buffer = 0, sampler = 0;
    glGenVertexArrays(1, &array);
    glGenBuffers(1, &buffer);
    glGenSamplers(1, &sampler);

    // All that a host may have left.
    glBindVertexArray(array);
    for (const GLenum kind : {GL_ARRAY_BUFFER, GL_PIXEL_UNPACK_BUFFER})
        glBindBuffer(kind, buffer);
    for (const GLenum capability :
         {GL_SCISSOR_TEST, GL_STENCIL_TEST, GL_DEPTH_TEST, GL_BLEND, GL_CULL_FACE, GL_RASTERIZER_DISCARD})
        glEnable(capability);
    glCullFace(GL_FRONT_AND_BACK);
    glScissor(0, 0, 1, 1);
    glColorMask(GL_FALSE, GL_TRUE, GL_FALSE, GL_FALSE);
    glBindSampler(0, sampler); // which would take mipmap levels that are not there
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 200);
    glActiveTexture(GL_TEXTURE5);
    look->touch(0, 30, 60, TouchPhase::Down);
    for (int frame = 0; frame < 30; ++frame)
        look->draw(frame / 60.0, target.framebuffer());

    std::map<GLenum, std::vector<GLint>> left = {{GL_FRAMEBUFFER_BINDING, {static_cast<GLint>(target.framebuffer())}},
                                                 {GL_VIEWPORT, {0, 0, surfaceWidth, surfaceHeight}},
                                                 {GL_COLOR_WRITEMASK, {GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE}},
                                                 {GL_COLOR_CLEAR_VALUE, {0, 0, 0, 0}},
                                                 {GL_ACTIVE_TEXTURE, {GL_TEXTURE0}},
                                                 {GL_BLEND_EQUATION_RGB, {GL_FUNC_ADD}}};
    for (const GLenum zero :
         {GL_VERTEX_ARRAY_BINDING, GL_ARRAY_BUFFER_BINDING, GL_ELEMENT_ARRAY_BUFFER_BINDING, GL_CURRENT_PROGRAM,
          GL_SCISSOR_TEST, GL_STENCIL_TEST, GL_DEPTH_TEST, GL_BLEND, GL_CULL_FACE})
        left[zero] = {0};
    for (const auto& [name, expected] : left) {
        std::vector<GLint> values(expected.size(), -1);
        glGetIntegerv(name, values.data());
        EXPECT_EQ(values, expected) << std::hex << name;
    }
    for (const GLuint i : {2U, 1U, 0U}) {
        GLint texture = -1, isEnabled = -1;
        glActiveTexture(GL_TEXTURE0 + i);
        glGetIntegerv(GL_TEXTURE_BINDING_2D, &texture);
        glGetVertexAttribiv(i, GL_VERTEX_ATTRIB_ARRAY_ENABLED, &isEnabled);
        EXPECT_THAT(std::pair(texture, isEnabled), Pair(0, 0)) << "of unit and array " << i;
    }
    EXPECT_THAT(tidalume::headless::readTexture(target.texture(), surfaceWidth, surfaceHeight).rgba, Contains(Gt(0.1F)))
        << "whatever the host has left, it draws";
    target.abandon();
    look->contextLost();
    context.recreate(); // which takes what the host has made
}

TEST_P(LooksTest, ComposesOverAnyContent) {
    const auto look = ready();
    pictureAfter(*look, 0.7, 60);
    const Pixels onNothing = picture(*look, 0.7);
    const Pixels onBlack = picture(*look, 0.7, 0, 1);
    const Pixels onWhite = picture(*look, 0.7, 1, 1);
    float drawn = 0;
    for (std::size_t i = 0; i < onNothing.size(); ++i) {
        const float alpha = onNothing[i | 3];
        drawn = std::max(drawn, alpha);
        ASSERT_TRUE(alpha == 1 || !GetParam().isOpaque);
        if ((i & 3) == 3) continue;
        ASSERT_LE(onNothing[i], alpha + 2 * level) << "premultiplied";
        ASSERT_NEAR(onBlack[i], onNothing[i], 3 * level);
        ASSERT_NEAR(onWhite[i], onNothing[i] + 1 - alpha, 4 * level);
    }
    EXPECT_GT(drawn, 0.3F);
}

/// Each does what its description says: there is more of the look or less, more of it moves, or it is another.
TEST_P(LooksTest, ParametersShowInTheirRange) {
    using Names = std::set<std::string>;
    const Names less = GetParam().isOpaque ? Names{"length", "touchRadius"} : Names{}; // wider waves are less steep
    const Names moves = {"speed"};
    const Names another = {"simulation", "fieldScale", "bends", "sway", "palette", "hue", "headHue", "tailHue"};
    const auto look = ready();
    const auto& rows = look->parameters();
    for (int i = 0; i < static_cast<int>(rows.size); ++i) {
        const tidalume::Parameter& row = rows[static_cast<std::size_t>(i)];
        EXPECT_EQ(look->get(i), row.initial);
        EXPECT_TRUE(row.minimum <= row.initial && row.initial <= row.maximum) << row.name;
        for (const float value : {row.minimum - 0.01F, row.maximum + 0.01F, notANumber}) {
            EXPECT_FALSE(look->set(row.name, value)) << row.name;
            EXPECT_THAT(log.take(), ElementsAre(StartsWith(std::string("6 Look: ") + row.name + ": ")));
            EXPECT_EQ(look->get(i), row.initial) << row.name;
        }
        EXPECT_TRUE(look->set(row.name, row.maximum)) << row.name;
        EXPECT_EQ(look->get(i), row.maximum);
        std::vector<Pixels> pictures;
        std::vector<double> measures;
        // A hue is the same at both ends. A pond's fading is seen in a pond.
        for (const float value :
             {row.minimum, row.choices.size ? row.maximum : 0.05F * row.minimum + 0.95F * row.maximum}) {
            const auto changed = ready();
            if (std::string(row.name) == "fade") changed->set("simulation", tidalume::WaterLook::POND);
            EXPECT_TRUE(changed->set(i, value));
            pictures.push_back(pictureAfter(*changed, 0.8, 60));
            measures.push_back(moves.count(row.name) ? difference(pictures.back(), picture(*changed, 0.85))
                                                     : amount(pictures.back()));
        }
        EXPECT_FALSE(same(pictures[0], pictures[1])) << row.name;
        if (less.count(row.name)) std::swap(measures[0], measures[1]);
        if (another.count(row.name) == 0) {
            EXPECT_GT(measures[1], measures[0]) << row.name;
        }
    }
    EXPECT_FALSE(look->set("noSuchParameter", 0) || look->set(-1, 0) || look->set(100, 0) || look->usePreset("none"));
    EXPECT_THAT(log.take(), SizeIs(2));
    EXPECT_TRUE(look->usePreset(look->presets()[0].name));
    for (int i = 0; i < static_cast<int>(rows.size); ++i)
        EXPECT_EQ(look->get(i), rows[static_cast<std::size_t>(i)].initial) << "as a new look has it";
}

TEST_P(LooksTest, SurvivesTheLossOfTheContextTheSmallestSizeAndAnyTouch) {
    const auto look = ready();
    const auto other = ready();
    for (int time = 0; time < 2; ++time) {
        pictureAfter(*look, 0.5, 60);
        context.recreate();
        GLuint anothers[20]; // under names that the look had
        glGenFramebuffers(std::size(anothers), anothers);
        for (const GLuint name : anothers)
            glBindFramebuffer(GL_FRAMEBUFFER, name);
        EXPECT_CALLS((look->contextLost(), other->contextLost()), "");
        other->contextCreated();
        look->contextCreated();
        const Pixels anew = pictureAfter(*look, 0.5, 60);
        EXPECT_THAT(anew, Contains(Gt(0.1F)));
        for (const GLuint name : anothers) {
            glBindFramebuffer(GL_FRAMEBUFFER, name);
            EXPECT_EQ(glCheckFramebufferStatus(GL_FRAMEBUFFER), GLenum{GL_FRAMEBUFFER_INCOMPLETE_MISSING_ATTACHMENT});
        }
        glBindFramebuffer(GL_FRAMEBUFFER, 0);
        glDeleteFramebuffers(std::size(anothers), anothers);
    }
    other->setSize(1, 1);
    other->touch(9, -500, 1e6F, TouchPhase::Down);
    pictureAfter(*other, 0.2, 60);
    other->setSize(surfaceWidth, surfaceHeight);
    EXPECT_THAT(pictureAfter(*other, 0.5, 60), Contains(Gt(0.1F)));
}

/// As if they had been lifted before: by the system, with the surface, with the context.
TEST_P(LooksTest, FingersThatAreTakenAwayAreUp) {
    enum Way { cancel, size, loss };
    const auto pictureWithout = [&](Way way, bool isLifted) {
        const auto look = ready();
        pictureAfter(*look, 0.5, 60);
        if (isLifted) look->touch(0, 40, 60, TouchPhase::Up);
        if (way == cancel) look->touch(0, 0, 0, TouchPhase::Cancel);
        if (way == size) look->setSize(0, 0);
        if (way == loss) look->contextLost();
        if (way == loss) context.recreate();
        look->contextCreated();
        look->setSize(surfaceWidth, surfaceHeight);
        look->touch(0, 80, 100, TouchPhase::Move);
        for (int frame = 31; frame < 60; ++frame)
            look->draw(frame / 60.0);
        return picture(*look, 1);
    };
    for (const Way way : {cancel, size, loss})
        EXPECT_TRUE(same(pictureWithout(way, false), pictureWithout(way, true))) << "way " << way;
}

/// In shorter sides a second: after one second the next waves, or drops, stand where the last ones were.
TEST_P(LooksTest, RepeatsItselfAsItsSpeedSays) {
    std::map<std::string, std::map<const char*, float>> spacedAsTheyMove = {
        {"WavesLook", {{"speed", 0.3F}, {"length", 0.3F}, {"sway", 0}}},
        {"BlobsLook", {{"speed", 0.456F}, {"pools", 0}}}};
    const auto& settings = spacedAsTheyMove[GetParam().name];
    if (settings.empty()) return;
    const auto look = ready();
    for (const auto& [name, value] : settings)
        look->set(name, value);
    std::vector<Pixels> pictures;
    for (int frame = 0; frame <= 60; ++frame)
        pictures.push_back(picture(*look, frame / 60.0));
    EXPECT_TRUE(look->isMoving());
    EXPECT_LE(largestDifference(pictures[60], pictures[0]), 4 * level);
    EXPECT_GT(largestDifference(pictures[50], pictures[0]), 16 * level);
}

TEST_F(GLTest, RingsHaveTheSpeedThatIsSet) {
    constexpr int side = 320;
    context.resize(side, side);
    for (const int simulation : {tidalume::WaterLook::BROOK, tidalume::WaterLook::POND}) {
        tidalume::WaterLook look;
        look.contextCreated();
        look.setSize(side, side);
        look.set(tidalume::WaterLook::SIMULATION, static_cast<float>(simulation));
        look.draw(0);
        const Pixels still = tidalume::headless::readFramebuffer(side, side).rgba;
        look.touch(0, 1, 1, TouchPhase::Down);
        look.touch(0, 1, 1, TouchPhase::Up);
        for (int frame = 1; frame <= 30; ++frame)
            look.draw(frame / 60.0);
        const Pixels rings = tidalume::headless::readFramebuffer(side, side).rgba;
        const float visible = largestDifference(rings, still) / 5;
        double farthest = 0;
        for (int i = 0; i < side * side; ++i)
            if (std::fabs(rings[4 * i] - still[4 * i]) > visible)
                farthest = std::max(farthest, std::hypot(i % side, side - 1 - i / side) / side);
        EXPECT_NEAR(farthest, 0.03F + 0.63F * 0.5F, 0.05) << "half a second and a finger's radius, " << simulation;
    }
}

TEST_F(GLTest, RainFallsAsOftenAsItIsSet) {
    const auto drops = [](float rain) {
        tidalume::WaterLook look;
        look.contextCreated();
        look.setSize(width, height);
        look.setRain(rain);
        const std::string calls = glRecorder().record([&] {
            for (int frame = 0; frame < 300; ++frame)
                look.draw(frame / 60.0);
        });
        const std::regex drop("\nradius = 3\n"); // of a touch, in texels
        return std::distance(std::sregex_iterator(calls.begin(), calls.end(), drop), {});
    };
    EXPECT_NEAR(drops(20), 100, 15) << "in five seconds";
}

TEST_F(GLTest, WaterHasAtMost2048TexelsAlongTheLongerSide) {
    tidalume::WaterLook look;
    look.contextCreated();
    look.setSize(40, 4000);
    look.setFieldScale(1);
    EXPECT_CALLS(look.draw(0), R"(glTexImage2D RGB16F 20 2048 RGB HALF_FLOAT
        glTexImage2D RG16F 20 2048 RG HALF_FLOAT; glTexImage2D RG16F 20 2048 RG HALF_FLOAT)",
                 "glTexImage2D RG");
}

TEST_P(LooksTest, DrawsNothingWithoutContextOrSize) {
    const auto look = GetParam().make();
    const auto touchAndDraw = [&] {
        look->touch(0, 30, 30, TouchPhase::Down);
        look->draw(1);
    };
    EXPECT_CALLS(touchAndDraw(), "");
    look->contextCreated();
    for (const int size : {0, -1}) {
        look->setSize(size, surfaceHeight);
        EXPECT_CALLS(touchAndDraw(), "");
    }
    look->setSize(100000, 1);
    look->draw(1);
    EXPECT_THAT(log.take(), ElementsAre(StartsWith("6 Look: 100000 x 1 is beyond")));
    look->contextLost();
    context.recreate();
    look->setSize(surfaceWidth, surfaceHeight);
    EXPECT_CALLS(look->draw(2), "");
    look->contextCreated();
    for (const int finger : {-1, Look::FINGERS})
        look->touch(finger, 30, 30, TouchPhase::Down);
    look->touch(1, notANumber, 30, TouchPhase::Down);
    look->touch(2, 30, 30, TouchPhase::Move);
    srand48(1);
    look->setSeed(1);
    const Pixels touched = pictureAfter(*look, 0.2, 60);
    EXPECT_TRUE(same(touched, pictureAfter(*ready(), 0.2, 60))) << "these touches are ignored";
}

TEST_F(GLTest, ColorTargetsDoNotWrapAround) {
    tidalume::ColorTarget target;
    EXPECT_CALLS(target.resize(2, 2, std::vector<char>(16).data()), R"(glTexParameteri TEXTURE_WRAP_S CLAMP_TO_EDGE
        glTexParameteri TEXTURE_WRAP_T CLAMP_TO_EDGE)",
                 "glTexParameteri TEXTURE_WRAP");
}

TEST_F(GLTest, LooksKeepEachProgramInAFileOfItsOwn) {
    const WorkingFolder folder;
    GlobalProperty::BINARY_SHADER = true;
    std::vector<std::unique_ptr<Look>> looks;
    for (const LookCase& look : tidalume::lookCases) {
        looks.push_back(look.make());
        looks.back()->contextCreated();
    }
    const auto files = std::distance(std::filesystem::directory_iterator("."), {});
    EXPECT_EQ(files, static_cast<std::ptrdiff_t>(liveNames(glIsProgram).size()));
}

/// The largest points of llvmpipe have 255 pixels, and the largest ball, of 254 texels, takes a sprite of 616 at
/// quality 1: after four steps of a quarter the field has 1140 / 2.44 texels a side.
TEST_F(GLTest, BlobsOfADriverWithSmallPointsHaveACoarserField) {
    tidalume::BlobsLook look;
    look.contextCreated();
    look.setSize(900, 900);
    look.setFieldScale(1);
    EXPECT_CALLS(look.draw(0), "glTexImage2D R16F 467 467 RED HALF_FLOAT", "glTexImage2D R16F");
}

TEST(Color, HuesGoFromRedToGreenToBlue) {
    for (const int third : {0, 1, 2}) {
        for (const auto& [red, green, blue, alpha] :
             {tidalume::fromHue(120.0F * third, 1), tidalume::rotateHue({1, 0, 0, 1}, 120.0F * third)}) {
            const float channels[] = {red, green, blue, alpha};
            for (const int channel : {0, 1, 2})
                EXPECT_NEAR(channels[channel], channel == third, 1e-6) << third;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Looks, LooksTest, ValuesIn(tidalume::lookCases),
                         [](const auto& info) { return std::string(info.param.name); });

} // namespace
