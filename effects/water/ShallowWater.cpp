#include "effects/water/ShallowWater.h"

#include "effects/water/Disturbance.h"
#include "foundation/Diagnostics.h"
#include "foundation/Log.h"
#include "foundation/ProgramTable.h"
#include "foundation/Quad.h"
#include "foundation/RenderTarget.h"
#include "math/ScreenMapping.h"
#include "shaders/ShallowWater.h"

namespace shaders = tidalume::shaders::shallowWater;

namespace {

constexpr char className[] = "ShallowWater";

const tidalume::TargetDescription waterTargets = {
    3,
    GL_R16F,
    "glGenTextures mTexturesWater",
    "glGenFramebuffers mFBOsWater[0]",
    {{"glTexImage2D mTexturesWater[0]", "glBindFramebuffer mFBOsWater[0]",
      "glFramebufferTexture2D mFBOsWater[0] mTexturesWater[0]"},
     // kept: fbo-water
     {"glTexImage2D mTexturesWater[1]", "glBindFramebuffer mFBOWater[1]",
      "glFramebufferTexture2D mFBOsWater[1] mTexturesWater[1]"},
     {"glTexImage2D mTexturesWater[2]", "glBindFramebuffer mFBOWater[2]",
      "glFramebufferTexture2D mFBOsWater[2] mTexturesWater[2]"}},
};

GLint uniform(GLuint program, const char* name) {
    return glGetUniformLocation(program, name);
}

GLuint quadCoord(GLuint program) {
    return static_cast<GLuint>(glGetAttribLocation(program, "quadCoord"));
}

} // namespace

// kept: lookup
tidalume::ProgramTable ShallowWater::programs() {
    return {
        className,
        "ShallowWater Shader Init : %lf ms",
        {
            {&mProgramDrop,
             "ShallowWaterProgramDrop",
             "createProgram mProgramDrop",
             shaders::vertex,
             shaders::dropFragment,
             {},
             {}},
            {&mProgramDropLine,
             "ShallowWaterProgramDropLine",
             "createProgram mProgramDropLine",
             shaders::vertex,
             shaders::dropLineFragment,
             {},
             {}},
            {&mProgramUpdate,
             "ShallowWaterProgramUpdate",
             "createProgram mProgramUpdate",
             shaders::updateVertex,
             shaders::updateFragment,
             {},
             {}},
        },
    };
}

ShallowWater::ShallowWater() {
    updateParameters();
}

ShallowWater::~ShallowWater() {
    tidalume::deletePrograms(programs());
    tidalume::deleteTargets(waterTargets, mTexturesWater, mFBOsWater);
}

void ShallowWater::init() {
    const tidalume::ProgramTable table = programs();
    tidalume::deletePrograms(table);
    tidalume::buildPrograms(table);
}

void ShallowWater::setScreenSize(int width, int height) {
    if (width != mWidth || height != mHeight) tidalume::deleteTargets(waterTargets, mTexturesWater, mFBOsWater);
    mWidth = width;
    mHeight = height;
    mWidthF = static_cast<float>(width);
    mHeightF = static_cast<float>(height);
    tidalume::OrthoCamera camera = tidalume::screenCamera(mWidthF, mHeightF);
    camera.bottom = 0.0F;
    camera.top = -mHeightF;
    tidalume::buildOrtho(camera, &mMatrixView, &mMatrixMVP);
    tidalume::createTargets(waterTargets, mTexturesWater, mFBOsWater, mWidth, mHeight);
    tidalume::setQuad(mVertices, 0.0F, 0.0F, mWidthF, mHeightF);
}

void ShallowWater::updateParameters() {
    const double timeStep = mTimeStep;
    const double courant = timeStep * mWaveSpeed / mGridSpacing;
    const double damping = mViscosity * timeStep;
    const double k = courant * courant;
    const double q = 1.0 / (damping + 2.0);
    mTerm[0] = static_cast<float>((4.0 - 8.0 * k) * q);
    mTerm[1] = static_cast<float>((damping - 2.0) * q);
    mTerm[2] = static_cast<float>(2.0 * k * q);
}

void ShallowWater::drawFullScreenQuad(GLuint program) {
    if (mFBOsWater[0] == 0) return;

    glViewport(0, 0, mWidth, mHeight);
    glVertexAttribPointer(quadCoord(program), 3, GL_FLOAT, GL_FALSE, 0, mVertices);
    checkGLError("glVertexAttribPointer program");
    glEnableVertexAttribArray(quadCoord(program));
    checkGLError("glEnableVertexAttribArray program");
    glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
    checkGLError("glDrawArrays DropletPsudoRenderer::program"); // kept: droplet
    glDisableVertexAttribArray(quadCoord(program));
    checkGLError("glDisableVertexAttribArray program");
}

