#include "effects/vector/VectorGraphicRenderer.h"

#include "foundation/ProgramTable.h"
#include "foundation/Quad.h"
#include "math/ScreenMapping.h"
#include "shaders/VectorGraphicRenderer.h"

#include <algorithm>
#include <iterator>

namespace shaders = tidalume::shaders::vectorGraphicRenderer;

const tidalume::ProgramTable VectorGraphicRenderer::mPrograms = {
    "VectorGraphicRenderer",
    "VectorGraphicRenderer Shader Init : %lf ms",
    {
        {&mProgramGradientFill,
         "VectorGraphicRendererProgramGradientFill",
         "createProgram mProgramGradientFill",
         shaders::gradientFillVertex,
         shaders::gradientFillFragment,
         {{&mGradientFillMatrixMVP, "matrixMVP"},
          {&mGradientFillReferencePosition, "referencePosition"},
          {&mGradientFillGradientBegin, "gradientBegin"},
          {&mGradientFillGradientBeginColor, "gradientBeginColor"},
          {&mGradientFillGradientEnd, "gradientEnd"},
          {&mGradientFillGradientEndColor, "gradientEndColor"}},
         {{&mGradientFillVertices, "vertices"}}},
        {&mProgramBitmap,
         "VectorGraphicRendererProgramBitmap",
         "createProgram mProgramBitmap",
         shaders::bitmapVertex,
         shaders::bitmapFragment,
         {{&mBitmapMatrixMVP, "matrixMVP"}, {&mBitmapTexture, "textureBitmap"}},
         {{&mBitmapVertices, "vertices"}, {&mBitmapTexcoords, "texcoords"}}},
        {&mProgramAlphaMaskedBitmap,
         "VectorGraphicRendererProgramAlphaMaskedBitmap",
         "createProgram mProgramAlphaMaskedBitmap",
         shaders::alphaMaskedBitmapVertex,
         shaders::alphaMaskedBitmapFragment,
         {{&mAlphaMaskedBitmapMatrixMVP, "matrixMVP"},
          {&mAlphaMaskedBitmapTexture, "textureBitmap"},
          {&mAlphaMaskedBitmapMaskTexture, "textureMask"}},
         {{&mAlphaMaskedBitmapVertices, "vertices"}, {&mAlphaMaskedBitmapTexcoords, "texcoords"}}},
        {&mProgramCircle,
         "VectorGraphicRendererProgramCircle",
         "createProgram mProgramCircle",
         shaders::circleVertex,
         shaders::circleFragment,
         {{&mCircleColor, "color"}},
         {{&mCircleVertices, "vertices"}}},
        {&mProgramBitmapCircle,
         "VectorGraphicRendererProgramBitmapCircle",
         "createProgram mProgramBitmapCircle",
         shaders::bitmapCircleVertex,
         shaders::bitmapCircleFragment,
         {{&mBitmapCircleBitmap, "bitmap"}, {&mBitmapCircleColor, "color"}, {&mBitmapCircleSize, "size"}},
         {{&mBitmapCircleVertices, "vertices"}}},
    },
};

namespace {

/// Texture coordinates of the lower-left, lower-right, upper-left and upper-right corner, by rotation code.
const float rotatedTexcoords[6][8] = {
    {0, 0, 1, 0, 0, 1, 1, 1}, // unrotated
    {1, 0, 1, 1, 0, 0, 0, 1}, // quarter turn clockwise
    {1, 1, 0, 1, 1, 0, 0, 0}, // half turn
    {0, 1, 0, 0, 1, 1, 1, 0}, // quarter turn counter-clockwise
    {0, 1, 1, 1, 0, 0, 1, 0}, // mirrored top to bottom
    {1, 0, 0, 0, 1, 1, 0, 1}, // mirrored left to right
};

void bindTexture(GLenum unit, GLuint texture) {
    glActiveTexture(unit);
    glBindTexture(GL_TEXTURE_2D, texture);
}

} // namespace

VectorGraphicRenderer::VectorGraphicRenderer() {
    rotateTexture(0);
    ++mInstanceCount;
}

VectorGraphicRenderer::~VectorGraphicRenderer() {
    if (--mInstanceCount == 0) tidalume::deletePrograms(mPrograms);
}

