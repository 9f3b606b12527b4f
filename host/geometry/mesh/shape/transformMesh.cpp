#include "host/geometry/mesh/shape/transformMesh.h"

#include "host/geometry/mesh/normals.h"
#include "host/geometry/mesh/polygon.h"
#include "host/geometry/mesh/shape/cornerNormals.h"

#include <cmath>
#include <memory>
#include <vector>

namespace host::geometry {
namespace {

using Vectors = std::vector<Vec3f>;

std::shared_ptr<const Vectors> movedPoints(std::span<const Vec3f> points, const Matrix4& matrix)
{
    auto moved = std::make_shared<Vectors>();
    moved->reserve(points.size());
    for (const Vec3f& point : points) {
        moved->push_back(toFloat(transformPoint(toDouble(point), matrix)));
    }
    return moved;
}

/// Normals are rows of the transposed inverse; entries that say "not locked" stay.
std::shared_ptr<const Vectors> movedNormals(std::span<const Vec3f> normals, const Matrix4& matrix)
{
    const Matrix4 back = inverse(matrix);
    auto moved = std::make_shared<Vectors>();
    moved->reserve(normals.size());
    for (const Vec3f& normal : normals) {
        const auto& m = back.m;
        const Vec3d n = toDouble(normal);
        const Vec3d turned{m[0][0] * n.x + m[0][1] * n.y + m[0][2] * n.z,
                           m[1][0] * n.x + m[1][1] * n.y + m[1][2] * n.z,
                           m[2][0] * n.x + m[2][1] * n.y + m[2][2] * n.z};
        moved->push_back(isLockedNormal(normal) ? toFloat(normalized(turned)) : normal);
    }
    return moved;
}

/// True when lengths change alike in all directions, up to rounding.
bool isRigid(const Matrix4& matrix)
{
    constexpr double kTolerance = 1e-6;
    const auto row = [&matrix](std::size_t i) {
        return Vec3d{matrix.m[i][0], matrix.m[i][1], matrix.m[i][2]};
    };
    const double size = dot(row(0), row(0));
    const auto isSmall = [size](double number) { return std::fabs(number) <= kTolerance * size; };
    return isSmall(dot(row(1), row(1)) - size) && isSmall(dot(row(2), row(2)) - size) &&
           isSmall(dot(row(0), row(1))) && isSmall(dot(row(0), row(2))) &&
           isSmall(dot(row(1), row(2)));
}

/// All normals by id.
Vectors allNormals(const MeshData& mesh)
{
    const NormalIds ids = computeNormalIds(mesh);
    return computeNormals(*mesh.topology, cornerVertices(*mesh.topology), pointsOf(mesh),
                          mesh.normalWeighting, ids, lockedNormalsOf(mesh));
}

} // namespace

MeshData transformed(const MeshData& mesh, const Matrix4& matrix, NormalFreeze freeze)
{
    MeshData moved = mesh;
    if (mesh.points != nullptr) {
        moved.points = movedPoints(*mesh.points, matrix);
    }
    const bool isFrozen =
        freeze == NormalFreeze::Always || (freeze == NormalFreeze::NonRigid && !isRigid(matrix));
    if (isFrozen) {
        moved.lockedNormals = movedNormals(allNormals(mesh), matrix);
    } else if (mesh.lockedNormals != nullptr) {
        moved.lockedNormals = movedNormals(*mesh.lockedNormals, matrix);
    }
    return moved;
}

} // namespace host::geometry
