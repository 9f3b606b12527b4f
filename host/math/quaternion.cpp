#include "host/math/quaternion.h"

#include "host/math/angle.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace host {
namespace {

/// The three axes of an order, the first to act first; `sign` is -1 where they run backwards.
struct Axes {
    std::array<std::size_t, 3> axis;
    double sign;
};

Axes axesOf(RotationOrder order)
{
    constexpr std::array<Axes, 6> kAxes{{{{0, 1, 2}, 1},
                                         {{1, 2, 0}, 1},
                                         {{2, 0, 1}, 1},
                                         {{0, 2, 1}, -1},
                                         {{1, 0, 2}, -1},
                                         {{2, 1, 0}, -1}}};
    return kAxes[static_cast<std::size_t>(order)];
}

std::array<double, 3> toArray(const Vec3d& v)
{
    return {v.x, v.y, v.z};
}

Vec3d toVector(const std::array<double, 3>& v)
{
    return {v[0], v[1], v[2]};
}

double signedAngle(double sine, double cosine)
{
    return sine < 0 ? -angleOf(-sine, cosine) : angleOf(sine, cosine);
}

Quaternion scaled(const Quaternion& q, double factor)
{
    return {q.x * factor, q.y * factor, q.z * factor, q.w * factor};
}

Quaternion sum(const Quaternion& a, const Quaternion& b)
{
    return {a.x + b.x, a.y + b.y, a.z + b.z, a.w + b.w};
}

Quaternion unit(const Quaternion& q)
{
    const double length = std::sqrt(dot(q, q));
    return length > 0 ? scaled(q, 1 / length) : Quaternion{};
}

/// The angle moved by whole turns to within half a turn of another.
double turnedNear(double angle, double wanted)
{
    constexpr double kTurn = 2 * std::numbers::pi;
    const double turns = std::floor((wanted - angle) / kTurn + 0.5);
    return std::isfinite(turns) ? angle + turns * kTurn : angle;
}

double distance(const Vec3d& a, const Vec3d& b)
{
    return std::fabs(a.x - b.x) + std::fabs(a.y - b.y) + std::fabs(a.z - b.z);
}

Vec3d turnedNear(const Vec3d& angles, const Vec3d& wanted)
{
    return {turnedNear(angles.x, wanted.x), turnedNear(angles.y, wanted.y),
            turnedNear(angles.z, wanted.z)};
}

} // namespace

Quaternion quaternionOf(const Matrix4& rotation)
{
    // The largest of the four numbers is found from the diagonal, the others from pairs around it.
    const auto& m = rotation.m;
    const std::array<double, 4> squares{
        1 + m[0][0] - m[1][1] - m[2][2], 1 - m[0][0] + m[1][1] - m[2][2],
        1 - m[0][0] - m[1][1] + m[2][2], 1 + m[0][0] + m[1][1] + m[2][2]};
    const auto largest = std::max_element(squares.begin(), squares.end()) - squares.begin();
    const double root = 2 * std::sqrt(squares[static_cast<std::size_t>(largest)]);
    Quaternion q;
    switch (largest) {
    case 0:
        q = {root / 4, (m[0][1] + m[1][0]) / root, (m[0][2] + m[2][0]) / root,
             (m[1][2] - m[2][1]) / root};
        break;
    case 1:
        q = {(m[0][1] + m[1][0]) / root, root / 4, (m[1][2] + m[2][1]) / root,
             (m[2][0] - m[0][2]) / root};
        break;
    case 2:
        q = {(m[0][2] + m[2][0]) / root, (m[1][2] + m[2][1]) / root, root / 4,
             (m[0][1] - m[1][0]) / root};
        break;
    default:
        q = {(m[1][2] - m[2][1]) / root, (m[2][0] - m[0][2]) / root, (m[0][1] - m[1][0]) / root,
             root / 4};
        break;
    }
    return unit(q.w < 0 ? scaled(q, -1) : q);
}

Quaternion quaternionFromEuler(const Vec3d& angles, RotationOrder order)
{
    const std::array<double, 3> angle = toArray(angles);
    Quaternion all;
    for (const std::size_t axis : axesOf(order).axis) {
        const SineCosine half = sineCosine(angle[axis] / 2);
        std::array<double, 3> vector{};
        vector[axis] = half.sine;
        all = product(all, {vector[0], vector[1], vector[2], half.cosine});
    }
    return all;
}

Vec3d eulerAngles(const Matrix4& rotation, RotationOrder order)
{
    const auto& m = rotation.m;
    const auto [axis, sign] = axesOf(order);
    const auto [i, j, k] = axis;
    constexpr double kUpright = 1e-12; // cosine of the middle angle that counts as none
    const double cosine = std::sqrt(m[i][i] * m[i][i] + m[i][j] * m[i][j]);
    std::array<double, 3> angles{};
    angles[j] = signedAngle(-sign * m[i][k], cosine);
    if (cosine > kUpright) {
        angles[i] = signedAngle(sign * m[j][k], m[k][k]);
        angles[k] = signedAngle(sign * m[i][j], m[i][i]);
    } else {
        angles[i] = signedAngle(-sign * m[k][j], m[j][j]);
    }
    return toVector(angles);
}

Vec3d eulerNearest(const Vec3d& angles, const Vec3d& wanted, RotationOrder order)
{
    using std::numbers::pi;
    const auto [i, j, k] = axesOf(order).axis;
    std::array<double, 3> other = toArray(angles);
    other[i] += pi;
    other[j] = pi - other[j];
    other[k] += pi;
    const Vec3d first = turnedNear(angles, wanted);
    const Vec3d second = turnedNear(toVector(other), wanted);
    return distance(second, wanted) < distance(first, wanted) ? second : first;
}

Quaternion slerp(const Quaternion& from, const Quaternion& to, double by, bool isShort)
{
    double cosine = dot(from, to);
    Quaternion target = to;
    if (isShort && cosine < 0) {
        cosine = -cosine;
        target = scaled(to, -1);
    }
    const double sine = std::sqrt(std::max(0.0, 1 - cosine * cosine));
    constexpr double kSmallSine = 1e-8; // a straight line is as good below it
    if (sine < kSmallSine) {
        return unit(sum(scaled(from, 1 - by), scaled(target, by)));
    }
    const double angle = angleOf(sine, cosine);
    const double before = sineCosine((1 - by) * angle).sine / sine;
    const double after = sineCosine(by * angle).sine / sine;
    return unit(sum(scaled(from, before), scaled(target, after)));
}

Quaternion product(const Quaternion& first, const Quaternion& second)
{
    const Quaternion& a = second;
    const Quaternion& b = first;
    return {a.w * b.x + a.x * b.w + a.y * b.z - a.z * b.y,
            a.w * b.y - a.x * b.z + a.y * b.w + a.z * b.x,
            a.w * b.z + a.x * b.y - a.y * b.x + a.z * b.w,
            a.w * b.w - a.x * b.x - a.y * b.y - a.z * b.z};
}

Quaternion conjugate(const Quaternion& quaternion)
{
    return {-quaternion.x, -quaternion.y, -quaternion.z, quaternion.w};
}

double dot(const Quaternion& a, const Quaternion& b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z + a.w * b.w;
}

} // namespace host
