// The places and directions of single faces, of points in any space.
#pragma once

#include "host/geometry/mesh/MeshData.h"
#include "host/math/Matrix4.h"

#include <cstdint>
#include <span>
#include <vector>

namespace host::geometry {

/// An origin and three unit vectors at right angles.
struct LocalFrame {
    Vec3d origin;
    Vec3d x{1, 0, 0};
    Vec3d y{0, 1, 0};
    Vec3d z{0, 0, 1};

    Vec3d toLocal(const Vec3d& point) const
    {
        const Vec3d from = point - origin;
        return {dot(from, x), dot(from, y), dot(from, z)};
    }
    Vec3d toSpace(const Vec3d& local) const
    {
        return origin + x * local.x + y * local.y + z * local.z;
    }
};

/// The points of a mesh in another space.
std::vector<Vec3d> pointsInSpace(const MeshData& mesh, const Matrix4& toSpace);

/// The unit normal of a face's outer loop as `areaVector` has it, without a copy of the loop; zero
/// where it has no area. `pointAt` gives the point of a vertex.
template<class PointAt>
Vec3d faceNormalOf(const MeshTopology& topology, const PointAt& pointAt, std::uint32_t face)
{
    const std::uint32_t first = topology.firstCorner(face);
    const std::uint32_t end = topology.loopStart[topology.firstLoop(face) + 1];
    if (end - first < 3) {
        return {};
    }
    const Vec3d origin = pointAt(topology.cornerVertex(first));
    Vec3d sum;
    Vec3d last = pointAt(topology.cornerVertex(first + 1)) - origin;
    for (std::uint32_t corner = first + 2; corner < end; ++corner) {
        const Vec3d spoke = pointAt(topology.cornerVertex(corner)) - origin;
        sum = sum + cross(last, spoke);
        last = spoke;
    }
    return normalized(sum);
}

Vec3d faceNormal(const MeshTopology& topology, std::span<const Vec3d> points, std::uint32_t face);

/// The mean of the points of a face's outer loop.
Vec3d faceCenter(const MeshTopology& topology, std::span<const Vec3d> points, std::uint32_t face);

/// The frame in which a face is moved: its centre, z along its normal, x along its first edge that
/// has a length in the plane of the face.
LocalFrame faceFrame(const MeshTopology& topology, std::span<const Vec3d> points,
                     std::uint32_t face);

/// z and x made a frame at an origin: x is turned to a right angle with z; any direction where it
/// has none of its own. z must be a unit vector or zero.
LocalFrame frameAlong(const Vec3d& origin, const Vec3d& z, const Vec3d& x);

} // namespace host::geometry
