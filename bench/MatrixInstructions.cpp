#include "bench/Benchmarks.h"
#include "bench/Child.h"
#include "math/Matrix.h"
#include "testing/TemporaryFolder.h"

#include <string>
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
void count(const std::string& name, Action action) {
    section(name.c_str(), [&] {
        for (int i = 0; i < repetitions; ++i) {
            Result result; // NOLINT(cppcoreguidelines-pro-type-member-init): zeroing it would be counted
            use(result);
            action(result);
            use(result);
        }
    });
}

template <typename Library, typename Glm>
void countBoth(const std::string& name, Library library, Glm glm) {
    count<Matrix>(name, library);
    count<glm::mat4>(name + " glm", glm);
}

using glm::mat4;
using glm::vec3;

// The library's functions are behind a call, so glm's are put behind one too.
#define GLM_CALL(name, parameters, expression)                                                                         \
    [[gnu::noipa]] void name parameters {                                                                              \
        m = expression;                                                                                                \
    }
#define BOUNDS (mat4 & m, float l, float r, float b, float t, float zn, float zf)
GLM_CALL(glmMul, (mat4 & m, const mat4& a, const mat4& b), b* a)
GLM_CALL(glmIdentity, (mat4 & m), mat4(1.0F))
GLM_CALL(glmTranslate, (mat4 & m, float x, float y, float z), glm::translate(mat4(1.0F), vec3(x, y, z)) * m)
GLM_CALL(glmScale, (mat4 & m, float x, float y, float z), glm::scale(mat4(1.0F), vec3(x, y, z)) * m)
GLM_CALL(glmRotationY, (mat4 & m, float degrees),
         glm::rotate(mat4(1.0F), glm::radians(degrees), vec3(0.0F, 1.0F, 0.0F)))
GLM_CALL(glmPerspectiveLH, (mat4 & m, float fovY, float aspect, float zn, float zf),
         glm::perspectiveLH_ZO(fovY, aspect, zn, zf))
GLM_CALL(glmFrustumLH, BOUNDS, glm::frustumLH_ZO(l, r, b, t, zn, zf))
GLM_CALL(glmFrustumRH, BOUNDS, glm::frustumRH_ZO(l, r, b, t, zn, zf))
GLM_CALL(glmOrthoLH, BOUNDS, glm::orthoLH_ZO(l, r, b, t, zn, zf))
GLM_CALL(glmOrthoRH, BOUNDS, glm::orthoRH_ZO(l, r, b, t, zn, zf))
GLM_CALL(glmLookAtLH, (mat4 & m, const vec3& eye, const vec3& at, const vec3& up), glm::lookAtLH(eye, at, up))
GLM_CALL(glmLookAtRH, (mat4 & m, const vec3& eye, const vec3& at, const vec3& up), glm::lookAtRH(eye, at, up))

[[gnu::noipa]] void glmTransform(const mat4& m, vec3& out, const vec3& in) {
    const glm::vec4 p = m * glm::vec4(in, 1.0F);
    out = vec3(p) / p.w;
}

} // namespace

void callMatrices() {
    Matrix a = {};
    Matrix b = {};
    a.RotationY(30.0F);
    b.PerspectiveFovLH(1.0F, 0.5F, 1.0F, 100.0F);
    const mat4 glmA(1.0F);
    const mat4 glmB(2.0F);
    vec3 eye(1.0F, 2.0F, 3.0F);
    vec3 at(0.0F, 0.5F, 0.0F);
    vec3 up(0.0F, 1.0F, 0.0F);
    vec3 out(0.0F);
    const float l = -1.0F;
    const float r = 2.0F;
    const float bottom = -3.0F;
    const float t = 4.0F;
    const float zn = 0.5F;
    const float zf = 10.0F;

    countBoth(
        "mul", [&](Matrix& m) { m.mul(&a, &b); }, [&](mat4& m) { glmMul(m, glmA, glmB); });
    countBoth(
        "setIdentity", [&](Matrix& m) { m.setIdentity(); }, [&](mat4& m) { glmIdentity(m); });
    countBoth(
        "AppendTranslate", [&](Matrix& m) { m.AppendTranslate(l, r, t); }, [&](mat4& m) { glmTranslate(m, l, r, t); });
    countBoth(
        "AppendScale", [&](Matrix& m) { m.AppendScale(l, r, t); }, [&](mat4& m) { glmScale(m, l, r, t); });
    countBoth(
        "RotationY", [&](Matrix& m) { m.RotationY(zf); }, [&](mat4& m) { glmRotationY(m, zf); });
    countBoth(
        "PerspectiveFovLH", [&](Matrix& m) { m.PerspectiveFovLH(r, t, zn, zf); },
        [&](mat4& m) { glmPerspectiveLH(m, r, t, zn, zf); });
    countBoth(
        "PerspectiveOffCenterLH", [&](Matrix& m) { m.PerspectiveOffCenterLH(l, r, bottom, t, zn, zf); },
        [&](mat4& m) { glmFrustumLH(m, l, r, bottom, t, zn, zf); });
    countBoth(
        "PerspectiveOffCenterRH", [&](Matrix& m) { m.PerspectiveOffCenterRH(l, r, bottom, t, zn, zf); },
        [&](mat4& m) { glmFrustumRH(m, l, r, bottom, t, zn, zf); });
    countBoth(
        "OrthoOffCenterLH", [&](Matrix& m) { m.OrthoOffCenterLH(l, r, bottom, t, zn, zf); },
        [&](mat4& m) { glmOrthoLH(m, l, r, bottom, t, zn, zf); });
    countBoth(
        "OrthoOffCenterRH", [&](Matrix& m) { m.OrthoOffCenterRH(l, r, bottom, t, zn, zf); },
        [&](mat4& m) { glmOrthoRH(m, l, r, bottom, t, zn, zf); });
    countBoth(
        "LookAtLH", [&](Matrix& m) { m.LookAtLH(&eye.x, &at.x, &up.x); },
        [&](mat4& m) { glmLookAtLH(m, eye, at, up); });
    countBoth(
        "LookAtRH", [&](Matrix& m) { m.LookAtRH(&eye.x, &at.x, &up.x); },
        [&](mat4& m) { glmLookAtRH(m, eye, at, up); });
    countBoth(
        "mulVector3", [&](Matrix&) { a.mulVector3(&out.x, &eye.x); }, [&](mat4&) { glmTransform(glmA, out, eye); });
}

void countMatrixInstructions(Results& results) {
    const test::TemporaryFolder counts;
    runSelf(callgrind(counts.path()), "--matrices");
    results.matrices = readCounts(counts.path());
}

} // namespace tidalume::bench
