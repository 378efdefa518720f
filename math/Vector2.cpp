#include "math/Vector2.h"

#include <cmath>

Vector2::Vector2() : x(0.0F), y(0.0F) {}
Vector2::Vector2(float x, float y) : x(x), y(y) {}

Vector2 Vector2::operator+(const Vector2& o) const {
    return {x + o.x, y + o.y};
}
Vector2 Vector2::operator-(const Vector2& o) const {
    return {x - o.x, y - o.y};
}

// kept: plus-equals
Vector2 Vector2::operator+=(const Vector2& o) {
    x += o.x;
    y += o.y;
    return *this;
}

Vector2 Vector2::operator*(float s) const {
    return {s * x, s * y};
}
Vector2 Vector2::operator/(float s) const {
    return {x / s, y / s}; // kept: reciprocal
}

float Vector2::dot(float* a, float* b) {
    return a[0] * b[0] + a[1] * b[1];
}
float Vector2::cross(float* a, float* b) {
    return a[0] * b[1] - a[1] * b[0];
}
float Vector2::length(float* v) {
    return sqrtf(v[0] * v[0] + v[1] * v[1]);
}

void Vector2::normalize(float* out, float* in) {
    const float l = length(in);
    if (l == 0.0F) return; // kept: zero-vector
    out[0] = in[0] / l;
    out[1] = in[1] / l;
}

void Vector2::normalize() {
    normalize(&x, &x);
}
