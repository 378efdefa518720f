#include "bench/Stage.h"

#include "foundation/ProgramBuilder.h"
#include "headless/Pixels.h"
#include "testing/Noise.h"

#include <cstdlib>

namespace tidalume::bench {
namespace {

constexpr auto loopFragment = shaders::join(shaders::prologue, R"(
uniform vec4 balls[64];
uniform float fieldHeight;
out float outColor;

void main() {
    vec2 position = vec2(gl_FragCoord.x, fieldHeight - gl_FragCoord.y) - 120.0;
    float sum = 0.0;
    for (int i = 0; i < 64; ++i) {
        vec2 c = (position - balls[i].xy) / (balls[i].z * 1.2093284);
        float k = max(0.0, 1.0 - dot(c, c));
        sum += k * k;
    }
    outColor = sum;
}
)");

constexpr auto loopVertex = shaders::join(shaders::prologue, R"(
layout(location = 0) in vec2 vertices;

void main() {
    gl_Position = vec4(vertices, 0.0, 1.0);
}
)");

void fill(const Surface& surface) {
    const std::vector<float> values =
        test::noise(surface.texture, 3 * surface.width * surface.height, surface.lowest, surface.highest);
    glBindTexture(GL_TEXTURE_2D, surface.texture);
    glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, surface.width, surface.height, surface.format, GL_FLOAT, values.data());
    glBindTexture(GL_TEXTURE_2D, 0);
}

} // namespace

/// The bitmap's colours span half their range: a step of a driver's filter weights, 1/256, is less than one of 8 bits.
Stage::Stage(int width, int height)
    : mWidth(width), mHeight(height), mCenters{{0.3F * static_cast<float>(width), 0.6F * static_cast<float>(height)},
                                               {0.7F * static_cast<float>(width), 0.4F * static_cast<float>(height)}},
      mBitmap(headless::makeTexture(GL_RGBA8, width, height, test::noise(0, 4 * width * height, 0.25F, 0.75F))) {
    srand48(1);
    iterative.init();
    threeBuffers.init();
    intensity.init();
    normals.init();
    water.init();
    metaballs.init(1.0F);
    particles.init(1.0F);
    graphics.init();
    comets.init();

    iterative.setScreenSize(width, height);
    threeBuffers.setScreenSize(width, height);
    intensity.setScreenSize(width, height);
    normals.setScreenSize(width, height);
    water.setScreenSize(width, height);
    metaballs.setScreenSize(width, height);
    particles.setScreenSize(width, height);
    graphics.setScreenSize(width, height);
    comets.setScreenSize(width, height);

    water.setTexture(static_cast<int>(mBitmap));
    setBalls(64, 0.08F * static_cast<float>(width));
    comets.push(0.5F * static_cast<float>(width), 0.45F * static_cast<float>(height), 0);
    comets.render(0.95);
    for (const Surface& surface : surfaces())
        fill(surface);
    sets(Form::Library);
}

Stage::~Stage() {
    use(Form::Library);
    glDeleteTextures(1, &mBitmap);
    glDeleteProgram(mLoopProgram);
}

std::vector<Surface> Stage::surfaces() {
    std::vector<Surface> all;
    for (const GLuint texture : TestPeer::mTexturesWater(iterative))
        all.push_back({texture, GL_RG, mWidth, mHeight, -0.5F, 0.5F});
    for (const GLuint texture : TestPeer::mTexturesWater(threeBuffers))
        all.push_back({texture, GL_RED, mWidth, mHeight, -0.5F, 0.5F});
    all.push_back({intensity.getTexture(), GL_RED, mWidth, mHeight, -0.5F, 0.5F});
    all.push_back({normals.getTexture(), GL_RGB, mWidth, mHeight, 0.3F, 1.0F});
    all.push_back({metaballs.getTexture(), GL_RED, mWidth + 240, mHeight + 240, 0.0F, 1.0F});
    return all;
}

std::vector<ProgramTable> Stage::tables() {
    return {TestPeer::mPrograms(iterative), TestPeer::ownPrograms(threeBuffers), TestPeer::mPrograms(intensity),
            TestPeer::mPrograms(normals),   TestPeer::mPrograms(water),          TestPeer::mPrograms(metaballs),
            TestPeer::mPrograms(graphics),  TestPeer::mPrograms(comets)};
}

std::vector<ProgramSet>& Stage::sets(Form form) {
    std::optional<std::vector<ProgramSet>>& sets = mSets[static_cast<int>(form)];
    if (sets) return *sets;
    sets.emplace();
    for (const ProgramTable& table : tables()) {
        switch (form) {
        case Form::Library:
            sets->emplace_back(table);
            break;
        case Form::Plain:
            sets->emplace_back(table, reference::plain::programs);
            break;
        case Form::Floor:
            sets->emplace_back(table, reference::floors::programs);
            break;
        }
    }
    return *sets;
}

void Stage::use(Form form) {
    for (const ProgramSet& set : sets(form))
        set.putInPlace();
}

void Stage::setBalls(int count, float radius) {
    balls.clear();
    for (int i = 0; i < count; ++i) {
        const auto x = static_cast<float>(drand48()) * static_cast<float>(mWidth);
        const auto y = static_cast<float>(drand48()) * static_cast<float>(mHeight);
        balls.insert(balls.end(), {x, y, radius, 0.0F, 0.0F, 0.0F});
    }
}

