#include "looks/Look.h"

#include "looks/LookImplementation.h"

#include <android/log.h>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace tidalume {

namespace {

constexpr char logTag[] = "Look";
constexpr double stepsPerSecond = 60;
// A part of a step ahead, so that a display of 60 Hz whose frames come a little early or late gets one step for each;
// no more than that, so that one of 120 Hz gets its steps with the frames that one of 60 Hz has, and touches with them.
constexpr double headStart = 0.25;
// A machine that needs longer for a frame than these steps take could never catch up.
constexpr double maxSteps = 4;

bool isIn(const Parameter& parameter, float value) {
    const bool isChoice = parameter.choices.size > 0;
    return value >= parameter.minimum && value <= parameter.maximum && (!isChoice || value == std::floor(value));
}

template <typename Row>
int indexOf(const Span<Row>& rows, const char* name) {
    for (std::size_t i = 0; i < rows.size; ++i) {
        if (std::strcmp(rows[i].name, name) == 0) return static_cast<int>(i);
    }
    __android_log_print(ANDROID_LOG_ERROR, logTag, "there is no parameter or preset %s", name);
    return -1;
}

// Some drivers answer a texture that is too large by ending the process.
bool hasTexturesOf(int width, int height) {
    GLint limit = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &limit);
    if (limit <= 0 || std::max(width, height) <= limit) return true;
    __android_log_print(ANDROID_LOG_ERROR, logTag, "%d x %d is beyond this driver's textures, which end at %d", width,
                        height, limit);
    return false;
}

// What a host may have left, and a pass over the whole surface cannot do with.
void prepareState() {
    glBindVertexArray(0);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
    for (const GLenum capability : {GL_SCISSOR_TEST, GL_STENCIL_TEST, GL_DEPTH_TEST, GL_BLEND, GL_CULL_FACE})
        glDisable(capability);
    glDisable(GL_RASTERIZER_DISCARD);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    for (const GLuint unit : {0U, 1U, 2U})
        glBindSampler(unit, 0);
    for (const GLuint array : {0U, 1U})
        glVertexAttribDivisor(array, 0);
    glBindBuffer(GL_PIXEL_UNPACK_BUFFER, 0);
    for (const GLenum zero : {GL_UNPACK_ROW_LENGTH, GL_UNPACK_SKIP_ROWS, GL_UNPACK_SKIP_PIXELS})
        glPixelStorei(zero, 0);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
}

// Some effects leave more than others; a look leaves the same whichever it has used.
void leaveState(GLuint framebuffer, int width, int height) {
    glDisable(GL_BLEND);
    glBlendEquation(GL_FUNC_ADD);
    glClearColor(0, 0, 0, 0);
    glUseProgram(0);
    for (const GLuint array : {0U, 1U})
        glDisableVertexAttribArray(array);
    for (const GLenum unit : {GL_TEXTURE2, GL_TEXTURE1, GL_TEXTURE0}) {
        glActiveTexture(unit);
        glBindTexture(GL_TEXTURE_2D, 0);
    }
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    glViewport(0, 0, width, height);
}

} // namespace

LookImplementation::LookImplementation(Span<Parameter> parameters, Span<Preset> presets)
    : mParameters(parameters), mPresets(presets) {
    for (const Parameter& parameter : parameters)
        mValues.push_back(parameter.initial);
}

// How many steps are due, which are then taken for run.
int LookImplementation::takeSteps(double seconds) {
    const double due = std::floor((seconds - mStart) * stepsPerSecond + headStart) - mSteps;
    if (mClockRuns && due >= 0 && due <= maxSteps) {
        mSteps += due;
        return static_cast<int>(due);
    }
    mClockRuns = std::isfinite(seconds);
    mStart = seconds;
    mSteps = 0;
    return 1;
}

// As the system takes them away, where nothing can be touched any more.
void LookImplementation::liftFingers() {
    for (int finger = 0; finger < Look::FINGERS; ++finger) {
        if (mIsDown[finger]) touch(finger, 0, 0, TouchPhase::Cancel);
        mIsDown[finger] = false;
    }
}

Look::Look(std::unique_ptr<LookImplementation> implementation) : mImplementation(std::move(implementation)) {}

Look::~Look() = default;

