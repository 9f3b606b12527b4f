// The planes of all faces of a mesh.
#pragma once

#include "host/geometry/mesh/MeshData.h"
#include "host/geometry/mesh/polygon.h"
#include "host/math/Matrix4.h"

#include <span>
#include <vector>

namespace host::geometry {

/// One plane per face (see `polygonPlane`).
std::vector<PolygonPlane> facePlanes(const MeshTopology& topology, std::span<const Vec3d> points);

/// Planes that are computed when they are first asked for, of the points times `space`.
class LazyPlanes {
public:
    /// The mesh must outlive this.
    LazyPlanes(const MeshData& mesh, const Matrix4& space);

    /// Valid until the next one is asked for.
    const PolygonPlane& of(std::uint32_t face);

private:
    /// Where the face's plane is; the number of planes where it is not computed yet.
    std::size_t placeOf(std::uint32_t face);
    PolygonPlane compute(std::uint32_t face);

    const MeshTopology& m_topology;
    std::span<const Vec3f> m_points;
    Matrix4 m_space;
    std::vector<std::uint32_t> m_faces;  ///< in the order in which they were asked for
    std::vector<PolygonPlane> m_planes;  ///< of those
    std::vector<std::uint32_t> m_places; ///< by face, plus 1, 0: none; empty while they are few
    std::vector<Vec3d> m_corners;
    std::vector<std::uint32_t> m_ends;
};

/// The points in double precision.
std::vector<Vec3d> doublePoints(const MeshData& mesh);
/// And back: the mesh with other points, everything else shared.
std::shared_ptr<const MeshData> withPoints(const MeshData& mesh, std::span<const Vec3d> points);

} // namespace host::geometry
