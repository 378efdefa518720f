#include "effects/water/ShallowWaterIterative.h"

#include "effects/water/Disturbance.h"
#include "foundation/Diagnostics.h"
#include "foundation/ProgramTable.h"
#include "foundation/Quad.h"
#include "foundation/RenderTarget.h"
#include "math/ScreenMapping.h"
#include "shaders/ShallowWaterIterative.h"

#include <utility>

namespace shaders = tidalume::shaders::shallowWaterIterative;

namespace {

constexpr char samplerName[] = "textureWater";

const tidalume::TargetDescription waterTargets = {
    2,
    GL_RG16F,
    nullptr,
    "glGenFramebuffers mFBOsWater[0]", // kept: first-of-all
    {{"glTexImage2D mTexturesWater[0]", "glBindFramebuffer mFBOsWater[0]",
      "glFramebufferTexture2D mFBOsWater[0] mTexturesWater[0]"},
     // kept: fbo-water
     {"glTexImage2D mTexturesWater[1]", "glBindFramebuffer mFBOWater[1]",
      "glFramebufferTexture2D mFBOsWater[1] mTexturesWater[1]"}},
};

} // namespace

const tidalume::ProgramTable ShallowWaterIterative::mPrograms = {
    "ShallowWaterIterative",
    "ShallowWaterIterative Shader Init : %lf ms",
    {
        {&mProgramDrop,
         "ShallowWaterIterativeProgramDrop",
         "createProgram mProgramDrop", // kept: no-class
         shaders::vertex,
         shaders::dropFragment,
         {{&mDropMatrixMVP, "matrixMVP"},
          {&mDropCenter, "center"},
          {&mDropRadius, "radius"},
          {&mDropStrength, "strength"},
          {&mDropPreserveWeight, "preserveWeight"}},
         {{&mDropVertices, "vertices"}}},
        {&mProgramDropLine,
         "ShallowWaterIterativeProgramDropLine",
         "createProgram mProgramDropLine",
         shaders::vertex,
         shaders::dropLineFragment,
         {{&mDropLineMatrixMVP, "matrixMVP"},
          {&mDropLineCenter, "center"},
          {&mDropLineCenter2, "center2"},
          {&mDropLineRadius, "radius"},
          {&mDropLineStrength, "strength"},
          {&mDropLinePreserveWeight, "preserveWeight"}},
         {{&mDropLineVertices, "vertices"}}},
        {&mProgramHorizontalWave,
         "ShallowWaterIterativeProgramHorizontalWave",
         "createProgram mProgramHorizontalWave",
         shaders::vertex,
         shaders::horizontalWaveFragment,
         {{&mHorizontalWaveMatrixMVP, "matrixMVP"},
          {&mHorizontalWaveCenter, "center"},
          {&mHorizontalWaveRadius, "radius"},
          {&mHorizontalWaveStrength, "strength"},
          {&mHorizontalWaveWaveRadius, "waveRadius"},
          {&mHorizontalWaveWaveCount, "waveCount"},
          {&mHorizontalWavePreserveWeight, "preserveWeight"}},
         {{&mHorizontalWaveVertices, "vertices"}}},
        {&mProgramUpdate,
         "ShallowWaterIterativeProgramUpdate",
         "createProgram mProgramUpdate",
         shaders::updateVertex,
         shaders::updateFragment,
         {{&mUpdateMatrixMVP, "matrixMVP"}, {&mUpdateTexture, samplerName}},
         {{&mUpdateVertices, "vertices"}}},
    },
};

ShallowWaterIterative::ShallowWaterIterative() {
    ++mInstanceCount;
}

ShallowWaterIterative::~ShallowWaterIterative() {
    if (--mInstanceCount == 0) tidalume::deletePrograms(mPrograms);
    tidalume::deleteTargets(waterTargets, mTexturesWater, mFBOsWater);
}

void ShallowWaterIterative::init() {
    tidalume::buildPrograms(mPrograms);
}

void ShallowWaterIterative::setScreenSize(int width, int height) {
    if (width != mWidth || height != mHeight) tidalume::deleteTargets(waterTargets, mTexturesWater, mFBOsWater);
    mWidth = width;
    mHeight = height;
    mWidthF = static_cast<float>(width);
    mHeightF = static_cast<float>(height);
    tidalume::buildOrtho(tidalume::screenCamera(mWidthF, mHeightF), &mMatrixView, &mMatrixMVP);
    tidalume::createTargets(waterTargets, mTexturesWater, mFBOsWater, mWidth, mHeight);
    tidalume::setQuad(mVertices, 0.0F, 0.0F, mWidthF, mHeightF);
}

void ShallowWaterIterative::setIterationCount(int count) {
    if (count > 0) mIterationCount = count;
}

void ShallowWaterIterative::beginDisturbance(GLuint program) {
    glViewport(0, 0, mWidth, mHeight); // kept: state-taken
    glBindFramebuffer(GL_FRAMEBUFFER, mFBOsWater[0]);
    glUseProgram(program);
    glUniform1i(glGetUniformLocation(program, samplerName), 0); // kept: lookup
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, mTexturesWater[1]); // kept: texture-left
}

