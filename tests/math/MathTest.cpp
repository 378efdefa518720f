#include "math/Matrix.h"
#include "math/ScreenMapping.h"
#include "math/Vector2.h"
#include "math/Vector3.h"

#include <array>
#include <cmath>
#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace {

using testing::ElementsAre;
using testing::FloatNear;
using testing::Pointwise;

using Point = std::array<float, 3>;

Point transformed(Matrix matrix, Point point) {
    matrix.mulVector3(point.data(), point.data());
    return point;
}

void expectNear(const Point& actual, const Point& expected, float tolerance) {
    EXPECT_THAT(actual, Pointwise(FloatNear(tolerance), expected));
}

Matrix randomMatrix(std::mt19937& random) {
    std::uniform_real_distribution<float> element(-2.0F, 2.0F);
    Matrix matrix;
    for (float& m : matrix.m)
        m = element(random);
    return matrix;
}

bool sameBits(const Matrix& a, const Matrix& b) {
    return std::memcmp(a.m, b.m, sizeof(a.m)) == 0;
}

TEST(Matrix, ProductAppliesTheFirstArgumentFirst) {
    std::mt19937 random(1);
    for (int i = 0; i < 1000; ++i) {
        Matrix a = randomMatrix(random);
        Matrix b = randomMatrix(random);
        Matrix product;
        product.mul(&a, &b);
        for (int r = 0; r < 4; ++r) {
            for (int c = 0; c < 4; ++c) {
                double sum = 0.0;
                for (int k = 0; k < 4; ++k)
                    sum += static_cast<double>(b.m[4 * r + k]) * static_cast<double>(a.m[4 * k + c]);
                EXPECT_NEAR(static_cast<double>(product.m[4 * r + c]), sum, 4e-6);
            }
        }
        Matrix inA = a;
        inA.mul(&inA, &b);
        Matrix inB = b;
        inB.mul(&a, &inB);
        ASSERT_TRUE(sameBits(product, inA) && sameBits(product, inB)) << "in place gives the same bits";
    }
    // Rounding tells the order of the sum: only from the front does 1e8 swallow the 1 before it is taken away again.
    Matrix rows = {{1e8F, 1.0F, -1e8F, 1.0F}};
    Matrix ones;
    std::fill(std::begin(ones.m), std::end(ones.m), 1.0F);
    Matrix product;
    product.mul(&ones, &rows);
    EXPECT_EQ(product.m[0], 1.0F);
}

TEST(Matrix, AppendsAfterWhatItAlreadyDoes) {
    Matrix matrix;
    matrix.setIdentity();
    matrix.AppendTranslate(1.0F, 2.0F, 3.0F);
    matrix.AppendScale(2.0F, 2.0F, 2.0F);
    EXPECT_THAT(transformed(matrix, {1.0F, 1.0F, 1.0F}), ElementsAre(4.0F, 6.0F, 8.0F));
    EXPECT_THAT(matrix.m, ElementsAre(2, 0, 0, 2, 0, 2, 0, 4, 0, 0, 2, 6, 0, 0, 0, 1));
}

TEST(Matrix, RotatesAboutY) {
    Matrix matrix;
    matrix.RotationY(0.0F);
    Matrix identity;
    identity.setIdentity();
    EXPECT_THAT(matrix.m, Pointwise(FloatNear(0.0F), identity.m));
    // 0.01745328 radians to the degree, not the nearest float to pi / 180: 90 degrees fall short by 1.2e-6.
    matrix.RotationY(90.0F);
    expectNear(transformed(matrix, {1.0F, 5.0F, 0.0F}), {1.15e-6F, 5.0F, 1.0F}, 1e-7F);
    expectNear(transformed(matrix, {0.0F, 5.0F, 1.0F}), {-1.0F, 5.0F, 1.15e-6F}, 1e-7F);
    matrix.RotationY(360000.0F);
    EXPECT_NEAR(matrix.m[8], std::sin(static_cast<double>(360000.0F * 0.01745328F)), 1e-7);
    EXPECT_LT(matrix.m[8], -0.002F);
}

