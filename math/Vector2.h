#pragma once

/// Two floats. The static forms work on any array of at least 2 floats, a Vector2 included. No pointer may be null. No
/// function checks its arguments: dividing by 0 gives infinities or NaN. Components are divided directly, without a
/// reciprocal.
class Vector2 {
  public:
    float x; ///< first component
    float y; ///< second component

    Vector2();                 ///< (0, 0)
    Vector2(float x, float y); ///< from its components

    /// Component by component; += adds to this and returns a copy, not a reference.
    /// @{
    Vector2 operator+(const Vector2& o) const;
    Vector2 operator-(const Vector2& o) const;
    Vector2 operator+=(const Vector2& o);
    Vector2 operator*(float s) const;
    Vector2 operator/(float s) const;
    /// @}

    /// The dot product of a and b.
    static float dot(float* a, float* b);
    /// The z component of the cross product of a and b in the plane z = 0.
    static float cross(float* a, float* b);
    /// The Euclidean length of v.
    static float length(float* v);

    /// out = in / |in|. Of a zero vector nothing is written. out may be in.
    static void normalize(float* out, float* in);
    /// The same in place.
    void normalize();
};
