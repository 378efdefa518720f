#include "bench/BallField.h"

#include "foundation/ProgramBuilder.h"
#include "reference/Shaders.h"
#include "testing/Effects.h"
#include "testing/TestPeer.h"

namespace tidalume::bench {
namespace {

constexpr int margin = 120; ///< of the field around the screen

} // namespace

BallField::BallField(int width, int height, int count, float radius)
    : mBalls(scatteredBalls(count, width, height, radius)), mWidth(width + 2 * margin), mHeight(height + 2 * margin),
      mLoop(createProgram(reference::loop::vertex, reference::loop::fragment)) {
    mMetaballs.init(1.0F);
    mMetaballs.setScreenSize(width, height);
}

BallField::~BallField() {
    glDeleteProgram(mLoop);
}

void BallField::drawPoints() {
    mMetaballs.addMetaballs(mBalls.data(), static_cast<unsigned int>(mBalls.size() / 6));
}

void BallField::sumInLoop() {
    static const float quad[8] = {-1.0F, -1.0F, 1.0F, -1.0F, -1.0F, 1.0F, 1.0F, 1.0F};
    std::vector<float> uniforms;
    for (auto ball = mBalls.begin(); ball != mBalls.end(); ball += 6)
        uniforms.insert(uniforms.end(), {ball[0], ball[1], ball[2], 0.0F});

    glBindFramebuffer(GL_FRAMEBUFFER, TestPeer::mFBONormal(mMetaballs));
    glViewport(0, 0, mWidth, mHeight);
    glUseProgram(mLoop);
    glUniform4fv(glGetUniformLocation(mLoop, "balls"), 64, uniforms.data());
    glUniform1f(glGetUniformLocation(mLoop, "fieldHeight"), static_cast<float>(mHeight));
    glVertexAttribPointer(0, 2, GL_FLOAT, GL_FALSE, 0, quad);
    glEnableVertexAttribArray(0);
    glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
    glDisableVertexAttribArray(0);
    glUseProgram(0);
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
}

} // namespace tidalume::bench