/// Points of the near and the far plane and their corners land where a projection must put them.
TEST(Matrix, ProjectionsMapTheirVolumeToTheClipVolume) {
    std::mt19937 random(2);
    std::uniform_real_distribution<float> bound(0.5F, 4.0F);
    for (int i = 0; i < 200; ++i) {
        const float l = -bound(random);
        const float r = bound(random);
        const float b = -bound(random);
        const float t = bound(random);
        const float zn = bound(random);
        const float zf = zn + bound(random);
        Matrix matrix;

        for (const float side : {1.0F, -1.0F}) {
            if (side > 0) {
                matrix.PerspectiveOffCenterLH(l, r, b, t, zn, zf);
            } else {
                matrix.PerspectiveOffCenterRH(l, r, b, t, zn, zf);
            }
            const float f = zf / zn;
            expectNear(transformed(matrix, {l, b, side * zn}), {-1.0F, -1.0F, 0.0F}, 1e-5F);
            expectNear(transformed(matrix, {r, t, side * zn}), {1.0F, 1.0F, 0.0F}, 1e-5F);
            expectNear(transformed(matrix, {l * f, t * f, side * zf}), {-1.0F, 1.0F, 1.0F}, 1e-5F);
        }
        matrix.OrthoOffCenterLH(l, r, b, t, zn, zf);
        expectNear(transformed(matrix, {l, t, zn}), {-1.0F, 1.0F, 0.0F}, 1e-5F);
        expectNear(transformed(matrix, {r, b, zf}), {1.0F, -1.0F, 1.0F}, 1e-5F);
        // The right-handed parallel projection moves x the other way: by 2 (r + l) / (r - l) more.
        matrix.OrthoOffCenterRH(l, r, b, t, zn, zf);
        const float moved = 2.0F * (r + l) / (r - l);
        expectNear(transformed(matrix, {l, t, -zn}), {-1.0F + moved, 1.0F, 0.0F}, 1e-5F);
        expectNear(transformed(matrix, {r, b, -zf}), {1.0F + moved, -1.0F, 1.0F}, 1e-5F);
    }
    Matrix matrix;
    matrix.PerspectiveFovLH(1.0F, 2.0F, 1.0F, 3.0F);
    EXPECT_EQ(matrix.m[0], matrix.m[5] / 2.0F);
    expectNear(transformed(matrix, {0.0F, std::tan(0.5F), 1.0F}), {0.0F, 1.0F, 0.0F}, 1e-6F);
    expectNear(transformed(matrix, {0.0F, 0.0F, 3.0F}), {0.0F, 0.0F, 1.0F}, 1e-6F);
}

TEST(Matrix, ViewsPutTheEyeAtTheOriginAndLookAlongZ) {
    std::mt19937 random(3);
    std::uniform_real_distribution<float> coordinate(-5.0F, 5.0F);
    for (int i = 0; i < 200; ++i) {
        Point eye = {coordinate(random), coordinate(random), coordinate(random)};
        Point at = {coordinate(random), coordinate(random), coordinate(random)};
        Point up = {0.0F, 1.0F, 0.0F};
        const float distance = std::hypot(at[0] - eye[0], at[1] - eye[1], at[2] - eye[2]);
        if (std::hypot(at[0] - eye[0], at[2] - eye[2]) < 0.1F) continue;
        Matrix matrix;
        for (const float side : {1.0F, -1.0F}) {
            if (side > 0) {
                matrix.LookAtLH(eye.data(), at.data(), up.data());
            } else {
                matrix.LookAtRH(eye.data(), at.data(), up.data());
            }
            expectNear(transformed(matrix, eye), {0.0F, 0.0F, 0.0F}, 1e-4F);
            expectNear(transformed(matrix, at), {0.0F, 0.0F, side * distance}, 1e-4F);
            const Point above = transformed(matrix, {eye[0], eye[1] + 1.0F, eye[2]});
            EXPECT_NEAR(above[0], 0.0F, 1e-4F);
            EXPECT_GT(above[1], 0.0F);
        }
    }
    Point eye = {1.0F, 2.0F, 3.0F};
    Point up = {0.0F, 1.0F, 0.0F};
    Matrix matrix;
    matrix.LookAtRH(eye.data(), eye.data(), up.data());
    EXPECT_THAT(matrix.m, ElementsAre(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1))
        << "axes that nothing determines";
}

