// The planes of all faces of a mesh.
#pragma once

#include "host/geometry/mesh/MeshData.h"
#include "host/geometry/mesh/polygon.h"

#include <span>
#include <vector>

namespace host::geometry {

/// One plane per face (see `polygonPlane`).
std::vector<PolygonPlane> facePlanes(const MeshTopology& topology, std::span<const Vec3d> points);

/// The points in double precision.
std::vector<Vec3d> doublePoints(const MeshData& mesh);
/// And back: the mesh with other points, everything else shared.
std::shared_ptr<const MeshData> withPoints(const MeshData& mesh, std::span<const Vec3d> points);

} // namespace host::geometry
