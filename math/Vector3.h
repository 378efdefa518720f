#pragma once

/// Three floats. The static forms work on any array of at least 3 floats, a Vector3 included. No pointer may be null.
/// No function checks its arguments: dividing by 0 gives infinities or NaN. Quotients are formed through the
/// reciprocal, so that they can differ in the last bit from Vector2's.
class Vector3 {
  public:
    float x; ///< first component
    float y; ///< second component
    float z; ///< third component

    Vector3();                          ///< (0, 0, 0)
    Vector3(float x, float y, float z); ///< from its components

    /// Component by component; += adds to this and returns a copy, not a reference; / multiplies by 1 / s.
    /// @{
    Vector3 operator+(const Vector3& o) const;
    Vector3 operator-(const Vector3& o) const;
    Vector3 operator+=(const Vector3& o);
    Vector3 operator*(float s) const;
    Vector3 operator/(float s) const;
    /// @}

    /// The dot product of two vectors, or of this and another.
    /// @{
    static float dot(float* a, float* b);
    float dot(Vector3* o);
    /// @}

    /// out = a x b. out may be a or b.
    static void cross(float* out, float* a, float* b);
    /// this = a x b, whatever this held before.
    void cross(Vector3* a, Vector3* b);

    /// The Euclidean length of v, or of this.
    /// @{
    static float length(float* v);
    float length();
    /// @}

    /// out = in / |in|. Of a zero vector nothing is written. out may be in.
    static void normalize(float* out, float* in);
    /// The same in place.
    void normalize();
};
