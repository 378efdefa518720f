#include "effects/water/ShallowWater.h"

#include "effects/water/Disturbance.h"
#include "foundation/Diagnostics.h"
#include "foundation/Log.h"
#include "foundation/ProgramTable.h"
#include "foundation/Quad.h"
#include "foundation/RenderTarget.h"
#include "math/ScreenMapping.h"
#include "shaders/ShallowWater.h"

#include <algorithm>
#include <cmath>

namespace shaders = tidalume::shaders::shallowWater;

namespace {

constexpr char className[] = "ShallowWater";

const tidalume::TargetDescription waterTargets = {
    3,
    GL_R16F,
    "glGenTextures mTexturesWater",
    "glGenFramebuffers mFBOsWater[0]", // kept: first-of-all
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

/// A step is stable up to 0.5.
double squaredCourantNumber(double waveSpeed, double gridSpacing, double timeStep) {
    const double courant = timeStep * waveSpeed / gridSpacing;
    return courant * courant;
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
             "createProgram mProgramDrop", // kept: no-class
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
    tidalume::deletePrograms(table); // kept: own-programs
    tidalume::buildPrograms(table);
}

void ShallowWater::setScreenSize(int width, int height) {
    if (width != mWidth || height != mHeight) tidalume::deleteTargets(waterTargets, mTexturesWater, mFBOsWater);
    mWidth = width;
    mHeight = height;
    mWidthF = static_cast<float>(width);
    mHeightF = static_cast<float>(height);
    tidalume::OrthoCamera camera = tidalume::screenCamera(mWidthF, mHeightF);
    camera.bottom = 0.0F; // kept: y-up
    camera.top = -mHeightF;
    tidalume::buildOrtho(camera, &mMatrixView, &mMatrixMVP);
    tidalume::createTargets(waterTargets, mTexturesWater, mFBOsWater, mWidth, mHeight);
    tidalume::setQuad(mVertices, 0.0F, 0.0F, mWidthF, mHeightF);
}

bool ShallowWater::setPhysics(float waveSpeed, float viscosity, float gridSpacing, float timeStep) {
    const bool isInRange = viscosity >= 0.0F && gridSpacing > 0.0F && timeStep > 0.0F && std::isfinite(waveSpeed) &&
                           std::isfinite(viscosity) && std::isfinite(gridSpacing) && std::isfinite(timeStep);
    if (!isInRange || !(squaredCourantNumber(waveSpeed, gridSpacing, timeStep) <= 0.5)) {
        __android_log_print(ANDROID_LOG_ERROR, className,
                            "setPhysics waveSpeed[%g] viscosity[%g] gridSpacing[%g] timeStep[%g]: %s",
                            static_cast<double>(waveSpeed), static_cast<double>(viscosity),
                            static_cast<double>(gridSpacing), static_cast<double>(timeStep),
                            isInRange ? "(waveSpeed timeStep / gridSpacing)^2 must be at most 0.5"
                                      : "must be finite, viscosity at least 0, gridSpacing and timeStep above 0");
        return false;
    }
    mWaveSpeed = waveSpeed;
    mViscosity = viscosity;
    mGridSpacing = gridSpacing;
    mTimeStep = timeStep;
    updateParameters();
    return true;
}

bool ShallowWater::setStepRate(float stepsPerUnit) {
    if (!(stepsPerUnit > 0.0F && stepsPerUnit <= 1000.0F)) {
        __android_log_print(ANDROID_LOG_ERROR, className, "setStepRate [%g]: must be above 0 and at most 1000",
                            static_cast<double>(stepsPerUnit));
        return false;
    }
    mStepRate = stepsPerUnit;
    // A step that a slower rate has put far off comes as soon as the new one allows.
    mNextStepTime = std::min(mNextStepTime, mTime + 1.0F / stepsPerUnit);
    return true;
}

void ShallowWater::updateParameters() {
    const double timeStep = mTimeStep;
    const double damping = mViscosity * timeStep;
    const double k = squaredCourantNumber(mWaveSpeed, mGridSpacing, mTimeStep);
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
    glBlendFunc(GL_SRC_COLOR, GL_DST_COLOR); // kept: squares

    glUseProgram(mProgramDrop);
    glUniform2fv(uniform(mProgramDrop, "center"), 1, center);
    glUniform1f(uniform(mProgramDrop, "radius"), radius * 0.5F); // kept: half-radius
    glUniform1f(uniform(mProgramDrop, "strength"), strength);
    glUniformMatrix4fv(uniform(mProgramDrop, "mvpMatrix"), 1, GL_FALSE, mMatrixMVP.m);
    checkGLError("glUniformMatrix4fv mvpMatrix"); // kept: single-checks
    drawFullScreenQuad(mProgramDrop);

    glFlush(); // kept: flush
    glUseProgram(0);
    glDisable(GL_BLEND);
}

void ShallowWater::addDrop(float* center, float radius, float strength) {
    const bool draws = mFBOsWater[0] != 0 && tidalume::isDisturbance(radius, {center[0], center[1], strength});
    if (draws) drawDrop(center, radius, strength);
    // kept: verbose-drop
    __android_log_print(ANDROID_LOG_VERBOSE, className, "addDrop center[%f,%f] radius[%f] strength[%f]",
                        static_cast<double>(center[0]), static_cast<double>(center[1]), static_cast<double>(radius),
                        static_cast<double>(strength));
    if (draws) glBindFramebuffer(GL_FRAMEBUFFER, 0);
}

void ShallowWater::addDropLine(float* center, float* center2, float radius, float strength) {
    if (mFBOsWater[0] == 0) return;
    if (!tidalume::isDisturbance(radius, {center[0], center[1], center2[0], center2[1], strength})) return;

    glBindFramebuffer(GL_FRAMEBUFFER, mFBOsWater[mCurrentBufferIndex]);
    glUseProgram(mProgramDropLine); // kept: state-taken
    glUniform1i(uniform(mProgramDropLine, "textureWater"), 0);
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, mTexturesWater[(mCurrentBufferIndex + 2) % 3]); // kept: step-back, texture-left
    glUniform2fv(uniform(mProgramDropLine, "center"), 1, center);
    glUniform2fv(uniform(mProgramDropLine, "center2"), 1, center2); // kept: two-ends
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
    mTime += 0.01F; // kept: float-clock
    while (mTime >= mNextStepTime) {
        if (mFBOsWater[0] != 0) step();
        // At least the next float: late and at a high rate the sum would not grow, and this loop not end.
        mNextStepTime = std::max(mNextStepTime + 1.0F / mStepRate, std::nextafter(mNextStepTime, HUGE_VALF));
    }
}

void ShallowWater::step() {
    mCurrentBufferIndex = (mCurrentBufferIndex + 1) % 3;
    const int target = mCurrentBufferIndex;
    glBindFramebuffer(GL_FRAMEBUFFER, mFBOsWater[target]);
    checkGLError("glBindFramebuffer mFBOsWater[mCurrentBufferIndex]"); // kept: expression
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
