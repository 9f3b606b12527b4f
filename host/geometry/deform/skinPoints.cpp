#include "host/geometry/deform/skinPoints.h"

#include "host/math/decompose.h"

#include <cmath>

namespace host::geometry {
namespace {

using Row = std::span<const InfluenceWeight>;

/// Does something for the weights of every point that is there.
template<class Move>
void forRows(const SkinWeights& weights, std::span<Vec3d> points, Move move)
{
    for (std::size_t row = 0; row < weights.points.size(); ++row) {
        const std::uint32_t point = weights.points[row];
        if (point >= points.size()) {
            return; // they ascend
        }
        const std::size_t first = weights.starts[row];
        points[point] = move(Row(weights.entries).subspan(first, weights.starts[row + 1] - first),
                             points[point]);
    }
}

/// Products with numbers before them: (a, b) stands for w + x i + y j + z k.
Quaternion hamilton(const Quaternion& a, const Quaternion& b)
{
    return {a.w * b.x + a.x * b.w + a.y * b.z - a.z * b.y,
            a.w * b.y - a.x * b.z + a.y * b.w + a.z * b.x,
            a.w * b.z + a.x * b.y - a.y * b.x + a.z * b.w,
            a.w * b.w - a.x * b.x - a.y * b.y - a.z * b.z};
}

double dotOf(const Quaternion& a, const Quaternion& b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z + a.w * b.w;
}

void add(Quaternion& sum, const Quaternion& part, double weight)
{
    sum.x += part.x * weight;
    sum.y += part.y * weight;
    sum.z += part.z * weight;
    sum.w += part.w * weight;
}

Vec3d vectorOf(const Quaternion& q)
{
    return {q.x, q.y, q.z};
}

/// The point moved by a dual quaternion that need not be of unit length.
Vec3d moved(const Vec3d& point, const Quaternion& real, const Quaternion& dual)
{
    const double square = dotOf(real, real);
    if (!(square > 0)) {
        return point;
    }
    const Vec3d axis = vectorOf(real);
    const Vec3d turned = point + cross(axis, cross(axis, point) + point * real.w) * (2 / square);
    const Vec3d shift = vectorOf(dual) * real.w - axis * dual.w + cross(axis, vectorOf(dual));
    return turned + shift * (2 / square);
}

Vec3d blended(Row row, std::span<const RigidMotion> influences, bool isStretched,
              const Vec3d& point)
{
    const InfluenceWeight* largest = nullptr;
    for (const InfluenceWeight& entry : row) {
        if (entry.weight != 0 && (largest == nullptr || entry.weight > largest->weight)) {
            largest = &entry;
        }
    }
    if (largest == nullptr) {
        return point;
    }
    const Quaternion& sense = influences[largest->influence].real;
    Quaternion real{0, 0, 0, 0};
    Quaternion dual{0, 0, 0, 0};
    Vec3d stretched;
    double sum = 0;
    for (const auto& [weight, influence] : row) {
        const RigidMotion& motion = influences[influence];
        const double part = dotOf(sense, motion.real) < 0 ? -weight : weight;
        add(real, motion.real, part);
        add(dual, motion.dual, part);
        if (isStretched) {
            stretched = stretched + transformPoint(point, motion.stretch) * weight;
            sum += weight;
        }
    }
    const bool isStretch = isStretched && sum != 0;
    return moved(isStretch ? stretched * (1 / sum) : point, real, dual);
}

} // namespace

RigidMotion rigidMotion(const Matrix4& matrix)
{
    const DecomposedMatrix parts = decompose(matrix, RotationOrder::Xyz);
    RigidMotion motion;
    motion.real = parts.rotation;
    const Vec3d& t = parts.translate;
    motion.dual = hamilton({t.x / 2, t.y / 2, t.z / 2, 0}, motion.real);
    motion.stretch = scaling(parts.scale) * shearing(parts.shear);
    return motion;
}

void skinLinear(const SkinWeights& weights, std::span<const Matrix4> influences,
                std::span<Vec3d> points)
{
    forRows(weights, points, [&](Row row, const Vec3d& p) {
        Vec3d sum;
        bool isMoved = false;
        for (const auto& [weight, influence] : row) {
            const auto& m = influences[influence].m;
            sum.x += weight * (p.x * m[0][0] + p.y * m[1][0] + p.z * m[2][0] + m[3][0]);
            sum.y += weight * (p.x * m[0][1] + p.y * m[1][1] + p.z * m[2][1] + m[3][1]);
            sum.z += weight * (p.x * m[0][2] + p.y * m[1][2] + p.z * m[2][2] + m[3][2]);
            isMoved |= weight != 0;
        }
        return isMoved ? sum : p;
    });
}

void skinDualQuaternion(const SkinWeights& weights, std::span<const RigidMotion> influences,
                        bool isStretched, std::span<Vec3d> points)
{
    forRows(weights, points, [&](Row row, const Vec3d& point) {
        return blended(row, influences, isStretched, point);
    });
}

} // namespace host::geometry
