#include "effects/water/NormalMapBuilder.h"

#include "foundation/ProgramTable.h"
#include "foundation/Quad.h"
#include "foundation/RenderTarget.h"
#include "math/ScreenMapping.h"
#include "shaders/NormalMapBuilder.h"

namespace shaders = tidalume::shaders::normalMapBuilder;

const tidalume::ProgramTable NormalMapBuilder::mPrograms = {
    "NormalMapBuilder",
    "NormalMapBuilder Shader Init : %lf ms",
    {
        {&mProgram,
         "NormalMapBuilderProgram",
         "createProgram mProgram",
         shaders::vertex,
         shaders::fragment,
         {{&mUniformMatrixMVP, "matrixMVP"},
          {&mUniformHeightMax, "heightMax"},
          {&mUniformHeightTexture, "textureHeight"}},
         {{&mAttribVertices, "vertices"}}},
    },
};

namespace {

const tidalume::TargetDescription normalTarget = {
    1,
    GL_RGB16F,
    nullptr,
    "glGenFramebuffers mFBONormal",
    {{"glTexImage2D mTextureNormal", "glBindFramebuffer mFBONormal",
      "glFramebufferTexture2D mFBONormal mTextureNormal"}},
};

} // namespace

NormalMapBuilder::NormalMapBuilder() {
    ++mInstanceCount;
}

NormalMapBuilder::~NormalMapBuilder() {
    if (--mInstanceCount == 0) tidalume::deletePrograms(mPrograms);
    tidalume::deleteTargets(normalTarget, &mTextureNormal, &mFBONormal);
}

void NormalMapBuilder::init() {
    tidalume::buildPrograms(mPrograms);
}

void NormalMapBuilder::setScreenSize(int width, int height) {
    if (width != mWidth || height != mHeight) tidalume::deleteTargets(normalTarget, &mTextureNormal, &mFBONormal);
    mWidth = width;
    mHeight = height;
    mWidthF = static_cast<float>(width);
    mHeightF = static_cast<float>(height);
    // kept: twice-mirrored. By its up and by its bounds, so that the mapping is that of screenCamera.
    tidalume::buildOrtho({{0.0F, 0.0F, 1.0F}, {0.0F, 0.0F, 0.0F}, {0.0F, 1.0F, 0.0F}, -mWidthF, 0.0F, mHeightF, 0.0F},
                         &mMatrixView, &mMatrixMVP);
    tidalume::createTargets(normalTarget, &mTextureNormal, &mFBONormal, mWidth, mHeight);
    tidalume::setQuad(mVertices, 0.0F, 0.0F, mWidthF, mHeightF);
}

void NormalMapBuilder::setHeightMax(float heightMax) {
    mHeightMax = heightMax;
}

void NormalMapBuilder::build(GLuint texture) {
    if (mFBONormal == 0) return;

    glDisable(GL_BLEND);
    glDisable(GL_DEPTH_TEST);
    glViewport(0, 0, mWidth, mHeight);
    glBindFramebuffer(GL_FRAMEBUFFER, mFBONormal);

    glUseProgram(mProgram);
    glUniform1i(mUniformHeightTexture, 0);
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, texture); // kept: texture-left
    glUniform1f(mUniformHeightMax, mHeightMax);
    glUniformMatrix4fv(mUniformMatrixMVP, 1, GL_FALSE, mMatrixMVP.m);
    tidalume::discardTarget(mProgram);
    tidalume::drawQuad(mAttribVertices, mVertices);

    glFlush(); // kept: flush
    glUseProgram(0);
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
}

GLuint NormalMapBuilder::getTexture() {
    return mTextureNormal;
}

void NormalMapBuilder::GLContextDestroyed() {
    tidalume::abandonPrograms(mPrograms);
    tidalume::abandonTargets(normalTarget, &mTextureNormal, &mFBONormal);
}

NormalMapBuilder* createNormalMapBuilder() {
    return new NormalMapBuilder();
}
