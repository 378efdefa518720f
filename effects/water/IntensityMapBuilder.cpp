#include "effects/water/IntensityMapBuilder.h"

#include "effects/water/Disturbance.h"
#include "foundation/ProgramTable.h"
#include "foundation/Quad.h"
#include "foundation/RenderTarget.h"
#include "math/ScreenMapping.h"
#include "shaders/IntensityMapBuilder.h"

#include <algorithm>

namespace shaders = tidalume::shaders::intensityMapBuilder;

const tidalume::ProgramTable IntensityMapBuilder::mPrograms = {
    "IntensityMapBuilder",
    "IntensityMapBuilder Shader Init : %lf ms",
    {
        {&mProgramDropLine,
         "IntensityMapBuilderProgramDropLine",
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
         "IntensityMapBuilderProgramHorizontalWave",
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
    },
};

namespace {

const tidalume::TargetDescription heightTarget = {
    1,
    GL_R16F,
    nullptr,
    "glGenFramebuffers mFBONormal",
    {{"glTexImage2D mTexture", "glBindFramebuffer mFBONormal", "glFramebufferTexture2D mFBONormal mTexture"}},
};

} // namespace

IntensityMapBuilder::IntensityMapBuilder() {
    ++mInstanceCount;
}

IntensityMapBuilder::~IntensityMapBuilder() {
    if (--mInstanceCount == 0) tidalume::deletePrograms(mPrograms);
    tidalume::deleteTargets(heightTarget, &mTexture, &mFBONormal);
}

void IntensityMapBuilder::init() {
    tidalume::buildPrograms(mPrograms);
}

void IntensityMapBuilder::setScreenSize(int width, int height) {
    if (width != mWidth || height != mHeight) tidalume::deleteTargets(heightTarget, &mTexture, &mFBONormal);
    mWidth = width;
    mHeight = height;
    mWidthF = static_cast<float>(width);
    mHeightF = static_cast<float>(height);
    tidalume::buildOrtho(tidalume::screenCamera(mWidthF, mHeightF), &mMatrixView, &mMatrixMVP);
    tidalume::createTargets(heightTarget, &mTexture, &mFBONormal, mWidth, mHeight);
    tidalume::setQuad(mVertices, 0.0F, 0.0F, mWidthF, mHeightF); // kept: unused-quad
}

void IntensityMapBuilder::beginShape(GLuint program) {
    glViewport(0, 0, mWidth, mHeight);
    glBindFramebuffer(GL_FRAMEBUFFER, mFBONormal);
    glUseProgram(program);
}

void IntensityMapBuilder::finishShape(GLint attribute) {
    tidalume::drawQuad(attribute, mVertices);
    glFlush(); // kept: flush
    glUseProgram(0);
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
}

void IntensityMapBuilder::addDropLine(float* center, float* center2, float radius, float strength,
                                      float preserveWeight) {
    if (mFBONormal == 0) return;
    if (!tidalume::isDisturbance(radius, {center[0], center[1], center2[0], center2[1], strength})) return;

    // kept: replace
    tidalume::setQuad(mVertices, std::max(0.0F, std::min(center[0], center2[0]) - radius),
                      std::max(0.0F, std::min(center[1], center2[1]) - radius),
                      std::min(mWidthF, std::max(center[0], center2[0]) + radius),
                      std::min(mHeightF, std::max(center[1], center2[1]) + radius));

    beginShape(mProgramDropLine); // kept: state-taken
    glUniformMatrix4fv(mDropLineMatrixMVP, 1, GL_FALSE, mMatrixMVP.m);
    glUniform2fv(mDropLineCenter, 1, center);
    glUniform2fv(mDropLineCenter2, 1, center2);
    glUniform1f(mDropLineRadius, radius);
    glUniform1f(mDropLineStrength, strength);
    glUniform1f(mDropLinePreserveWeight, preserveWeight); // kept: preserve-weight
    finishShape(mDropLineVertices);
}

void IntensityMapBuilder::addHorizontalWave(float center, float radius, float strength, float waveRadius,
                                            float waveCount, float preserveWeight) {
    if (mFBONormal == 0) return;
    if (!tidalume::isDisturbance(radius, {center, strength, waveRadius, waveCount})) return;

    const float extent = waveRadius + radius;
    tidalume::setQuad(mVertices, 0.0F, std::max(0.0F, center - extent), mWidthF, std::min(mHeightF, center + extent));

    glDisable(GL_BLEND);
    glDisable(GL_DEPTH_TEST);
    beginShape(mProgramHorizontalWave);
    glUniformMatrix4fv(mHorizontalWaveMatrixMVP, 1, GL_FALSE, mMatrixMVP.m);
    glUniform1f(mHorizontalWaveCenter, center);
    glUniform1f(mHorizontalWaveRadius, radius);
    glUniform1f(mHorizontalWaveStrength, strength);
    glUniform1f(mHorizontalWaveWaveRadius, waveRadius);
    glUniform1f(mHorizontalWaveWaveCount, waveCount);
    glUniform1f(mHorizontalWavePreserveWeight, preserveWeight);
    finishShape(mHorizontalWaveVertices);
}

GLuint IntensityMapBuilder::getTexture() {
    return mTexture;
}

void IntensityMapBuilder::GLContextDestroyed() {
    tidalume::abandonPrograms(mPrograms);
    tidalume::abandonTargets(heightTarget, &mTexture, &mFBONormal);
}

IntensityMapBuilder* createIntensityMapBuilder() {
    return new IntensityMapBuilder();
}
