#include "effects/metaball/Metaball2DRenderer.h"

#include "foundation/ProgramTable.h"
#include "foundation/Quad.h"
#include "foundation/RenderTarget.h"
#include "math/ScreenMapping.h"
#include "shaders/Metaball2DRenderer.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace shaders = tidalume::shaders::metaball2DRenderer;

const tidalume::ProgramTable Metaball2DRenderer::mPrograms = {
    "Metaball2DRenderer",
    "Metaball2DRenderer Shader Init : %lf ms",
    {
        {&mProgramMetaball,
         "Metaball2DRendererProgramMetaball",
         nullptr, // kept: no-labels
         shaders::fieldVertex,
         shaders::fieldFragment,
         {{&mUniformMetaballQualityMultiplyFactor, "qualityMultiplyFactor"},
          {&mUniformMetaballRadiusMultiplyFactor, "radiusMultiplyFactor"},
          {&mUniformMetaballMatrixMVP, "matrixMVP"}},
         {{&mAttribMetaballs, "metaballs"}}},
        {&mProgramDraw,
         "Metaball2DRendererProgramDraw",
         nullptr,
         shaders::drawVertex,
         shaders::drawFragment,
         {{&mUniformDrawColor, "color"},
          {&mUniformDrawCut, "cut"},
          {&mUniformDrawMatrixMVP, "matrixMVP"},
          {&mUniformDrawTexture, "textureField"}},
         {{&mAttribDrawVertices, "vertices"}, {&mAttribDrawTexcoords, "texcoords"}}},
    },
};

namespace {

const tidalume::TargetDescription fieldTarget = {
    1,
    GL_R16F,
    nullptr,
    "glGenFramebuffers mFBONormal",
    {{"glTexImage2D mTexture", "glBindFramebuffer mFBONormal", "glFramebufferTexture2D mFBONormal mTexture"}},
};

constexpr GLsizei ballStride = Metaball2DRenderer::FLOATS_PER_BALL * sizeof(float); // kept: six-floats

/// A length in texels as an int. What is negative or not a number gives -1, what an int cannot hold a length that no
/// driver allows: no texture is made for either.
int toTexels(double length) {
    constexpr double tooLong = 1e9;
    return length >= 0.0 ? static_cast<int>(std::min(length, tooLong)) : -1;
}

} // namespace

Metaball2DRenderer::Metaball2DRenderer() {
    ++mInstanceCount;
}

Metaball2DRenderer::~Metaball2DRenderer() {
    if (--mInstanceCount == 0) tidalume::deletePrograms(mPrograms);
    tidalume::deleteTargets(fieldTarget, &mTexture, &mFBONormal);
    mInitialized = false;
}

void Metaball2DRenderer::init(float quality) {
    tidalume::buildPrograms(mPrograms);
    mQuality = quality;
    mInitialized = true;
}

void Metaball2DRenderer::setScreenSize(int width, int height) {
    const auto widthF = static_cast<float>(width);
    const auto heightF = static_cast<float>(height);
    const float margin = mMargin / mQuality;
    mScaledWidth = toTexels(std::round(static_cast<double>(widthF / mQuality)));
    mScaledHeight = toTexels(std::round(static_cast<double>(heightF / mQuality)));
    const int textureWidth = width < 1 ? width : toTexels(static_cast<float>(mScaledWidth) + 2.0F * margin);
    const int textureHeight = height < 1 ? height : toTexels(static_cast<float>(mScaledHeight) + 2.0F * margin);

    if (width != mWidth || height != mHeight || textureWidth != mTextureWidth || textureHeight != mTextureHeight) {
        tidalume::deleteTargets(fieldTarget, &mTexture, &mFBONormal);
    }
    mWidth = width;
    mHeight = height;
    mWidthF = widthF;
    mHeightF = heightF;
    mTextureWidth = textureWidth;
    mTextureHeight = textureHeight;

    tidalume::buildOrtho(tidalume::screenCamera(mWidthF, mHeightF), &mMatrixView, &mMatrixMVP);
    tidalume::buildOrtho({{-mMargin, -mMargin, 1.0F},
                          {-mMargin, -mMargin, 0.0F},
                          {0.0F, -1.0F, 0.0F},
                          mWidthF + 2.0F * mMargin,
                          0.0F,
                          -(mHeightF + 2.0F * mMargin),
                          0.0F},
                         &mMatrixMetaballView, &mMatrixMetaballMVP);

    tidalume::createTargets(fieldTarget, &mTexture, &mFBONormal, mTextureWidth, mTextureHeight);

    tidalume::setQuad(mVertices, 0.0F, 0.0F, mWidthF, mHeightF);
    const float u = margin / static_cast<float>(mTextureWidth);
    const float v = margin / static_cast<float>(mTextureHeight);
    const float texcoords[8] = {u, v, 1.0F - u, v, u, 1.0F - v, 1.0F - u, 1.0F - v};
    std::copy(std::begin(texcoords), std::end(texcoords), mTexcoords);
}

