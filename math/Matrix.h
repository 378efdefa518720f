#pragma once

/// A 4x4 single-precision matrix that maps column vectors, p' = M p.
///
/// Element m[4 r + c] is row r, column c, so rows are contiguous and the translation of an affine matrix stands in
/// m[3], m[7], m[11]. GLSL reads an uploaded array column by column and so sees the transpose; therefore
/// upload with `glUniformMatrix4fv(location, 1, GL_FALSE, matrix.m)` and multiply from the left in the shader,
/// `vec4(position, 1.0) * matrixMVP`, which together give M p.
///
/// A plain value: undefined until a builder has written it. Builders write all 16 elements. Nothing checks its
/// arguments: equal bounds or a zero field of view give infinities or NaN, as the formulas say.
///
/// All projections map the near plane to normalised depth 0 and the far plane to 1 (not to GL's -1 and 1).
/// Left-handed ones look along +z, so view-space z = zn is the near plane; right-handed ones along -z.
///
/// Vector arguments point to 3 consecutive floats (x, y, z). No pointer may be null.
class Matrix {
  public:
    float m[16]; ///< the elements, row by row

    /// this = B A: applied to a point, a comes first, then b. This may be a or b itself.
    void mul(Matrix* a, Matrix* b);

    /// this = the identity.
    void setIdentity();

    /// this = T(x, y, z) this: translates after everything that the matrix already did.
    void AppendTranslate(float x, float y, float z);

    /// this = S(x, y, z) this: scales after everything that the matrix already did.
    void AppendScale(float x, float y, float z);

    /// Rotation about the y axis: x' = cos x - sin z, z' = sin x + cos z.
    /// @param degrees  turned into radians by the single-precision factor 0.01745328
    void RotationY(float degrees);

    /// Left-handed perspective from a vertical field of view.
    /// @param fovY    radians
    /// @param aspect  width over height
    /// @param zn, zf  distances of the near and the far plane
    void PerspectiveFovLH(float fovY, float aspect, float zn, float zf);

    /// Perspective from the bounds l, r, b, t of the view volume on the near plane.
    /// @{
    void PerspectiveOffCenterLH(float l, float r, float b, float t, float zn, float zf);
    void PerspectiveOffCenterRH(float l, float r, float b, float t, float zn, float zf);
    /// @}

    /// Parallel projection of the box with bounds l, r, b, t. In the right-handed form the x offset is
    /// (r + l) / (r - l), the opposite sign of the left-handed form's; the screen mappings, which all pass r = 0, rest
    /// on it.
    /// @{
    void OrthoOffCenterLH(float l, float r, float b, float t, float zn, float zf);
    void OrthoOffCenterRH(float l, float r, float b, float t, float zn, float zf);
    /// @}

    /// View matrix of a camera at eye that looks at the point at. An axis that the arguments leave undetermined (eye
    /// equal to at, up along the view) becomes a row of zeros.
    /// @{
    void LookAtLH(float* eye, float* at, float* up);
    void LookAtRH(float* eye, float* at, float* up);
    /// @}

    /// out = the point in transformed and divided by w. out may be in.
    void mulVector3(float* out, float* in);
};
