#include "host/math/Matrix4.h"

namespace host {

Matrix4 operator*(const Matrix4& a, const Matrix4& b)
{
    Matrix4 product;
    for (std::size_t row = 0; row < 4; ++row) {
        for (std::size_t column = 0; column < 4; ++column) {
            product.m[row][column] = a.m[row][0] * b.m[0][column] + a.m[row][1] * b.m[1][column] +
                                     a.m[row][2] * b.m[2][column] + a.m[row][3] * b.m[3][column];
        }
    }
    return product;
}

Matrix4 translation(const Vec3d& offset)
{
    Matrix4 result;
    result.m[3] = {offset.x, offset.y, offset.z, 1};
    return result;
}

Matrix4 scaling(const Vec3d& factors)
{
    Matrix4 result;
    result.m[0][0] = factors.x;
    result.m[1][1] = factors.y;
    result.m[2][2] = factors.z;
    return result;
}

Matrix4 shearing(const Vec3d& shear)
{
    Matrix4 result;
    result.m[1][0] = shear.x;
    result.m[2][0] = shear.y;
    result.m[2][1] = shear.z;
    return result;
}

Matrix4 inverse(const Matrix4& matrix)
{
    const auto& m = matrix.m;
    // 2x2 minors of the upper and of the lower two rows; column pairs 01 02 03 12 13 23.
    const auto minor = [&m](std::size_t row, std::size_t i, std::size_t j) {
        return m[row][i] * m[row + 1][j] - m[row][j] * m[row + 1][i];
    };
    const double u01 = minor(0, 0, 1), u02 = minor(0, 0, 2), u03 = minor(0, 0, 3);
    const double u12 = minor(0, 1, 2), u13 = minor(0, 1, 3), u23 = minor(0, 2, 3);
    const double l01 = minor(2, 0, 1), l02 = minor(2, 0, 2), l03 = minor(2, 0, 3);
    const double l12 = minor(2, 1, 2), l13 = minor(2, 1, 3), l23 = minor(2, 2, 3);

    const double determinant =
        u01 * l23 - u02 * l13 + u03 * l12 + u12 * l03 - u13 * l02 + u23 * l01;
    if (determinant == 0 || !std::isfinite(determinant)) {
        return {};
    }
    Matrix4 result;
    auto& r = result.m;
    r[0] = {m[1][1] * l23 - m[1][2] * l13 + m[1][3] * l12,
            -m[0][1] * l23 + m[0][2] * l13 - m[0][3] * l12,
            m[3][1] * u23 - m[3][2] * u13 + m[3][3] * u12,
            -m[2][1] * u23 + m[2][2] * u13 - m[2][3] * u12};
    r[1] = {-m[1][0] * l23 + m[1][2] * l03 - m[1][3] * l02,
            m[0][0] * l23 - m[0][2] * l03 + m[0][3] * l02,
            -m[3][0] * u23 + m[3][2] * u03 - m[3][3] * u02,
            m[2][0] * u23 - m[2][2] * u03 + m[2][3] * u02};
    r[2] = {m[1][0] * l13 - m[1][1] * l03 + m[1][3] * l01,
            -m[0][0] * l13 + m[0][1] * l03 - m[0][3] * l01,
            m[3][0] * u13 - m[3][1] * u03 + m[3][3] * u01,
            -m[2][0] * u13 + m[2][1] * u03 - m[2][3] * u01};
    r[3] = {-m[1][0] * l12 + m[1][1] * l02 - m[1][2] * l01,
            m[0][0] * l12 - m[0][1] * l02 + m[0][2] * l01,
            -m[3][0] * u12 + m[3][1] * u02 - m[3][2] * u01,
            m[2][0] * u12 - m[2][1] * u02 + m[2][2] * u01};
    for (auto& row : r) {
        for (double& value : row) {
            value = value / determinant + 0.0; // no negative zeros: they would be seen in print
            if (!std::isfinite(value)) {
                return {};
            }
        }
    }
    return result;
}

Vec3d transformPoint(const Vec3d& point, const Matrix4& matrix)
{
    const auto& m = matrix.m;
    return transformVector(point, matrix) + Vec3d{m[3][0], m[3][1], m[3][2]};
}

Vec3d transformVector(const Vec3d& vector, const Matrix4& matrix)
{
    const auto& m = matrix.m;
    return {vector.x * m[0][0] + vector.y * m[1][0] + vector.z * m[2][0],
            vector.x * m[0][1] + vector.y * m[1][1] + vector.z * m[2][1],
            vector.x * m[0][2] + vector.y * m[1][2] + vector.z * m[2][2]};
}

} // namespace host
