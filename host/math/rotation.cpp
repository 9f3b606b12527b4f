#include "host/math/rotation.h"

#include "host/math/angle.h"

namespace host {
namespace {

/// For each order, the axes (0 x, 1 y, 2 z) in the sequence in which they act.
constexpr std::array<std::array<unsigned char, 3>, 6> kAxisSequence{
    {{0, 1, 2}, {1, 2, 0}, {2, 0, 1}, {0, 2, 1}, {1, 0, 2}, {2, 1, 0}}};

Matrix4 axisRotation(std::size_t axis, double angle)
{
    const auto [s, c] = sineCosine(angle);
    const std::size_t next = (axis + 1) % 3;
    const std::size_t last = (axis + 2) % 3;
    Matrix4 result;
    result.m[next][next] = c;
    result.m[next][last] = s;
    result.m[last][next] = -s;
    result.m[last][last] = c;
    return result;
}

} // namespace

RotationOrder rotationOrderFromNumber(double number)
{
    if (!(number >= 0 && number < 6)) {
        return RotationOrder::Xyz;
    }
    return static_cast<RotationOrder>(static_cast<unsigned char>(number));
}

Matrix4 eulerRotation(const Vec3d& angles, RotationOrder order)
{
    const std::array<double, 3> angle{angles.x, angles.y, angles.z};
    Matrix4 result;
    for (const std::size_t axis : kAxisSequence[static_cast<std::size_t>(order)]) {
        if (angle[axis] != 0) {
            result = result * axisRotation(axis, angle[axis]);
        }
    }
    return result;
}

Matrix4 quaternionRotation(const Quaternion& q)
{
    const double norm = q.x * q.x + q.y * q.y + q.z * q.z + q.w * q.w;
    if (!(norm > 0) || !std::isfinite(norm)) {
        return {};
    }
    const double f = 2 / norm;
    Matrix4 result;
    result.m[0] = {1 - f * (q.y * q.y + q.z * q.z), f * (q.x * q.y + q.w * q.z),
                   f * (q.x * q.z - q.w * q.y), 0};
    result.m[1] = {f * (q.x * q.y - q.w * q.z), 1 - f * (q.x * q.x + q.z * q.z),
                   f * (q.y * q.z + q.w * q.x), 0};
    result.m[2] = {f * (q.x * q.z + q.w * q.y), f * (q.y * q.z - q.w * q.x),
                   1 - f * (q.x * q.x + q.y * q.y), 0};
    return result;
}

} // namespace host
