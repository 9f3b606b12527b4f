// 4x4 matrices of doubles for row vectors (p' = p * M): rows one after another, translation in the
// fourth row.
#pragma once

#include "host/math/Vec.h"

#include <array>

namespace host {

struct Matrix4 {
    std::array<std::array<double, 4>, 4> m{
        {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}};
    friend bool operator==(const Matrix4&, const Matrix4&) = default;
};

Matrix4 operator*(const Matrix4& a, const Matrix4& b);
Matrix4 translation(const Vec3d& offset);
Matrix4 scaling(const Vec3d& factors);
/// Rows (1 0 0) (xy 1 0) (xz yz 1); `shear` is (xy, xz, yz).
Matrix4 shearing(const Vec3d& shear);
/// The inverse by cofactors; identity where the determinant is zero or not finite.
Matrix4 inverse(const Matrix4& matrix);
/// (x, y, z, 1) * M without the projective division.
Vec3d transformPoint(const Vec3d& point, const Matrix4& matrix);
/// (x, y, z, 0) * M.
Vec3d transformVector(const Vec3d& vector, const Matrix4& matrix);

} // namespace host
