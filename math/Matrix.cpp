#include "math/Matrix.h"

#include "math/Vector3.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace {

/// View matrix from the direction of its z axis, which need not be a unit vector.
Matrix lookAlong(Vector3 zAxis, float* eye, float* up) {
    Vector3 xAxis;
    Vector3 yAxis;
    zAxis.normalize();
    Vector3::cross(&xAxis.x, up, &zAxis.x);
    xAxis.normalize();
    yAxis.cross(&zAxis, &xAxis);
    return {{
        xAxis.x, xAxis.y, xAxis.z, -Vector3::dot(&xAxis.x, eye), //
        yAxis.x, yAxis.y, yAxis.z, -Vector3::dot(&yAxis.x, eye), //
        zAxis.x, zAxis.y, zAxis.z, -Vector3::dot(&zAxis.x, eye), //
        0.0F, 0.0F, 0.0F, 1.0F,                                  //
    }};
}

} // namespace

void Matrix::mul(Matrix* a, Matrix* b) {
    float product[16];
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) {
            const float* row = b->m + 4 * r; // kept: mul-order
            const float* column = a->m + c;
            product[4 * r + c] = row[0] * column[0] + row[1] * column[4] + row[2] * column[8] + row[3] * column[12];
        }
    }
    std::copy(std::begin(product), std::end(product), m);
}

void Matrix::setIdentity() {
    *this = {{
        1.0F, 0.0F, 0.0F, 0.0F, //
        0.0F, 1.0F, 0.0F, 0.0F, //
        0.0F, 0.0F, 1.0F, 0.0F, //
        0.0F, 0.0F, 0.0F, 1.0F, //
    }};
}

void Matrix::AppendTranslate(float x, float y, float z) {
    Matrix translation = {};
    translation.setIdentity();
    translation.m[3] = x;
    translation.m[7] = y;
    translation.m[11] = z;
    mul(this, &translation);
}

void Matrix::AppendScale(float x, float y, float z) {
    Matrix scale = {};
    scale.setIdentity();
    scale.m[0] = x;
    scale.m[5] = y;
    scale.m[10] = z;
    mul(this, &scale);
}

void Matrix::RotationY(float degrees) {
    const float radians = degrees * 0.01745328F; // kept: degrees
    const auto c = static_cast<float>(std::cos(static_cast<double>(radians)));
    const auto s = static_cast<float>(std::sin(static_cast<double>(radians)));
    *this = {{
        c, 0.0F, -s, 0.0F,      //
        0.0F, 1.0F, 0.0F, 0.0F, //
        s, 0.0F, c, 0.0F,       //
        0.0F, 0.0F, 0.0F, 1.0F, //
    }};
}

// kept: depth-0-1
void Matrix::PerspectiveFovLH(float fovY, float aspect, float zn, float zf) {
    const float ys = 1.0F / tanf(fovY * 0.5F);
    *this = {{
        ys / aspect, 0.0F, 0.0F, 0.0F,                    //
        0.0F, ys, 0.0F, 0.0F,                             //
        0.0F, 0.0F, zf / (zf - zn), -zn * zf / (zf - zn), //
        0.0F, 0.0F, 1.0F, 0.0F,                           //
    }};
}

void Matrix::PerspectiveOffCenterLH(float l, float r, float b, float t, float zn, float zf) {
    *this = {{
        2.0F * zn / (r - l), 0.0F, (r + l) / (l - r), 0.0F, //
        0.0F, 2.0F * zn / (t - b), (t + b) / (b - t), 0.0F, //
        0.0F, 0.0F, zf / (zf - zn), zn * zf / (zn - zf),    //
        0.0F, 0.0F, 1.0F, 0.0F,                             //
    }};
}

void Matrix::PerspectiveOffCenterRH(float l, float r, float b, float t, float zn, float zf) {
    *this = {{
        2.0F * zn / (r - l), 0.0F, (r + l) / (r - l), 0.0F, //
        0.0F, 2.0F * zn / (t - b), (t + b) / (t - b), 0.0F, //
        0.0F, 0.0F, zf / (zn - zf), zn * zf / (zn - zf),    //
        0.0F, 0.0F, -1.0F, 0.0F,                            //
    }};
}

void Matrix::OrthoOffCenterLH(float l, float r, float b, float t, float zn, float zf) {
    *this = {{
        2.0F / (r - l), 0.0F, 0.0F, (r + l) / (l - r), //
        0.0F, 2.0F / (t - b), 0.0F, (t + b) / (b - t), //
        0.0F, 0.0F, 1.0F / (zf - zn), zn / (zn - zf),  //
        0.0F, 0.0F, 0.0F, 1.0F,                        //
    }};
}

// kept: ortho-sign
void Matrix::OrthoOffCenterRH(float l, float r, float b, float t, float zn, float zf) {
    *this = {{
        2.0F / (r - l), 0.0F, 0.0F, (r + l) / (r - l), //
        0.0F, 2.0F / (t - b), 0.0F, (t + b) / (b - t), //
        0.0F, 0.0F, 1.0F / (zn - zf), zn / (zn - zf),  //
        0.0F, 0.0F, 0.0F, 1.0F,                        //
    }};
}

void Matrix::LookAtLH(float* eye, float* at, float* up) {
    *this = lookAlong(Vector3(at[0] - eye[0], at[1] - eye[1], at[2] - eye[2]), eye, up);
}

void Matrix::LookAtRH(float* eye, float* at, float* up) {
    *this = lookAlong(Vector3(eye[0] - at[0], eye[1] - at[1], eye[2] - at[2]), eye, up);
}

void Matrix::mulVector3(float* out, float* in) {
    const float x = in[0];
    const float y = in[1];
    const float z = in[2];
    const float q = 1.0F / (m[12] * x + m[13] * y + m[14] * z + m[15]);
    out[0] = q * (m[0] * x + m[1] * y + m[2] * z + m[3]);
    out[1] = q * (m[4] * x + m[5] * y + m[6] * z + m[7]);
    out[2] = q * (m[8] * x + m[9] * y + m[10] * z + m[11]);
}