void ShallowWater::drawDrop(float* center, float radius, float strength) {
    glBindFramebuffer(GL_FRAMEBUFFER, mFBOsWater[mCurrentBufferIndex]);
    glEnable(GL_BLEND);
    glBlendEquation(GL_FUNC_ADD);
    glBlendFunc(GL_SRC_COLOR, GL_DST_COLOR);

    glUseProgram(mProgramDrop);
    glUniform2fv(uniform(mProgramDrop, "center"), 1, center);
    glUniform1f(uniform(mProgramDrop, "radius"), radius * 0.5F);
    glUniform1f(uniform(mProgramDrop, "strength"), strength);
    glUniformMatrix4fv(uniform(mProgramDrop, "mvpMatrix"), 1, GL_FALSE, mMatrixMVP.m);
    checkGLError("glUniformMatrix4fv mvpMatrix");
    drawFullScreenQuad(mProgramDrop);

    glFlush(); // kept: flush
    glUseProgram(0);
    glDisable(GL_BLEND);
}

void ShallowWater::addDrop(float* center, float radius, float strength) {
    const bool draws = mFBOsWater[0] != 0 && tidalume::isDisturbance(radius, {center[0], center[1], strength});
    if (draws) drawDrop(center, radius, strength);
    __android_log_print(ANDROID_LOG_VERBOSE, className, "addDrop center[%f,%f] radius[%f] strength[%f]",
                        static_cast<double>(center[0]), static_cast<double>(center[1]), static_cast<double>(radius),
                        static_cast<double>(strength));
    if (draws) glBindFramebuffer(GL_FRAMEBUFFER, 0);
}

void ShallowWater::addDropLine(float* center, float* center2, float radius, float strength) {
    if (mFBOsWater[0] == 0) return;
    if (!tidalume::isDisturbance(radius, {center[0], center[1], center2[0], center2[1], strength})) return;

    glBindFramebuffer(GL_FRAMEBUFFER, mFBOsWater[mCurrentBufferIndex]);
    glUseProgram(mProgramDropLine);
    glUniform1i(uniform(mProgramDropLine, "textureWater"), 0);
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, mTexturesWater[(mCurrentBufferIndex + 2) % 3]);
    glUniform2fv(uniform(mProgramDropLine, "center"), 1, center);
    glUniform2fv(uniform(mProgramDropLine, "center2"), 1, center2);
    glUniform1f(uniform(mProgramDropLine, "radius"), radius * 0.5F);
    glUniform1f(uniform(mProgramDropLine, "strength"), strength);
    glUniformMatrix4fv(uniform(mProgramDropLine, "mvpMatrix"), 1, GL_FALSE, mMatrixMVP.m);
    checkGLError("glUniformMatrix4fv mvpMatrix");
    tidalume::discardTarget(mProgramDropLine);
    drawFullScreenQuad(mProgramDropLine);

    glFlush();
    glUseProgram(0);
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
}

void ShallowWater::update() {
    mTime += 0.01F;
    while (mTime >= mNextStepTime) {
        if (mFBOsWater[0] != 0) step();
        mNextStepTime += 1.0F / mStepRate;
    }
}

void ShallowWater::step() {
    mCurrentBufferIndex = (mCurrentBufferIndex + 1) % 3;
    const int target = mCurrentBufferIndex;
    glBindFramebuffer(GL_FRAMEBUFFER, mFBOsWater[target]);
    checkGLError("glBindFramebuffer mFBOsWater[mCurrentBufferIndex]");
    // kept: reattach
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, mTexturesWater[target], 0);
    checkGLError("glFramebufferTexture2D mFBOsWater[mCurrentBufferIndex] mTexturesWater[mCurrentBufferIndex]");

    glUseProgram(mProgramUpdate);
    glUniform1i(uniform(mProgramUpdate, "texture1"), 0);
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, mTexturesWater[(target + 2) % 3]);
    glUniform1i(uniform(mProgramUpdate, "texture2"), 1);
    glActiveTexture(GL_TEXTURE1);
    glBindTexture(GL_TEXTURE_2D, mTexturesWater[(target + 1) % 3]);
    glUniformMatrix4fv(uniform(mProgramUpdate, "mvpMatrix"), 1, GL_FALSE, mMatrixMVP.m);
    checkGLError("glUniformMatrix4fv mvpMatrix");
    glUniform3fv(uniform(mProgramUpdate, "Term"), 1, mTerm);
    checkGLError("glUniform3fv Term");
    tidalume::discardTarget(mProgramUpdate);
    drawFullScreenQuad(mProgramUpdate);

    glFlush();
    glBindTexture(GL_TEXTURE_2D, 0);
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, 0);
    glUseProgram(0);
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
}

GLuint ShallowWater::getTexture() {
    return mTexturesWater[mCurrentBufferIndex];
}

void ShallowWater::GLContextDestroyed() {
    tidalume::abandonPrograms(programs());
    tidalume::abandonTargets(waterTargets, mTexturesWater, mFBOsWater);
}

ShallowWater* createShallowWater() {
    return new ShallowWater();
}