void Look::contextCreated() {
    LookImplementation& look = *mImplementation;
    if (look.mHasContext) return;
    look.createPrograms();
    look.mHasContext = look.mHasNews = true;
}

void Look::contextLost() {
    LookImplementation& look = *mImplementation;
    look.abandon();
    look.mHasContext = look.mFits = false;
    look.mHasNews = true;
    std::fill_n(look.mIsDown, FINGERS, false);
}

void Look::setSize(int width, int height) {
    LookImplementation& look = *mImplementation;
    if (look.mWidth == width && look.mHeight == height) return;
    if (width < 1 || height < 1) look.liftFingers();
    look.mWidth = width;
    look.mHeight = height;
    look.mFits = false;
    look.mHasNews = true;
}

void Look::touch(int finger, float x, float y, TouchPhase phase) {
    LookImplementation& look = *mImplementation;
    if (finger < 0 || finger >= FINGERS || !std::isfinite(x) || !std::isfinite(y)) return;
    bool& isDown = look.mIsDown[finger];
    if (look.mWidth < 1 || look.mHeight < 1 || (!isDown && phase != TouchPhase::Down)) return;
    isDown = phase == TouchPhase::Down || phase == TouchPhase::Move;
    look.touch(finger, x, y, phase);
    look.mHasNews = true;
}

void Look::draw(double seconds, GLuint framebuffer) {
    LookImplementation& look = *mImplementation;
    if (!look.mHasContext || look.mWidth < 1 || look.mHeight < 1) return;
    if (!look.mFits && !hasTexturesOf(look.mWidth, look.mHeight)) {
        setSize(0, 0);
        return;
    }
    prepareState();
    if (!look.mFits) look.fitSurface();
    look.mFits = true;
    const int steps = look.takeSteps(seconds);
    for (int i = 0; i < steps; ++i)
        look.step();
    if (steps > 0) look.mHasNews = false;
    look.draw(framebuffer);
    leaveState(framebuffer, look.mWidth, look.mHeight);
}

bool Look::isMoving() const {
    const LookImplementation& look = *mImplementation;
    const bool isShown = look.mWidth >= 1 && look.mHeight >= 1;
    return isShown && (look.mHasNews || look.isMoving());
}

LookImplementation& Look::change() {
    mImplementation->mHasNews = true;
    return *mImplementation;
}

void Look::setSeed(std::uint32_t seed) {
    mImplementation->mRandom = Random(seed);
}

Span<Parameter> Look::parameters() const {
    return mImplementation->mParameters;
}

bool Look::set(int parameter, float value) {
    LookImplementation& look = *mImplementation;
    if (parameter < 0 || static_cast<std::size_t>(parameter) >= look.mValues.size()) return false;
    const auto index = static_cast<std::size_t>(parameter);
    const Parameter& row = look.mParameters[index];
    if (!isIn(row, value)) {
        __android_log_print(ANDROID_LOG_ERROR, logTag, "%s: %g is not %s%g to %g", row.name, static_cast<double>(value),
                            row.choices.size > 0 ? "a whole number from " : "in ", static_cast<double>(row.minimum),
                            static_cast<double>(row.maximum));
        return false;
    }
    look.mValues[index] = value;
    look.mHasNews = true;
    return true;
}

bool Look::set(const char* parameter, float value) {
    return set(indexOf(mImplementation->mParameters, parameter), value);
}

float Look::get(int parameter) const {
    const std::vector<float>& values = mImplementation->mValues;
    return parameter < 0 || static_cast<std::size_t>(parameter) >= values.size() ? 0
                                                                                 : mImplementation->value(parameter);
}

Span<Preset> Look::presets() const {
    return mImplementation->mPresets;
}

bool Look::usePreset(const char* name) {
    LookImplementation& look = *mImplementation;
    const int index = indexOf(look.mPresets, name);
    if (index < 0) return false;
    for (std::size_t i = 0; i < look.mValues.size(); ++i)
        look.mValues[i] = look.mParameters[i].initial;
    for (const Setting& setting : look.mPresets[static_cast<std::size_t>(index)].settings)
        set(setting.parameter, setting.value);
    look.mHasNews = true;
    return true;
}

} // namespace tidalume
