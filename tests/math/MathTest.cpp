#include "math/Matrix.h"
#include "math/ScreenMapping.h"
#include "math/Vector2.h"
#include "math/Vector3.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
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

TEST(Matrix, ProductAppliesTheFirstArgumentFirst) {
    std::mt19937 random(1);
    for (int i = 0; i < 1000; ++i) {
        Matrix a = randomMatrix(random);
        Matrix b = randomMatrix(random);
        Matrix product;
        product.mul(&a, &b);
        for (int e = 0; e < 16; ++e) {
            double sum = 0.0;
            for (int k = 0; k < 4; ++k)
                sum += static_cast<double>(b.m[e / 4 * 4 + k]) * static_cast<double>(a.m[4 * k + e % 4]);
            EXPECT_NEAR(static_cast<double>(product.m[e]), sum, 4e-6);
        }
        Matrix inA = a;
        inA.mul(&inA, &b);
        b.mul(&a, &b);
        EXPECT_THAT(inA.m, ElementsAreArray(product.m)) << "in place";
        EXPECT_THAT(b.m, ElementsAreArray(product.m)) << "in place";
    }
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
    EXPECT_THAT(matrix.m, ElementsAre(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1));
    // 0.01745328 radians to the degree, not the nearest float to pi / 180: 90 degrees fall short by 1.2e-6.
    matrix.RotationY(90.0F);
    expectNear(transformed(matrix, {1.0F, 5.0F, 0.0F}), {1.15e-6F, 5.0F, 1.0F}, 1e-7F);
    expectNear(transformed(matrix, {0.0F, 5.0F, 1.0F}), {-1.0F, 5.0F, 1.15e-6F}, 1e-7F);
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
            const auto build = side > 0 ? &Matrix::PerspectiveOffCenterLH : &Matrix::PerspectiveOffCenterRH;
            (matrix.*build)(l, r, b, t, zn, zf);
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
            const auto build = side > 0 ? &Matrix::LookAtLH : &Matrix::LookAtRH;
            (matrix.*build)(eye.data(), at.data(), up.data());
            expectNear(transformed(matrix, eye), {0.0F, 0.0F, 0.0F}, 1e-4F);
            expectNear(transformed(matrix, at), {0.0F, 0.0F, side * distance}, 1e-4F);
            EXPECT_NEAR(matrix.m[1], 0.0F, 1e-7F) << "up is not to the side";
            Point y;
            Vector3::cross(y.data(), matrix.m + 8, matrix.m);
            EXPECT_THAT(y, ElementsAre(matrix.m[4], matrix.m[5], matrix.m[6])) << "as the product left it";
            EXPECT_GT(y[1], 0.0F);
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
        std::generate_n(&v.x, sizeof(v) / sizeof(float), [&] { return coordinate(random); });
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
    b.x = 2.0F;
    (a += b) += b;
    EXPECT_EQ(a.x, 2.0F) << "the second addition went into a copy";
    EXPECT_EQ((a * 3.0F - b).x, 4.0F);
    EXPECT_EQ((a / 0.0F).x, std::numeric_limits<float>::infinity());
}

template <typename Vector>
float xOfUnit(Vector v) {
    v.normalize();
    return v.x;
}

Matrix built(void (*build)(Matrix&)) {
    Matrix matrix;
    build(matrix);
    return matrix;
}

/// Results that tell how a formula rounds: the stated form and the one that it is easily mistaken for differ.
TEST(Rounding, IsThatOfTheStatedForms) {
    // Volatile, so that the compiler does not compute with more precision.
    volatile float three = 3.0F;
    volatile float five = 5.0F;
    volatile float eight = 8.0F;
    volatile float radians = 6.5234375F * 0.01745328F;
    volatile float radiansOfSine = 0.84375F * 0.01745328F;
    const float quotient = five / three;
    const float throughReciprocal = five * (1.0F / three);
    const float length2 = sqrtf(five * five + five * five);
    const float length3 = sqrtf(three * three + three * three + three * three);
    // Sums that come out so only from the front: 1e8 swallows a 1 that meets it.
    float summands[3] = {1e8F, -1e8F, 1.0F};
    float ones[3] = {1.0F, 1.0F, 1.0F};
    Matrix rows = {{1e8F, 1, -1e8F, 5, 1e8F, 1, -1e8F, 5, 1e8F, 1, -1e8F, 5, 1e8F, 1, -1e8F, 3}};
    Matrix allOnes = {{1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1}};
    Matrix product;
    product.mul(&allOnes, &rows);
    const Point divided = transformed(rows, {1.0F, 1.0F, 1.0F});

    struct Row {
        const char* name;
        float actual, stated, other;
    };
    const Row table[] = {
        {"Vector2 /", (Vector2(5.0F, 0.0F) / 3.0F).x, quotient, throughReciprocal},
        {"Vector3 /", (Vector3(5.0F, 0.0F, 0.0F) / 3.0F).x, throughReciprocal, quotient},
        {"Vector2::normalize", xOfUnit(Vector2(5.0F, 5.0F)), five / length2, 1.0F / length2 * five},
        {"Vector3::normalize", xOfUnit(Vector3(3.0F, 3.0F, 3.0F)), 1.0F / length3 * three, three / length3},
        {"Vector3::dot", Vector3::dot(summands, ones), 1.0F, 0.0F},
        {"mul", product.m[0], 5.0F, 6.0F},
        {"mulVector3 x", divided[0], throughReciprocal, quotient},
        {"mulVector3 y", divided[1], throughReciprocal, quotient},
        {"mulVector3 z", divided[2], throughReciprocal, quotient},
        {"RotationY cosine", built([](Matrix& m) { m.RotationY(6.5234375F); }).m[0],
         static_cast<float>(std::cos(static_cast<double>(radians))), cosf(radians)},
        {"RotationY sine", built([](Matrix& m) { m.RotationY(0.84375F); }).m[8],
         static_cast<float>(std::sin(static_cast<double>(radiansOfSine))), sinf(radiansOfSine)},
        {"PerspectiveFovLH", built([](Matrix& m) { m.PerspectiveFovLH(1.0F, 1.0F, 5.0F, 8.0F); }).m[11],
         -five * eight / (eight - five), -five * (eight / (eight - five))},
    };
    for (const Row& row : table) {
        ASSERT_NE(row.stated, row.other) << row.name << " cannot tell";
        EXPECT_EQ(row.actual, row.stated) << row.name;
    }
}

TEST(Vectors, CrossProducts) {
    float axes[4] = {1.0F, 0.0F, 0.0F, 1.0F};
    EXPECT_EQ(Vector2::cross(axes, axes + 2), 1.0F);

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