void ShallowWaterIterative::finishDisturbance(GLuint program, GLint attribute) {
    tidalume::discardTarget(program);
    tidalume::drawQuad(attribute, mVertices);
    glFlush(); // kept: flush
    glUseProgram(0);
    swapWaterTexture();
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
}

void ShallowWaterIterative::addDrop(float* center, float radius, float strength, float preserveWeight) {
    if (mFBOsWater[0] == 0) return;
    if (!tidalume::isDisturbance(radius, {center[0], center[1], strength, preserveWeight})) return;

    // kept: uniform-order
    beginDisturbance(mProgramDrop);
    glUniform2fv(mDropCenter, 1, center);
    glUniform1f(mDropRadius, radius);
    glUniform1f(mDropStrength, strength);
    glUniform1f(mDropPreserveWeight, preserveWeight);
    glUniformMatrix4fv(mDropMatrixMVP, 1, GL_FALSE, mMatrixMVP.m);
    finishDisturbance(mProgramDrop, mDropVertices);
}

void ShallowWaterIterative::addDropLine(float* center, float* center2, float radius, float strength,
                                        float preserveWeight) {
    if (mFBOsWater[0] == 0) return;
    if (!tidalume::isDisturbance(radius, {center[0], center[1], center2[0], center2[1], strength, preserveWeight})) {
        return;
    }
    beginDisturbance(mProgramDropLine);
    glUniform2fv(mDropLineCenter, 1, center);
    glUniform2fv(mDropLineCenter2, 1, center2);
    glUniform1f(mDropLineRadius, radius);
    glUniform1f(mDropLineStrength, strength);
    glUniformMatrix4fv(mDropLineMatrixMVP, 1, GL_FALSE, mMatrixMVP.m);
    glUniform1f(mDropLinePreserveWeight, preserveWeight);
    finishDisturbance(mProgramDropLine, mDropLineVertices);
}

void ShallowWaterIterative::addHorizontalWave(float center, float radius, float strength, float waveRadius,
                                              float waveCount, float preserveWeight) {
    if (mFBOsWater[0] == 0) return;
    if (!tidalume::isDisturbance(radius, {center, strength, waveRadius, waveCount, preserveWeight})) return;

    beginDisturbance(mProgramHorizontalWave);
    glUniform1f(mHorizontalWaveCenter, center);
    glUniform1f(mHorizontalWaveRadius, radius);
    glUniform1f(mHorizontalWaveStrength, strength);
    glUniform1f(mHorizontalWaveWaveRadius, waveRadius);
    glUniform1f(mHorizontalWaveWaveCount, waveCount);
    glUniform1f(mHorizontalWavePreserveWeight, preserveWeight);
    glUniformMatrix4fv(mHorizontalWaveMatrixMVP, 1, GL_FALSE, mMatrixMVP.m);
    checkGLError("glUniformMatrix4fv matrixMVP");
    finishDisturbance(mProgramHorizontalWave, mHorizontalWaveVertices);
}

void ShallowWaterIterative::update() {
    if (mFBOsWater[0] == 0) return;

    glViewport(0, 0, mWidth, mHeight);
    for (int i = 0; i < mIterationCount; ++i) {
        glBindFramebuffer(GL_FRAMEBUFFER, mFBOsWater[0]);
        checkGLError("glBindFramebuffer mFBOsWater[0]"); // kept: single-checks
        // kept: reattach
        glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, mTexturesWater[0], 0);
        checkGLError("glFramebufferTexture2D mFBOsWater[0] mTexturesWater[0]");

        glUseProgram(mProgramUpdate); // kept: rebind
        glUniform1i(mUpdateTexture, 0);
        glActiveTexture(GL_TEXTURE0);
        glBindTexture(GL_TEXTURE_2D, mTexturesWater[1]);
        checkGLError("glBindTexture mProgramUpdate"); // kept: bind-program
        glUniformMatrix4fv(mUpdateMatrixMVP, 1, GL_FALSE, mMatrixMVP.m);
        checkGLError("glUniformMatrix4fv matrixMVP");
        tidalume::discardTarget(mProgramUpdate);
        tidalume::drawQuad(mUpdateVertices, mVertices);
        glFlush();
        swapWaterTexture();
    }
    glUseProgram(0);
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
}

GLuint ShallowWaterIterative::getTexture() {
    return mTexturesWater[1];
}

void ShallowWaterIterative::swapWaterTexture() {
    std::swap(mTexturesWater[0], mTexturesWater[1]);
    std::swap(mFBOsWater[0], mFBOsWater[1]);
}

void ShallowWaterIterative::GLContextDestroyed() {
    tidalume::abandonPrograms(mPrograms);
    tidalume::abandonTargets(waterTargets, mTexturesWater, mFBOsWater);
}

ShallowWaterIterative* createShallowWaterIterative() {
    return new ShallowWaterIterative();
}
