#include "host/math/decompose.h"

#include "host/math/quaternion.h"

namespace host {
namespace {

Vec3d rowOf(const Matrix4& matrix, std::size_t row)
{
    return {matrix.m[row][0], matrix.m[row][1], matrix.m[row][2]};
}

double quotient(double number, double divisor)
{
    return divisor != 0 ? number / divisor : 0;
}

/// The length of a row, which becomes a unit vector.
double takeLength(Vec3d& row)
{
    const double size = length(row);
    row = normalized(row);
    return size;
}

Matrix4 rowsTogether(const Vec3d& x, const Vec3d& y, const Vec3d& z)
{
    Matrix4 matrix;
    matrix.m[0] = {x.x, x.y, x.z, 0};
    matrix.m[1] = {y.x, y.y, y.z, 0};
    matrix.m[2] = {z.x, z.y, z.z, 0};
    return matrix;
}

} // namespace

DecomposedMatrix decompose(const Matrix4& matrix, RotationOrder order)
{
    DecomposedMatrix parts;
    parts.translate = {matrix.m[3][0], matrix.m[3][1], matrix.m[3][2]};
    Vec3d x = rowOf(matrix, 0);
    Vec3d y = rowOf(matrix, 1);
    Vec3d z = rowOf(matrix, 2);
    parts.scale.x = takeLength(x);
    parts.shear.x = dot(x, y);
    y = y - x * parts.shear.x;
    parts.scale.y = takeLength(y);
    parts.shear.y = dot(x, z);
    z = z - x * parts.shear.y;
    parts.shear.z = dot(y, z);
    z = z - y * parts.shear.z;
    parts.scale.z = takeLength(z);
    parts.shear = {quotient(parts.shear.x, parts.scale.y), quotient(parts.shear.y, parts.scale.z),
                   quotient(parts.shear.z, parts.scale.z)};
    if (dot(cross(x, y), z) < 0) {
        parts.scale = parts.scale * -1;
        x = x * -1;
        y = y * -1;
        z = z * -1;
    }
    const Matrix4 rotation = rowsTogether(x, y, z);
    parts.rotate = eulerAngles(rotation, order);
    parts.rotation = quaternionOf(rotation);
    return parts;
}

} // namespace host
