#include "foundation/ColorTarget.h"
#include "headless/Pixels.h"
#include "looks/CometsLook.h"
#include "tests/support/GLTest.h"

#include <algorithm>
#include <cstdlib>

namespace {

using Comets = tidalume::CometsLook;
using Values = std::vector<float>;

class CometsTest : public GLTest {
  protected:
    /// A picture after frames of 15 Hz. The context is lost before one of them.
    /// @param values  from the second parameter on
    Values fly(int frames, const Values& values, unsigned int seed = 1, int lossAt = -1) {
        srand48(1);
        Comets comets;
        comets.setSize(side, side);
        comets.setSeed(seed);
        for (std::size_t i = 0; i < values.size(); ++i)
            comets.set(Comets::BRIGHTNESS + static_cast<int>(i), values[i]);
        if (comets.get(Comets::METEORS) == 0) comets.touch(0, 150, 140, tidalume::TouchPhase::Down);
        tidalume::ColorTarget target;
        for (int frame = 0; frame < frames; ++frame) {
            if (frame == lossAt) {
                EXPECT_CALLS(comets.contextLost(), "");
                target.abandon();
                context.recreate();
            }
            comets.contextCreated();
            target.resize(side, side, std::vector<char>(4 * side * side).data());
            comets.draw(frame / 15.0, target.framebuffer());
        }
        return tidalume::headless::readFramebuffer(side, side).rgba;
    }

    static constexpr int side = 300;
};

TEST_F(CometsTest, FlightsAndSparksGoOnInANewContext) {
    const Values touched = {1, 0.2F, 60, 41, 213, 0};
    EXPECT_TRUE(same(fly(12, touched, 1, 6), fly(12, touched)));
}

TEST_F(CometsTest, GlowLiesOnTheCoreThatIsDrawn) {
    const Values plain = fly(12, {1, 0, 0, 41, 213, 0}), glowing = fly(12, {1, 0.012F, 0, 41, 213, 0});
    EXPECT_FALSE(same(plain, glowing));
    for (std::size_t alpha = 3; alpha < plain.size(); alpha += 4)
        EXPECT_TRUE(plain[alpha] == glowing[alpha] || plain[alpha] > 0.4F) << "a tail alone is 0.33, the core 0.46";
}

TEST_F(CometsTest, LightIsWhiteInTheMiddle) {
    const Values lit = fly(12, {1, 0.24F, 0, 41, 213, 0});
    for (std::size_t i = 0; i < lit.size(); i += 4)
        EXPECT_TRUE(lit[i + 3] < 0.8F || std::min({lit[i], lit[i + 1], lit[i + 2]}) > 0.75F * lit[i + 3]) << i / 4;
}

TEST_F(CometsTest, MeteorsComeByThemselvesWhereTheSeedSays) {
    const Values shower = {1, 0, 0, 41, 213, 120};
    const Values first = fly(45, shower, 1);
    // Two a second, each of them a second and a half in the air: 6.75 s of flight, with four tails in 15 frames a
    // second.
    EXPECT_NEAR(glRecorder().counts["glDrawElements"], 4 * 15 * 6.75, 200);
    EXPECT_TRUE(same(first, fly(45, shower, 1)));
    EXPECT_FALSE(same(first, fly(45, shower, 2)));
}

} // namespace
