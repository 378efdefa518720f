#include "testing/Looks.h"

#include "headless/Pixels.h"
#include "tests/support/GLTest.h"
#include "tests/support/LiveNames.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
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

    /// A finger strokes the surface between frames 6 and 30 of 60 a second, and lifts.
    static void touchAt(Look& look, int frame) {
        const auto along = static_cast<float>(frame);
        if (frame == 6) look.touch(0, 20, 30, TouchPhase::Down);
        if (frame > 6 && frame < 30) look.touch(0, 20 + along, 30 + 2 * along, TouchPhase::Move);
        if (frame == 30) look.touch(0, 50, 90, TouchPhase::Up);
    }

    /// The picture after some seconds at a display's rate, of a look that was stroked on the way.
    static Pixels pictureAfter(Look& look, double seconds, int rate) {
        int touched = 0;
        for (int frame = 0; frame < static_cast<int>(seconds * rate); ++frame) {
            for (; touched * rate <= frame * 60; touched += 6)
                touchAt(look, touched);
            look.draw(static_cast<double>(frame) / rate);
        }
        return picture(look, seconds);
    }
};

TEST_P(LooksTest, MovesAlikeAtEveryRateOfADisplay) {
    const Pixels at60 = pictureAfter(*ready(), 3, 60);
    EXPECT_EQ(pictureAfter(*ready(), 3, 90), at60);
    EXPECT_EQ(pictureAfter(*ready(), 3, 120), at60);
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
    const auto steady = pictures({1 + frame, 1 + frame, 1 + 2 * frame, 1 + 3 * frame});
    EXPECT_EQ(pictures({3601, 3601.001, 5, notANumber}), steady)
        << "an hour is one step, so are a clock that goes back and one that is broken; before a step is due, nothing "
           "moves";
}

// Of a preset that is still from the beginning, or after a touch.
TEST_P(LooksTest, ComesToRest) {
    int resting = 0;
    for (const tidalume::Preset& preset : GetParam().make()->presets()) {
        const auto look = ready(preset.name);
        int frame = 0;
        for (; frame < 31 * 60 && (frame <= 30 || look->isMoving()); ++frame) {
            touchAt(*look, frame);
            look->draw(frame / 60.0);
        }
        if (look->isMoving()) continue;
        ++resting;
        const Pixels before = picture(*look, frame / 60.0);
        EXPECT_LE(largestDifference(picture(*ready(preset.name), 0), before), 2.5F * level)
            << preset.name << " is undisturbed";
        for (int later = 1; later < 600; ++later)
            look->draw((frame + later) / 60.0);
        EXPECT_LE(largestDifference(picture(*look, frame / 60.0 + 10), before), level) << preset.name;
        look->touch(0, 30, 30, TouchPhase::Down);
        EXPECT_TRUE(look->isMoving()) << preset.name;
    }
    EXPECT_EQ(resting > 0, GetParam().rests);
}

TEST_P(LooksTest, LeavesTheStateThatItSays) {
    const auto look = ready();
    const GLuint texture = tidalume::headless::makeTexture(GL_RGBA8, surfaceWidth, surfaceHeight,
                                                           Pixels(std::size_t{4} * surfaceWidth * surfaceHeight));
    GLuint framebuffer = 0;
    GLuint array = 0;
    GLuint buffer = 0;
    glGenFramebuffers(1, &framebuffer);
    glGenVertexArrays(1, &array);
    glGenBuffers(1, &buffer);
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, texture, 0);

    // All that a host may have left.
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
    glBindVertexArray(array);
    glBindBuffer(GL_ARRAY_BUFFER, buffer);
    for (const GLenum capability : {GL_SCISSOR_TEST, GL_STENCIL_TEST, GL_DEPTH_TEST, GL_BLEND, GL_CULL_FACE})
        glEnable(capability);
    glCullFace(GL_FRONT_AND_BACK);
    glScissor(0, 0, 1, 1);
    glColorMask(GL_FALSE, GL_TRUE, GL_FALSE, GL_FALSE);
    glActiveTexture(GL_TEXTURE5);
    look->touch(0, 30, 60, TouchPhase::Down);
    for (int frame = 0; frame < 30; ++frame)
        look->draw(frame / 60.0, framebuffer);

    const auto integer = [](GLenum name) {
        GLint value = -1;
        glGetIntegerv(name, &value);
        return value;
    };
    EXPECT_EQ(integer(GL_FRAMEBUFFER_BINDING), static_cast<GLint>(framebuffer));
    for (const GLenum zero :
         {GL_VERTEX_ARRAY_BINDING, GL_ARRAY_BUFFER_BINDING, GL_ELEMENT_ARRAY_BUFFER_BINDING, GL_CURRENT_PROGRAM,
          GL_SCISSOR_TEST, GL_STENCIL_TEST, GL_DEPTH_TEST, GL_BLEND, GL_CULL_FACE})
        EXPECT_EQ(integer(zero), 0) << std::hex << zero;
    EXPECT_EQ(integer(GL_ACTIVE_TEXTURE), GL_TEXTURE0);
    EXPECT_EQ(integer(GL_BLEND_EQUATION_RGB), GL_FUNC_ADD);
    for (const GLenum unit : {GL_TEXTURE2, GL_TEXTURE1, GL_TEXTURE0}) {
        glActiveTexture(unit);
        EXPECT_EQ(integer(GL_TEXTURE_BINDING_2D), 0);
    }
    for (const GLuint attribute : {0U, 1U}) {
        GLint isEnabled = -1;
        glGetVertexAttribiv(attribute, GL_VERTEX_ATTRIB_ARRAY_ENABLED, &isEnabled);
        EXPECT_EQ(isEnabled, 0);
    }
    GLint viewport[4] = {};
    glGetIntegerv(GL_VIEWPORT, viewport);
    EXPECT_THAT(viewport, ElementsAre(0, 0, surfaceWidth, surfaceHeight));
    GLboolean mask[4] = {};
    glGetBooleanv(GL_COLOR_WRITEMASK, mask);
    EXPECT_THAT(mask, Each(GL_TRUE));
    GLfloat clear[4] = {1, 1, 1, 1};
    glGetFloatv(GL_COLOR_CLEAR_VALUE, clear);
    EXPECT_THAT(clear, Each(0));
    EXPECT_THAT(tidalume::headless::readTexture(texture, surfaceWidth, surfaceHeight).rgba, Contains(Gt(0.1F)))
        << "whatever the host has left, it draws";
    glDeleteTextures(1, &texture);
    glDeleteFramebuffers(1, &framebuffer);
    glDeleteVertexArrays(1, &array);
    glDeleteBuffers(1, &buffer);
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