TEST(ScreenMapping, PutsPixelsOnTheWholeScreen) {
    Matrix view;
    Matrix mvp;
    tidalume::buildOrtho(tidalume::screenCamera(1080.0F, 1920.0F), &view, &mvp);
    expectNear(transformed(mvp, {0.0F, 0.0F, 0.0F}), {-1.0F, 1.0F, 0.5F}, 1e-6F);
    expectNear(transformed(mvp, {1080.0F, 1920.0F, 0.0F}), {1.0F, -1.0F, 0.5F}, 1e-6F);
    expectNear(transformed(mvp, {540.0F, 480.0F, 0.0F}), {0.0F, 0.5F, 0.5F}, 1e-6F);

    float quad[12];
    tidalume::setQuad(quad, 1.0F, 2.0F, 3.0F, 4.0F);
    EXPECT_THAT(quad, ElementsAre(1, 4, 0, 3, 4, 0, 1, 2, 0, 3, 2, 0));
}

template <typename Vector>
class VectorTest : public testing::Test {};
using Vectors = testing::Types<Vector2, Vector3>;
TYPED_TEST_SUITE(VectorTest, Vectors);

TYPED_TEST(VectorTest, NormalisesInPlaceAndLeavesZeroAlone) {
    std::mt19937 random(4);
    std::normal_distribution<float> coordinate(0.0F, 10.0F);
    for (int i = 0; i < 1000; ++i) {
        TypeParam v;
        float* components = &v.x;
        for (size_t k = 0; k < sizeof(v) / sizeof(float); ++k)
            components[k] = coordinate(random);
        TypeParam unit = v;
        unit.normalize();
        EXPECT_NEAR(TypeParam::length(&unit.x), 1.0F, 2e-7F);
        EXPECT_NEAR(TypeParam::dot(&unit.x, &v.x), TypeParam::length(&v.x), 1e-5F);
    }
    TypeParam zero;
    TypeParam kept = TypeParam() + zero;
    kept.x = 7.0F;
    TypeParam::normalize(&kept.x, &zero.x);
    EXPECT_EQ(kept.x, 7.0F);
    zero.normalize();
    EXPECT_EQ(zero.x, 0.0F);
}

TYPED_TEST(VectorTest, AddsIntoItselfAndReturnsACopy) {
    TypeParam a;
    TypeParam b;
    a.x = 1.0F;
    b.x = 2.0F;
    auto copy = (a += b);
    copy += b;
    EXPECT_EQ(a.x, 3.0F);
    EXPECT_EQ(copy.x, 5.0F);
    EXPECT_EQ((a - b).x, 1.0F);
    EXPECT_EQ((a * 2.0F).x, 6.0F);
    EXPECT_EQ((a / 0.0F).x, std::numeric_limits<float>::infinity());
}

/// 5 / 3 and 5 * (1 / 3) are different floats: only the three-component vector goes through the reciprocal.
TEST(Vectors, RoundQuotientsInTheirOwnWay) {
    const float direct = 5.0F / 3.0F;
    const float reciprocal = 5.0F * (1.0F / 3.0F);
    ASSERT_NE(direct, reciprocal);
    EXPECT_EQ((Vector2(5.0F, 0.0F) / 3.0F).x, direct);
    EXPECT_EQ((Vector3(5.0F, 0.0F, 0.0F) / 3.0F).x, reciprocal);
}

TEST(Vectors, CrossProducts) {
    float right[2] = {1.0F, 0.0F};
    float up[2] = {0.0F, 1.0F};
    EXPECT_EQ(Vector2::cross(right, up), 1.0F);
    EXPECT_EQ(Vector2::cross(up, right), -1.0F);

    Vector3 a(1.0F, 2.0F, 3.0F);
    Vector3 b(-4.0F, 0.5F, 2.0F);
    Vector3 c(9.0F, 9.0F, 9.0F);
    c.cross(&a, &b);
    EXPECT_THAT((Point{c.x, c.y, c.z}), ElementsAre(2.5F, -14.0F, 8.5F));
    EXPECT_EQ(c.dot(&a), 0.0F);
    Vector3::cross(&a.x, &a.x, &b.x);
    EXPECT_THAT((Point{a.x, a.y, a.z}), ElementsAre(2.5F, -14.0F, 8.5F)) << "into its own operand";
}

} // namespace
