#include "effects/water/ShallowWaterRenderer.h"

#include "foundation/Diagnostics.h"
#include "foundation/ProgramTable.h"
#include "foundation/Quad.h"
#include "math/ScreenMapping.h"
#include "shaders/ShallowWaterRenderer.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace shaders = tidalume::shaders::shallowWaterRenderer;

const tidalume::ProgramTable ShallowWaterRenderer::mPrograms = {
    "ShallowWaterRenderer",
    "ShallowWaterRenderer Shader Init : %lf ms",
    {
        {&mProgram,
         "ShallowWaterRendererProgram",
         "createProgram mProgram",
         shaders::vertex,
         shaders::fragment,
         {{&mUniformTextureNormal, "textureNormal"},
          {&mUniformTextureHeight, "textureHeight"},
          {&mUniformTextureBG, "textureBG"},
          {&mUniformMatrixMVP, "matrixMVP"},
          {&mUniformHeightMax, "heightMax"},
          {&mUniformLight, "light"},
          {&mUniformMaterialSpecular, "materialSpecular"},
          {&mUniformMaterialShininess, "materialShininess"},
          {&mUniformScreenWidth, "screenWidth"},
          {&mUniformScreenHeight, "screenHeight"},
          {&mUniformTextureFlip, "textureFlip"}},
         {{&mAttribVertices, "vertices"}, {&mAttribTexcoords, "texcoords"}}},
    },
};

ShallowWaterRenderer::ShallowWaterRenderer() : mLight(-3.0F, 8.0F, 7.0F) {
    mLight.normalize();
    ++mInstanceCount;
}

ShallowWaterRenderer::~ShallowWaterRenderer() {
    if (--mInstanceCount == 0) tidalume::deletePrograms(mPrograms);
}

void ShallowWaterRenderer::init() {
    tidalume::buildPrograms(mPrograms);
}

void ShallowWaterRenderer::setScreenSize(int width, int height) {
    mWidth = width;
    mHeight = height;
    mWidthF = static_cast<float>(width);
    mHeightF = static_cast<float>(height);
    mHalfWidthF = mWidthF * 0.5F;
    mHalfHeightF = mHeightF * 0.5F;

    Vector3 eye(0.0F, 0.0F, mWidthF); // kept: perspective
    Vector3 at(0.0F, 0.0F, 0.0F);
    Vector3 up(0.0F, 1.0F, 0.0F);
    mMatrixView.LookAtRH(&eye.x, &at.x, &up.x);
    // The near plane lies halfway to the quad, so half of the quad's extents there cover it exactly.
    mMatrixMVP.PerspectiveOffCenterRH(-mWidthF * 0.25F, mWidthF * 0.25F, -mHeightF * 0.25F, mHeightF * 0.25F,
                                      mHalfWidthF, mHalfWidthF * 3.0F);
    mMatrixMVP.mul(&mMatrixView, &mMatrixMVP);

    tidalume::setQuad(mVertices, -mHalfWidthF, -mHalfHeightF, mHalfWidthF, mHalfHeightF);
    const float texcoords[8] = {0.0F, 1.0F, 1.0F, 1.0F, 0.0F, 0.0F, 1.0F, 0.0F};
    std::copy(std::begin(texcoords), std::end(texcoords), mTexcoords);
}

void ShallowWaterRenderer::setHeightMax(float heightMax) {
    mHeightMax = heightMax;
}

void ShallowWaterRenderer::setLight(float x, float y, float z) {
    // Squares of floats fit into a double.
    const double length = std::sqrt(double{x} * x + double{y} * y + double{z} * z);
    if (length == 0.0 || !std::isfinite(length)) return;
    mLight = Vector3(static_cast<float>(x / length), static_cast<float>(y / length), static_cast<float>(z / length));
}

void ShallowWaterRenderer::setSpecular(float strength, float shininess) {
    if (!(strength >= 0.0F && shininess > 0.0F) || !std::isfinite(strength) || !std::isfinite(shininess)) return;
    mMaterialSpecular = strength;
    mMaterialShininess = shininess;
}

void ShallowWaterRenderer::setDrawFrameBuffer(GLuint framebuffer) {
    mDrawFrameBuffer = framebuffer;
}

void ShallowWaterRenderer::setBGFlip(bool flip) {
    mBGFlip = flip ? 1.0F : 0.0F;
}

void ShallowWaterRenderer::setTexture(int texture) { // kept: texture-types
    mTextureBG = static_cast<GLuint>(texture);
}

void ShallowWaterRenderer::render(GLuint textureHeight, GLuint textureNormal) {
    glDisable(GL_BLEND);
    glDisable(GL_DEPTH_TEST);
    glViewport(0, 0, mWidth, mHeight);
    glBindFramebuffer(GL_FRAMEBUFFER, mDrawFrameBuffer);

    // kept: single-checks, max-height, uniform1b
    glUseProgram(mProgram);
    glUniform1f(mUniformHeightMax, mHeightMax);
    checkGLError("glUniform1f maxHeight");
    glUniform3fv(mUniformLight, 1, &mLight.x);
    checkGLError("glUniform3fv light");
    glUniform1f(mUniformMaterialSpecular, mMaterialSpecular);
    checkGLError("glUniform1f materialSpecular");
    glUniform1f(mUniformMaterialShininess, mMaterialShininess);
    checkGLError("glUniform1f materialShininess");
    glUniformMatrix4fv(mUniformMatrixMVP, 1, GL_FALSE, mMatrixMVP.m);
    checkGLError("glUniformMatrix4fv matrixMVP");
    glUniform1f(mUniformScreenWidth, mWidthF);
    checkGLError("glUniform1f screenWidth");
    glUniform1f(mUniformScreenHeight, mHeightF);
    checkGLError("glUniform1f screenHeight");
    glUniform1f(mUniformTextureFlip, mBGFlip);
    checkGLError("glUniform1b mBGFlip");

    glUniform1i(mUniformTextureNormal, 0); // kept: height-first
    glUniform1i(mUniformTextureHeight, 1);
    glUniform1i(mUniformTextureBG, 2);
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, textureNormal);
    glActiveTexture(GL_TEXTURE1);
    glBindTexture(GL_TEXTURE_2D, textureHeight);
    glActiveTexture(GL_TEXTURE2);
    glBindTexture(GL_TEXTURE_2D, mTextureBG);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR); // kept: picture-filters
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_MIRRORED_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_MIRRORED_REPEAT);

    glVertexAttribPointer(mAttribVertices, 3, GL_FLOAT, GL_FALSE, 0, mVertices);
    glEnableVertexAttribArray(mAttribVertices);
    glVertexAttribPointer(mAttribTexcoords, 2, GL_FLOAT, GL_FALSE, 0, mTexcoords);
    glEnableVertexAttribArray(mAttribTexcoords);
    glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);

    glDisableVertexAttribArray(mAttribTexcoords);
    glDisableVertexAttribArray(mAttribVertices);
    glActiveTexture(GL_TEXTURE2);
    glBindTexture(GL_TEXTURE_2D, 0);
    glActiveTexture(GL_TEXTURE1);
    glBindTexture(GL_TEXTURE_2D, 0);
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, 0);
    glUseProgram(0);
    glBindFramebuffer(GL_FRAMEBUFFER, 0); // kept: framebuffer-0
}

void ShallowWaterRenderer::GLContextDestroyed() {
    tidalume::abandonPrograms(mPrograms); // kept: stale-names
}

ShallowWaterRenderer* createShallowWaterRenderer() {
    return new ShallowWaterRenderer();
}