TEST_P(LooksTest, ParametersShowInTheirRange) {
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
        std::set<Pixels> pictures;
        // A hue is the same at both ends. A pond's fading is seen in a pond.
        for (const float value :
             {row.minimum, row.choices.size ? row.maximum : 0.05F * row.minimum + 0.95F * row.maximum}) {
            const auto changed = ready();
            if (std::string(row.name) == "fade") changed->set("simulation", tidalume::WaterLook::POND);
            EXPECT_TRUE(changed->set(i, value));
            pictures.insert(pictureAfter(*changed, 0.8, 60));
        }
        EXPECT_EQ(pictures.size(), 2U) << row.name;
    }
    EXPECT_FALSE(look->set("noSuchParameter", 0) || look->set(-1, 0) || look->set(100, 0));
    EXPECT_THAT(log.take(), SizeIs(1));
}

TEST_P(LooksTest, PresetsDiffer) {
    std::vector<Pixels> pictures;
    const auto presets = GetParam().make()->presets();
    for (const tidalume::Preset& preset : presets) {
        const auto look = ready("noSuchPreset");
        EXPECT_THAT(log.take(), SizeIs(1));
        look->set(0, look->parameters()[0].maximum); // which the preset takes back
        EXPECT_TRUE(look->usePreset(preset.name));
        pictures.push_back(pictureAfter(*look, 0.8, 60));
        EXPECT_EQ(std::count(pictures.begin(), pictures.end(), pictures.back()), 1) << preset.name;
    }
    EXPECT_EQ(pictureAfter(*ready(), 0.8, 60), pictures[0]) << "the first preset is what a new look shows";
}

TEST_P(LooksTest, SurvivesTheLossOfTheContext) {
    const auto look = ready();
    const auto other = ready();
    for (int time = 0; time < 2; ++time) {
        pictureAfter(*look, 0.5, 60);
        context.recreate();
        EXPECT_EQ(
            glRecorder().record([&] { look->contextLost(); }) + glRecorder().record([&] { other->contextLost(); }), "");
        other->contextCreated();
        look->contextCreated();
        const Pixels anew = pictureAfter(*look, 0.5, 60);
        EXPECT_THAT(anew, Contains(Gt(0.1F)));
    }
}

TEST_P(LooksTest, DrawsNothingWithoutContextOrSize) {
    const auto look = GetParam().make();
    const auto silence = [&] {
        return glRecorder().record([&] {
            look->touch(0, 30, 30, TouchPhase::Down);
            look->draw(1);
        });
    };
    EXPECT_EQ(silence(), "");
    look->contextCreated();
    for (const int size : {0, -1}) {
        look->setSize(size, surfaceHeight);
        EXPECT_EQ(silence(), "");
    }
    look->setSize(100000, 1);
    look->draw(1);
    EXPECT_THAT(log.take(), ElementsAre(StartsWith("6 Look: 100000 x 1 is beyond")));
    look->contextLost();
    look->setSize(surfaceWidth, surfaceHeight);
    EXPECT_EQ(glRecorder().record([&] { look->draw(2); }), "");
    look->contextCreated();
    for (const int finger : {-1, Look::FINGERS})
        look->touch(finger, 30, 30, TouchPhase::Down);
    look->touch(1, notANumber, 30, TouchPhase::Down);
    look->touch(2, 30, 30, TouchPhase::Move);
    srand48(1);
    look->setSeed(1);
    const Pixels touched = pictureAfter(*look, 0.2, 60);
    EXPECT_EQ(touched, pictureAfter(*ready(), 0.2, 60)) << "these touches are ignored";
}

TEST_P(LooksTest, LeavesNoObjectBehind) {
    pictureAfter(*ready(), 0.5, 60);
    EXPECT_EQ(liveObjects(), 0);
}

INSTANTIATE_TEST_SUITE_P(Looks, LooksTest, ValuesIn(tidalume::lookCases),
                         [](const auto& info) { return std::string(info.param.name); });

} // namespace
