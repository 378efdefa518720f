#include "math/Matrix.h"
#include "math/Vector2.h"
#include "math/Vector3.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <gmock/gmock.h>

namespace {

using namespace testing;

using Point = std::array<float, 3>;

Point transformed(Matrix matrix, Point point) {
    matrix.mulVector3(point.data(), point.data());
    return point;
}

/// What a builder makes of a matrix of NaN: an element that it leaves out shows.
template <typename... Parameters, typename... Arguments>
Matrix built(void (Matrix::*build)(Parameters...), Arguments... arguments) {
    Matrix matrix;
    std::fill_n(matrix.m, 16, NAN);
    (matrix.*build)(arguments...);
    return matrix;
}

TEST(Matrix, AppliesTheFirstArgumentOfMulFirst) {
    Matrix a = {{3, -1, 4, 1, -5, 9, 2, -6, 5, 3, -5, 8, -9, 7, 9, 3}};
    Matrix b = {{2, 3, -8, 4, 6, -2, 6, -4, -3, 1, 8, 3, -2, 7, -9, 5}};
    const int product[] = {-85, 29, 90, -68, 94, -34, -46, 54, -1, 57, -23, 64, -131, 73, 96, -101};
    EXPECT_THAT(built(&Matrix::mul, &a, &b).m, ElementsAreArray(product));
    a.mul(&a, &b);
    EXPECT_THAT(a.m, ElementsAreArray(product)) << "in place";

    Matrix appended = built(&Matrix::setIdentity);
    appended.AppendTranslate(1, 2, 3);
    appended.AppendScale(2, 3, 4);
    EXPECT_THAT(appended.m, ElementsAre(2, 0, 0, 2, 0, 3, 0, 6, 0, 0, 4, 12, 0, 0, 0, 1));
}

/// The right-handed builders look along -z; their parallel projection also moves x.
TEST(Matrix, PutsPointsWhereItsBuilderSays) {
    // Bounds whose quotients are exact; zf is 1.5 zn.
    constexpr float l = -1.5F, r = 2.5F, b = -1.25F, t = 0.75F, zn = 3, zf = 4.5F;
    // The direction of view is (2, 3, 6), of length 7; to its side, level, lies (6, 0, -2), of length 6.3245553.
    Point eye = {1, 2, 3}, at = {3, 5, 9}, up = {0, 1, 0};
    const Point beside = {7, 2, 1}, above = {1, 3, 3};
    for (const int right : {0, 1}) {
        const Matrix perspective =
            built(right ? &Matrix::PerspectiveOffCenterRH : &Matrix::PerspectiveOffCenterLH, l, r, b, t, zn, zf);
        const Matrix parallel =
            built(right ? &Matrix::OrthoOffCenterRH : &Matrix::OrthoOffCenterLH, l, r, b, t, zn, zf);
        const Matrix camera = built(right ? &Matrix::LookAtRH : &Matrix::LookAtLH, eye.data(), at.data(), up.data());
        const Matrix fov = built(&Matrix::PerspectiveFovLH, 2 * std::atan(0.5F), 2, 1, 3);
        const float z = right ? -1 : 1;
        const float moved = right * 2 * (r + l) / (r - l);
        const struct {
            const char* name;
            Matrix matrix;
            Point from, to;
            float tolerance = 1e-7F;
        } landings[] = {
            {"PerspectiveOffCenter", perspective, {l, b, z * zn}, {-1, -1, 0}},
            {"PerspectiveOffCenter", perspective, {1.5F * r, 1.5F * t, z * zf}, {1, 1, 1}},
            {"OrthoOffCenter", parallel, {l, t, z * zn}, {-1 + moved, 1, 0}},
            {"OrthoOffCenter", parallel, {r, b, z * zf}, {1 + moved, -1, 1}},
            {"LookAt", camera, at, {0, 0, z * 7}, 1e-6F},
            {"LookAt", camera, beside, {z * 6.3245553F, 0, 0}},
            {"LookAt", camera, above, {0, 6.3245553F / 7, z * 3 / 7}, 1e-6F},
            {"PerspectiveFovLH", fov, {3, -1.5F, 3}, {1, -1, 1}},
            // 0.01745328 radians to the degree, not the nearest float to pi / 180: 90 degrees fall short by 1.2e-6.
            {"RotationY", built(&Matrix::RotationY, 90), {1, 5, 0.5F}, {1.15e-6F - 0.5F, 5, 1.0000006F}},
        };
        for (const auto& [name, matrix, from, to, tolerance] : landings)
            EXPECT_THAT(transformed(matrix, from), Pointwise(FloatNear(tolerance), to)) << name << " " << right;
    }
}

template <typename Vector>
std::vector<float> components(const Vector& v) {
    return {&v.x, &v.x + sizeof(v) / sizeof(float)};
}

template <typename Vector>
Vector normalized(Vector v) {
    v.normalize();
    return v;
}

template <typename Vector>
void expectArithmetic(Vector v, float length, Vector unit) {
    EXPECT_EQ(components(v + v + v - v / 4), components(v * 2.75F));
    EXPECT_FLOAT_EQ(Vector::dot(&v.x, &unit.x), length);
    EXPECT_THAT(components(normalized(v)), Pointwise(FloatNear(1e-7F), components(unit)));
    Vector sum = v;
    Vector zero;
    Vector::normalize(&sum.x, &zero.x); // writes nothing
    (sum += v) += v;                    // the second time to a copy
    EXPECT_EQ(components(sum), components(v * 2));
}

TEST(Vectors, ArithmeticAndProducts) {
    expectArithmetic(Vector2(3, -4), 5, Vector2(0.6F, -0.8F));
    expectArithmetic(Vector3(2, -3, 6), 7, Vector3(2 / 7.0F, -3 / 7.0F, 6 / 7.0F));
    expectArithmetic(Vector3(0, 0, 1e-12F), 1e-12F, Vector3(0, 0, 1));
    Vector3 a(1, 2, 3), b(-4, 0.5F, 2), c(9, 9, 9);
    EXPECT_EQ(Vector2::cross(&a.x, &b.x), 8.5F);
    c.cross(&a, &b);
    EXPECT_THAT(components(c), ElementsAre(2.5F, -14, 8.5F));
    EXPECT_EQ(b.dot(&a), 3);
    Vector3::cross(&a.x, &a.x, &b.x); // into its own operand
    EXPECT_EQ(components(a), components(c));
}

/// Results that tell how a formula rounds: the stated form and the one that it is easily mistaken for differ.
TEST(Rounding, IsThatOfTheStatedForms) {
    constexpr float quotient = 5 / 3.0F;
    constexpr float throughReciprocal = 5 * (1 / 3.0F);
    // Volatile: the C library's functions, not what the compiler knows of them.
    volatile float radians = 100.3310546875F * 0.01745328F;
    const auto cosine = static_cast<float>(std::cos(double{radians}));
    const auto sine = static_cast<float>(std::sin(double{radians}));
    const Matrix rotation = built(&Matrix::RotationY, 100.3310546875F);
    const struct {
        const char* name;
        float actual, stated, other;
    } table[] = {
        {"Vector2 /", (Vector2(5, 0) / 3).x, quotient, throughReciprocal},
        {"Vector3 /", (Vector3(5, 0, 0) / 3).x, throughReciprocal, quotient},
        {"Vector2::normalize", normalized(Vector2(5, 5)).x, 5 / sqrtf(50), 1 / sqrtf(50) * 5},
        {"Vector3::normalize", normalized(Vector3(3, 3, 3)).x, 1 / sqrtf(27) * 3, 3 / sqrtf(27)},
        {"RotationY", rotation.m[0], cosine, cosf(radians)},
        {"RotationY", rotation.m[8], sine, sinf(radians)},
        {"PerspectiveFovLH", built(&Matrix::PerspectiveFovLH, 1, 1, 5, 8).m[11], -5 * 8 / 3.0F, -5 * (8 / 3.0F)},
    };
    for (const auto& [name, actual, stated, other] : table) {
        ASSERT_NE(stated, other) << name << " cannot tell";
        EXPECT_EQ(actual, stated) << name;
    }
    const Matrix division = {{5, 0, 0, 0, 0, 5, 0, 0, 0, 0, 5, 0, 0, 0, 0, 3}};
    EXPECT_THAT(transformed(division, {1, 1, 1}), Each(throughReciprocal)) << "mulVector3";
}

} // namespace