void VectorGraphicRenderer::init() {
    tidalume::buildPrograms(mPrograms);
    rotateTexture(0);
}

void VectorGraphicRenderer::setScreenSize(int width, int height) {
    mWidth = width;
    mHeight = height;
    mWidthF = static_cast<float>(width);
    mHeightF = static_cast<float>(height);
    tidalume::buildOrtho(tidalume::screenCamera(mWidthF, mHeightF), &mMatrixView, &mMatrixMVP);
    tidalume::setQuad(mVertices, 0.0F, 0.0F, mWidthF, mHeightF);
    tidalume::setQuad(mRectVertices, 0.0F, 0.0F, 1.0F, 1.0F); // kept: unused-quad
}

void VectorGraphicRenderer::GLContextDestroyed() {
    tidalume::abandonPrograms(mPrograms);
}

void VectorGraphicRenderer::setBlendEquation(int mode) {
    mBlendEquation = static_cast<GLenum>(mode);
}

void VectorGraphicRenderer::setBlendFunction(int srcRGB, int dstRGB, int srcAlpha, int dstAlpha) {
    mBlendSrcRGB = static_cast<GLenum>(srcRGB);
    mBlendDstRGB = static_cast<GLenum>(dstRGB);
    mBlendSrcAlpha = static_cast<GLenum>(srcAlpha);
    mBlendDstAlpha = static_cast<GLenum>(dstAlpha);
}

void VectorGraphicRenderer::setBlendColor(float r, float g, float b, float a) {
    mBlendColor[0] = r;
    mBlendColor[1] = g;
    mBlendColor[2] = b;
    mBlendColor[3] = a;
}

void VectorGraphicRenderer::setBlend() {
    glBlendEquation(mBlendEquation);
    // kept: alpha-squared
    glBlendFuncSeparate(mBlendSrcRGB, mBlendDstRGB, mBlendSrcAlpha, mBlendDstAlpha);
    glBlendColor(mBlendColor[0], mBlendColor[1], mBlendColor[2], mBlendColor[3]);
    glDisable(GL_DEPTH_TEST); // kept: depth-in-blend
}

void VectorGraphicRenderer::renderRadialGradient(float x, float y, float begin, float* beginColor, float end,
                                                 float* endColor) {
    beginDrawing(mProgramGradientFill);
    glUniformMatrix4fv(mGradientFillMatrixMVP, 1, GL_FALSE, mMatrixMVP.m);
    glUniform2f(mGradientFillReferencePosition, x, y);
    glUniform1f(mGradientFillGradientBegin, begin);
    glUniform4fv(mGradientFillGradientBeginColor, 1, beginColor);
    glUniform1f(mGradientFillGradientEnd, end);
    glUniform4fv(mGradientFillGradientEndColor, 1, endColor);

    glVertexAttribPointer(mGradientFillVertices, 3, GL_FLOAT, GL_FALSE, 0, mVertices);
    glEnableVertexAttribArray(mGradientFillVertices);
    glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);

    glDisableVertexAttribArray(mGradientFillVertices);
    endDrawing();
}

void VectorGraphicRenderer::renderCircle(float x, float y, float radius, float* color) {
    beginDrawing(mProgramCircle);
    glUniform4fv(mCircleColor, 1, color);
    drawDisc(mCircleVertices, x, y, radius + radius);

    glBindBuffer(GL_ARRAY_BUFFER, 0); // kept: bind-buffer. None is bound, since vertices come from native memory
    endDrawing();
}

void VectorGraphicRenderer::renderBitmapCircle(float x, float y, float diameter, float* color, unsigned int texture) {
    beginDrawing(mProgramBitmapCircle);
    glUniform4fv(mBitmapCircleColor, 1, color);
    glUniform2f(mBitmapCircleSize, mWidthF, mHeightF);
    glUniform1i(mBitmapCircleBitmap, 0);
    bindTexture(GL_TEXTURE0, texture);
    drawDisc(mBitmapCircleVertices, x, y, diameter); // kept: diameter

    glBindTexture(GL_TEXTURE_2D, 0);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    endDrawing();
}

