#include "host/geometry/mesh/edit/faceFrame.h"

#include "host/geometry/mesh/polygon.h"

namespace host::geometry {
namespace {

/// Directions shorter than this part of what they come from are none.
constexpr double kNoDirection = 1e-9;

/// The part of `direction` at a right angle to the unit vector `z`, normalized; zero where little
/// of it is left.
Vec3d across(const Vec3d& direction, const Vec3d& z)
{
    const Vec3d part = direction - z * dot(direction, z);
    return length(part) > kNoDirection * length(direction) ? normalized(part) : Vec3d{};
}

} // namespace

std::vector<Vec3d> pointsInSpace(const MeshData& mesh, const Matrix4& toSpace)
{
    std::vector<Vec3d> points;
    if (mesh.points != nullptr) {
        points.reserve(mesh.points->size());
        for (const Vec3f& point : *mesh.points) {
            points.push_back(transformPoint(toDouble(point), toSpace));
        }
    }
    return points;
}

Vec3d faceNormal(const MeshTopology& topology, std::span<const Vec3d> points, std::uint32_t face)
{
    return faceNormalOf(
        topology, [points](std::uint32_t vertex) { return points[vertex]; }, face);
}

Vec3d faceCenter(const MeshTopology& topology, std::span<const Vec3d> points, std::uint32_t face)
{
    const std::uint32_t first = topology.firstCorner(face);
    const std::uint32_t end = topology.loopStart[topology.firstLoop(face) + 1];
    Vec3d sum;
    for (std::uint32_t corner = first; corner < end; ++corner) {
        sum = sum + points[topology.cornerVertex(corner)];
    }
    return end > first ? sum * (1.0 / (end - first)) : sum;
}

LocalFrame frameAlong(const Vec3d& origin, const Vec3d& z, const Vec3d& x)
{
    LocalFrame frame;
    frame.origin = origin;
    if (!(length(z) > 0)) {
        return frame;
    }
    frame.z = z;
    frame.x = across(x, z);
    for (const Vec3d& axis : {Vec3d{1, 0, 0}, Vec3d{0, 1, 0}}) {
        if (!(length(frame.x) > 0)) {
            frame.x = across(axis, z);
        }
    }
    frame.y = cross(frame.z, frame.x);
    return frame;
}

LocalFrame faceFrame(const MeshTopology& topology, std::span<const Vec3d> points,
                     std::uint32_t face)
{
    const Vec3d normal = faceNormal(topology, points, face);
    const std::uint32_t first = topology.firstCorner(face);
    const std::uint32_t end = topology.loopStart[topology.firstLoop(face) + 1];
    Vec3d x;
    for (std::uint32_t corner = first; corner < end && !(length(x) > 0); ++corner) {
        const std::uint32_t next = corner + 1 < end ? corner + 1 : first;
        x = across(points[topology.cornerVertex(next)] - points[topology.cornerVertex(corner)],
                   normal);
    }
    return frameAlong(faceCenter(topology, points, face), normal, x);
}

} // namespace host::geometry
