#include "math/Vector3.h"

#include <cmath>

Vector3::Vector3() : x(0.0F), y(0.0F), z(0.0F) {}
Vector3::Vector3(float x, float y, float z) : x(x), y(y), z(z) {}

Vector3 Vector3::operator+(const Vector3& o) const {
    return {x + o.x, y + o.y, z + o.z};
}
Vector3 Vector3::operator-(const Vector3& o) const {
    return {x - o.x, y - o.y, z - o.z};
}

// kept: plus-equals
Vector3 Vector3::operator+=(const Vector3& o) {
    x += o.x;
    y += o.y;
    z += o.z;
    return *this;
}

Vector3 Vector3::operator*(float s) const {
    return {s * x, s * y, s * z};
}

Vector3 Vector3::operator/(float s) const {
    const float q = 1.0F / s; // kept: reciprocal
    return {q * x, q * y, q * z};
}

float Vector3::dot(float* a, float* b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}
float Vector3::dot(Vector3* o) {
    return dot(&x, &o->x);
}

void Vector3::cross(float* out, float* a, float* b) {
    const float cx = a[1] * b[2] - a[2] * b[1];
    const float cy = a[2] * b[0] - a[0] * b[2];
    const float cz = a[0] * b[1] - a[1] * b[0];
    out[0] = cx;
    out[1] = cy;
    out[2] = cz;
}

void Vector3::cross(Vector3* a, Vector3* b) {
    cross(&x, &a->x, &b->x);
}

float Vector3::length(float* v) {
    return sqrtf(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
}
float Vector3::length() {
    return length(&x);
}

void Vector3::normalize(float* out, float* in) {
    const float l = length(in);
    if (l == 0.0F) return; // kept: zero-vector
    const float q = 1.0F / l;
    out[0] = q * in[0];
    out[1] = q * in[1];
    out[2] = q * in[2];
}

void Vector3::normalize() {
    normalize(&x, &x);
}
