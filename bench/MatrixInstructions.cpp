#include "bench/Benchmarks.h"
#include "bench/Child.h"
#include "math/Matrix.h"

#include <algorithm>
#include <array>
#define GLM_FORCE_SILENT_WARNINGS
#include <glm/ext/matrix_clip_space.hpp>
#include <glm/ext/matrix_transform.hpp>
#include <valgrind/callgrind.h>

namespace tidalume::bench {
namespace {

template <typename Action>
void section(const char* name, Action action) {
    CALLGRIND_ZERO_STATS;
    action();
    CALLGRIND_DUMP_STATS_AT(name);
}

/// Keeps the compiler from leaving out what nobody reads, and from knowing what it computes with.
template <typename Value>
void use(Value& value) {
    asm volatile("" : : "r"(&value) : "memory");
}

constexpr int repetitions = 1000;

template <typename Result, typename Action>
void countMatrix(const char* name, Action action) {
    section(name, [&] {
        for (int i = 0; i < repetitions; ++i) {
            Result result; // NOLINT(cppcoreguidelines-pro-type-member-init): zeroing it would be counted
            use(result);
            action(result);
            use(result);
        }
    });
}

// The library's functions are behind a call, so glm's are put behind one too.
#define GLM_CALL(name, parameters, expression)                                                                         \
    [[gnu::noipa]] void name parameters {                                                                              \
        m = expression;                                                                                                \
    }
GLM_CALL(glmMul, (glm::mat4 & m, const glm::mat4& a, const glm::mat4& b), b* a)
GLM_CALL(glmLookAt, (glm::mat4 & m, const glm::vec3& eye, const glm::vec3& at, const glm::vec3& up),
         glm::lookAtRH(eye, at, up))
GLM_CALL(glmOrtho, (glm::mat4 & m, float l, float r, float b, float t, float zn, float zf),
         glm::orthoRH_ZO(l, r, b, t, zn, zf))
GLM_CALL(glmFrustum, (glm::mat4 & m, float l, float r, float b, float t, float zn, float zf),
         glm::frustumRH_ZO(l, r, b, t, zn, zf))
GLM_CALL(glmPerspective, (glm::mat4 & m, float fovY, float aspect, float zn, float zf),
         glm::perspectiveLH_ZO(fovY, aspect, zn, zf))

} // namespace

void callMatrices() {
    Matrix a = {};
    Matrix b = {};
    a.RotationY(30.0F);
    b.PerspectiveFovLH(1.0F, 0.5F, 1.0F, 100.0F);
    glm::mat4 glmA(1.0F);
    glm::mat4 glmB(2.0F);
    glm::vec3 eye(1.0F, 2.0F, 3.0F);
    glm::vec3 at(0.0F, 0.5F, 0.0F);
    glm::vec3 up(0.0F, 1.0F, 0.0F);
    const float l = -1.0F;
    const float r = 2.0F;
    const float bottom = -3.0F;
    const float t = 4.0F;
    const float zn = 0.5F;
    const float zf = 10.0F;

    using glm::mat4;
    countMatrix<Matrix>("mul", [&](Matrix& m) { m.mul(&a, &b); });
    countMatrix<mat4>("mul glm", [&](mat4& m) { glmMul(m, glmA, glmB); });
    countMatrix<Matrix>("LookAtRH", [&](Matrix& m) { m.LookAtRH(&eye.x, &at.x, &up.x); });
    countMatrix<mat4>("LookAtRH glm", [&](mat4& m) { glmLookAt(m, eye, at, up); });
    countMatrix<Matrix>("OrthoOffCenterRH", [&](Matrix& m) { m.OrthoOffCenterRH(l, r, bottom, t, zn, zf); });
    countMatrix<mat4>("OrthoOffCenterRH glm", [&](mat4& m) { glmOrtho(m, l, r, bottom, t, zn, zf); });
    countMatrix<Matrix>("PerspectiveOffCenterRH",
                        [&](Matrix& m) { m.PerspectiveOffCenterRH(l, r, bottom, t, zn, zf); });
    countMatrix<mat4>("PerspectiveOffCenterRH glm", [&](mat4& m) { glmFrustum(m, l, r, bottom, t, zn, zf); });
    countMatrix<Matrix>("PerspectiveFovLH", [&](Matrix& m) { m.PerspectiveFovLH(r, t, zn, zf); });
    countMatrix<mat4>("PerspectiveFovLH glm", [&](mat4& m) { glmPerspective(m, r, t, zn, zf); });
}

void countMatrixInstructions(Results& results) {
    const TemporaryFolder counts;
    runSelf(callgrind(counts.path()), "--matrices");
    results.matrices = readCounts(counts.path());
}

} // namespace tidalume::bench