void Metaball2DRenderer::addMetaballs(float* metaballs, unsigned int count) {
    if (!mInitialized || mFBONormal == 0) return;

    glBindFramebuffer(GL_FRAMEBUFFER, mFBONormal);
    // kept: reattach
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, mTexture, 0);
    glViewport(0, 0, mTextureWidth, mTextureHeight);
    glClearColor(0.0F, 0.0F, 0.0F, 1.0F);
    glClear(GL_COLOR_BUFFER_BIT);

    glEnable(GL_BLEND);
    glBlendEquation(GL_FUNC_ADD);
    glBlendFunc(GL_ONE, GL_ONE);

    glUseProgram(mProgramMetaball);
    glUniform1f(mUniformMetaballRadiusMultiplyFactor, mRadiusMultiplyFactor);
    glUniform1f(mUniformMetaballQualityMultiplyFactor, 1.0F / mQuality);
    glUniformMatrix4fv(mUniformMetaballMatrixMVP, 1, GL_FALSE, mMatrixMetaballMVP.m);
    glEnableVertexAttribArray(mAttribMetaballs); // kept: enable-order
    glVertexAttribPointer(mAttribMetaballs, 4, GL_FLOAT, GL_FALSE, ballStride, metaballs);
    glDrawArrays(GL_POINTS, 0, static_cast<GLsizei>(count));
    glFlush(); // kept: flush

    glDisableVertexAttribArray(mAttribMetaballs);
    glUseProgram(0);
    glDisable(GL_BLEND);
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
}

void Metaball2DRenderer::render(float* color) {
    if (!mInitialized || mFBONormal == 0) return;

    glViewport(0, 0, mWidth, mHeight);
    glDisable(GL_DEPTH_TEST);
    glEnable(GL_BLEND);
    glBlendEquation(GL_FUNC_ADD);
    glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA);

    glUseProgram(mProgramDraw);
    glUniform4fv(mUniformDrawColor, 1, color);
    glUniform1f(mUniformDrawCut, mCut); // kept: no-setter
    glUniformMatrix4fv(mUniformDrawMatrixMVP, 1, GL_FALSE, mMatrixMVP.m);
    glUniform1i(mUniformDrawTexture, 0);
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, mTexture);

    glEnableVertexAttribArray(mAttribDrawVertices);
    glVertexAttribPointer(mAttribDrawVertices, 3, GL_FLOAT, GL_FALSE, 0, mVertices);
    glEnableVertexAttribArray(mAttribDrawTexcoords);
    glVertexAttribPointer(mAttribDrawTexcoords, 2, GL_FLOAT, GL_FALSE, 0, mTexcoords);
    glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);

    glDisableVertexAttribArray(mAttribDrawTexcoords);
    glDisableVertexAttribArray(mAttribDrawVertices);
    glBindTexture(GL_TEXTURE_2D, 0);
    glUseProgram(0);
    glDisable(GL_BLEND);
}

unsigned int Metaball2DRenderer::getTexture() {
    return mTexture;
}

void Metaball2DRenderer::GLContextDestroyed() {
    tidalume::abandonPrograms(mPrograms);
    tidalume::abandonTargets(fieldTarget, &mTexture, &mFBONormal);
    mInitialized = false;
}

Metaball2DRenderer* createMetaball2DRenderer() {
    return new Metaball2DRenderer();
}