void VectorGraphicRenderer::renderBitmapRectangle(float x, float y, float width, float height, unsigned int texture) {
    beginDrawing(mProgramBitmap);
    glUniformMatrix4fv(mBitmapMatrixMVP, 1, GL_FALSE, mMatrixMVP.m);
    glUniform1i(mBitmapTexture, 0);
    bindTexture(GL_TEXTURE0, texture);
    drawRectangle(mBitmapVertices, mBitmapTexcoords, x, y, width, height); // kept: texture-left
    endDrawing();
}

void VectorGraphicRenderer::renderRotatedBitmapRectangle(float x, float y, float width, float height,
                                                         unsigned int texture, int rotation) {
    rotateTexture(rotation);
    renderBitmapRectangle(x, y, width, height, texture);
    rotateTexture(0);
}

void VectorGraphicRenderer::renderAlphaMaskedBitmapRectangle(float x, float y, float width, float height, int texture,
                                                             int mask) {
    beginDrawing(mProgramAlphaMaskedBitmap);
    glUniformMatrix4fv(mAlphaMaskedBitmapMatrixMVP, 1, GL_FALSE, mMatrixMVP.m);
    glUniform1i(mAlphaMaskedBitmapTexture, 0);
    bindTexture(GL_TEXTURE0, static_cast<GLuint>(texture));
    glUniform1i(mAlphaMaskedBitmapMaskTexture, 1);
    bindTexture(GL_TEXTURE1, static_cast<GLuint>(mask));
    drawRectangle(mAlphaMaskedBitmapVertices, mAlphaMaskedBitmapTexcoords, x, y, width, height);

    glBindTexture(GL_TEXTURE_2D, 0);
    bindTexture(GL_TEXTURE0, 0);
    endDrawing();
}

// kept: rotation-place
void VectorGraphicRenderer::renderRotatedAlphaMaskedBitmapRectangle(float x, float y, float width, float height,
                                                                    int texture, int rotation, int mask) {
    rotateTexture(rotation);
    renderAlphaMaskedBitmapRectangle(x, y, width, height, texture, mask);
    rotateTexture(0);
}

void VectorGraphicRenderer::rotateTexture(int rotation) {
    if (rotation < 0 || rotation >= static_cast<int>(std::size(rotatedTexcoords))) return; // kept: rotation-code
    const float(&texcoords)[8] = rotatedTexcoords[rotation];
    std::copy(std::begin(texcoords), std::end(texcoords), mRectTexcoords);
}

void VectorGraphicRenderer::beginDrawing(GLuint program) {
    glViewport(0, 0, mWidth, mHeight);
    glEnable(GL_BLEND);
    setBlend();
    glUseProgram(program);
}

void VectorGraphicRenderer::endDrawing() {
    glUseProgram(0);
    glDisable(GL_BLEND);
}

void VectorGraphicRenderer::drawDisc(GLint vertices, float x, float y, float diameter) {
    // kept: disc-mapping
    mPointVertex[0] = static_cast<float>((static_cast<double>(x / mWidthF) - 0.5) * 2.0);
    mPointVertex[1] = static_cast<float>((0.5 - static_cast<double>(y / mHeightF)) * 2.0);
    mPointVertex[2] = diameter;
    glEnableVertexAttribArray(vertices); // kept: disc-array, enable-order
    glVertexAttribPointer(vertices, 3, GL_FLOAT, GL_FALSE, sizeof(mPointVertex), mPointVertex);
    glDrawArrays(GL_POINTS, 0, 1);
}

void VectorGraphicRenderer::drawRectangle(GLint vertices, GLint texcoords, float x, float y, float width,
                                          float height) {
    tidalume::setQuad(mRectVertices, x, y, x + width, y + height);
    glVertexAttribPointer(vertices, 3, GL_FLOAT, GL_FALSE, 0, mRectVertices);
    glVertexAttribPointer(texcoords, 2, GL_FLOAT, GL_FALSE, 0, mRectTexcoords);
    glEnableVertexAttribArray(vertices);
    glEnableVertexAttribArray(texcoords);
    glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);

    glDisableVertexAttribArray(texcoords);
    glDisableVertexAttribArray(vertices);
}

VectorGraphicRenderer* createVectorGraphicRenderer() {
    return new VectorGraphicRenderer();
}