std::vector<Operation> Stage::operations() {
    const auto width = static_cast<float>(mWidth);
    const auto height = static_cast<float>(mHeight);
    float* center = mCenters[0];
    float* center2 = mCenters[1];
    float* color = mColors[0];
    float* otherColor = mColors[1];
    const float radius = 0.1F * width;
    const auto pass = [this] {
        iterative.setIterationCount(1);
        iterative.update();
    };
    const auto frame = [this] {
        iterative.setIterationCount(8);
        iterative.update();
        normals.build(iterative.getTexture());
        water.render(iterative.getTexture(), normals.getTexture());
    };
    return {
        {"ShallowWaterIterative::update, a pass", 0.75, true, true, pass},
        {"ShallowWater::update, a step", 0.80, true, true, [this] { TestPeer::step(threeBuffers); }},
        {"NormalMapBuilder::build", 0.75, true, true, [this] { normals.build(iterative.getTexture()); }},
        {"ShallowWaterRenderer::render", 0.92, true, true,
         [this] { water.render(iterative.getTexture(), normals.getTexture()); }},
        {"water frame: 8 passes, normals, render", 0.75, true, true, frame},
        {"ShallowWaterIterative::addDrop", 1.0, false, true, [=] { iterative.addDrop(center, radius, 0.01F, 0.9F); }},
        {"ShallowWaterIterative::addDropLine", 1.0, false, true,
         [=] { iterative.addDropLine(center, center2, radius, 0.01F, 0.9F); }},
        {"ShallowWaterIterative::addHorizontalWave", 1.0, false, true,
         [=] { iterative.addHorizontalWave(0.5F * height, radius, 0.01F, radius, 2.0F, 0.9F); }},
        {"ShallowWater::addDrop", 1.0, false, true, [=] { threeBuffers.addDrop(center, radius, 0.1F); }},
        {"ShallowWater::addDropLine", 1.0, false, true,
         [=] {
             float left[2] = {-0.4F, 0.2F};
             float right[2] = {0.4F, -0.2F};
             threeBuffers.addDropLine(left, right, 0.3F, 0.1F);
         }},
        {"IntensityMapBuilder::addDropLine", 1.0, false, true,
         [=] { intensity.addDropLine(center, center2, radius, 0.1F, 0.0F); }},
        {"IntensityMapBuilder::addHorizontalWave", 1.0, false, true,
         [=] { intensity.addHorizontalWave(0.5F * height, radius, 0.1F, radius, 2.0F, 0.0F); }},
        {"Metaball2DRenderer::addMetaballs, 64 balls", 1.0, true, true,
         [this] { metaballs.addMetaballs(balls.data(), static_cast<unsigned int>(balls.size() / 6)); }},
        {"Metaball2DRenderer::render", 1.03, false, true, [=] { metaballs.render(color); }},
        {"VectorGraphicRenderer::renderRadialGradient", 0.90, true, true,
         [=] { graphics.renderRadialGradient(center[0], center[1], radius, color, height, otherColor); }},
        {"VectorGraphicRenderer::renderCircle", 1.03, false, true,
         [=] { graphics.renderCircle(center[0], center[1], radius, color); }},
        {"VectorGraphicRenderer::renderBitmapCircle", 1.03, false, true,
         [=] { graphics.renderBitmapCircle(center[0], center[1], 2.0F * radius, color, mBitmap); }},
        {"VectorGraphicRenderer::renderBitmapRectangle", 1.03, false, true,
         [=] { graphics.renderBitmapRectangle(0.1F * width, 0.1F * height, 0.8F * width, 0.8F * height, mBitmap); }},
        {"VectorGraphicRenderer::renderAlphaMaskedBitmapRectangle", 1.03, false, true,
         [=] {
             const auto texture = static_cast<int>(mBitmap);
             graphics.renderAlphaMaskedBitmapRectangle(0.1F * width, 0.1F * height, 0.8F * width, 0.8F * height,
                                                       texture, texture);
         }},
        {"CometRenderer::render", 0.0, false, false, [this] { comets.render(0.95); }},
    };
}

void Stage::sumBallsInFragments() {
    static const float quad[8] = {-1.0F, -1.0F, 1.0F, -1.0F, -1.0F, 1.0F, 1.0F, 1.0F};
    if (mLoopProgram == 0) mLoopProgram = createProgram(loopVertex, loopFragment);
    std::vector<float> uniforms;
    for (size_t i = 0; i < 64; ++i)
        uniforms.insert(uniforms.end(), {balls[6 * i], balls[6 * i + 1], balls[6 * i + 2], 0.0F});

    glBindFramebuffer(GL_FRAMEBUFFER, TestPeer::mFBONormal(metaballs));
    glViewport(0, 0, mWidth + 240, mHeight + 240);
    glUseProgram(mLoopProgram);
    glUniform4fv(glGetUniformLocation(mLoopProgram, "balls"), 64, uniforms.data());
    glUniform1f(glGetUniformLocation(mLoopProgram, "fieldHeight"), static_cast<float>(mHeight + 240));
    glVertexAttribPointer(0, 2, GL_FLOAT, GL_FALSE, 0, quad);
    glEnableVertexAttribArray(0);
    glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
    glDisableVertexAttribArray(0);
    glUseProgram(0);
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
}

} // namespace tidalume::bench
