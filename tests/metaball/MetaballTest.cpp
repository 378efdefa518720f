#include "effects/metaball/MetaballRenderer.h"
#include "headless/Pixels.h"
#include "reference/ParticleStep.h"
#include "testing/TestPeer.h"
#include "tests/support/GLTest.h"

#include <cmath>
#include <cstdlib>

namespace {

using namespace testing;

constexpr int press = 0, release = 1, stream = 7;

class MetaballTest : public GLTest {
  protected:
    MetaballTest() { renderer.init(1.0F); }

    std::vector<Particle>& particles() { return *TestPeer::mParticleManager(renderer).getParticleVector(); }

    void drag(float fromX, float fromY, float toX, float toY) {
        renderer.push(fromX, fromY, press);
        renderer.push((fromX + toX) / 2, (fromY + toY) / 2, stream);
        renderer.push(toX, toY, stream);
    }

    void update(int frames) {
        for (int i = 0; i < frames; ++i)
            renderer.update();
    }

    std::string render(float pressRadius) {
        return glRecorder().record([&] { renderer.render(pressRadius, 5.0F); });
    }

    Metaball2DRenderer metaballs;
    MetaballRenderer renderer;
};

TEST_F(MetaballTest, AnotherQualityReplacesTheFieldAtTheNextSize) {
    metaballs.init(1.0F);
    metaballs.setScreenSize(width, height);
    metaballs.init(2.0F);
    // 48.5 and 30.5 texels are rounded away from 0.
    EXPECT_CALLS(metaballs.setScreenSize(width, height), "glTexImage2D R16F 169 151 RED HALF_FLOAT", "glTexImage2D");
    // A field of no texel is no error.
    for (const auto& [impossible, lines] : {std::pair{0.0F, 1U}, {-1.0F, 1}, {NAN, 1}, {1e-30F, 1}, {1e30F, 0}}) {
        metaballs.init(impossible);
        metaballs.setScreenSize(width, height);
        EXPECT_EQ(metaballs.getTexture(), 0U) << impossible;
        EXPECT_THAT(log.take(), SizeIs(lines)) << impossible;
    }
}

/// Until the framebuffer is complete.
TEST_F(MetaballTest, TriesFallbackFormatsInOrder) {
    metaballs.init(1.0F);
    glRecorder().faults.notRenderable = {GL_R16F, GL_RG16F};
    EXPECT_CALLS(metaballs.setScreenSize(width, height), R"(glTexImage2D R16F 337 301 RED HALF_FLOAT
        glTexImage2D RG16F 337 301 RG HALF_FLOAT; glTexImage2D RGBA16F 337 301 RGBA HALF_FLOAT)",
                 "glTexImage2D");
}

/// Particles to the bit, beside their plain form on the same stream.
TEST_F(MetaballTest, EmitsWhatTheSeededStreamSays) {
    constexpr int frames = 2000;
    drag(100.0F, 200.0F, 130.0F, 160.0F);
    srand48(11);
    update(frames);
    const long next = lrand48();

    srand48(11);
    std::vector<Particle> replayed = {{Vector2(100.0F, 200.0F), 0.0F, 0.0F, Vector2()}};
    for (int frame = 0; frame < frames; ++frame) {
        tidalume::reference::plain::emit(replayed, Vector2(115.0F, 180.0F), Vector2(30.0F / 50.0F, -40.0F / 50.0F));
        tidalume::reference::plain::step(replayed, 0.2F);
    }
    EXPECT_EQ(next, lrand48()) << "as many draws";
    ASSERT_EQ(particles().size(), replayed.size());
    EXPECT_TRUE(same(&particles()[0].position.x, &replayed[0].position.x, 6 * replayed.size()));

    particles().resize(65533, particles().back());
    update(100);
    EXPECT_EQ(particles().size(), 65535U) << "at most";
}

TEST_F(MetaballTest, WithoutADirectionNothingIsDrawnFromTheStream) {
    srand48(3);
    const long first = lrand48();
    for (const Vector2 target : {Vector2(50.0F, 50.0F), {40.0F, 30.0F}, {NAN, 30.0F}, {1e30F, -1e30F}}) {
        renderer.push(target.x, target.y, stream); // the first time without a press point
        srand48(3);
        update(50);
        EXPECT_EQ(lrand48(), first) << target.x << " " << target.y;
        renderer.push(40.0F, 30.0F, press);
    }
    drag(0.0F, 0.0F, 1e-30F, 0.0F); // whose length is 0 in single precision, so that it stays 1e-30
    update(50);
    EXPECT_EQ(particles().size(), 1U) << "the search ends without a particle";
}

TEST_F(MetaballTest, TouchesAndFrames) {
    EXPECT_THAT(render(20.0F), IsEmpty()) << "nothing before a press";
    EXPECT_CALLS(drag(40.0F, 30.0F, 90.0F, 30.0F), "");
    EXPECT_THAT(render(20.0F), IsEmpty()) << "not sized yet";
    EXPECT_EQ(particles()[0].age, 0.2F) << "but the particles move";
    renderer.setScreenSize(width, height);
    update(300);
    const size_t emitted = particles().size();
    renderer.push(91.0F, 30.0F, release);
    const std::string calls = render(12.0F);
    EXPECT_THAT(calls, HasSubstr("glDrawArrays POINTS 0 " + std::to_string(emitted) + "\n"));
    EXPECT_EQ(particles()[0].radius, 12.0F) << "however old";
    renderer.push(10.0F, 10.0F, 5);
    update(200);
    EXPECT_EQ(particles().size(), emitted) << "none after a release; other actions change no state";
    EXPECT_NEAR(particles()[0].age, 502 * 0.2, 1e-3);
    renderer.push(92.0F, 31.0F, stream);
    update(200);
    EXPECT_GT(particles().size(), emitted) << "a finger that moves emits again";
    renderer.push(5.0F, 6.0F, press);
    renderer.push(60.0F, 6.0F, 5);
    update(200);
    EXPECT_THAT(render(20.0F), HasSubstr("glDrawArrays POINTS 0 1\n")) << "a press begins anew, and emits nothing";
}

/// The same sums as those of render, which has moved the particles before.
TEST_F(MetaballTest, FieldOfTheParticles) {
    EXPECT_EQ(MetaballRenderer().getTexture(), 0U) << "without an inner renderer";
    renderer.setScreenSize(width, height);
    const auto field = [&] { return tidalume::headless::readTexture(renderer.getTexture(), 337, 301).rgba; };
    drag(10.0F, 40.0F, 90.0F, 30.0F);
    update(60);
    const std::string calls = render(30.0F);
    const std::vector<float> rendered = field();
    EXPECT_THAT(calls, StartsWith(glRecorder().record([&] { renderer.addToField(60.0F); })));
    EXPECT_NE(field(), rendered) << "a larger press";
    renderer.addToField(30.0F);
    EXPECT_TRUE(same(field(), rendered)) << "nothing has moved";
    particles().clear();
    renderer.addToField(30.0F);
    EXPECT_THAT(field(), Each(AnyOf(0.0F, 1.0F))) << "without a ball, and an alpha of 1";
}

} // namespace
