// Edges turned round between the two faces that they join.
#pragma once

#include "host/geometry/mesh/MeshData.h"

#include <cstdint>
#include <memory>
#include <span>

namespace host::geometry {

/// The mesh with some of its edges (ascending numbers) turned by `offset` vertices.
///
/// Rule     the two faces of an edge are one loop without it; both ends of the edge go `offset`
///          vertices on along that loop (counter-clockwise seen from outside), or back where it is
///          negative, and the faces go round with it. Between two triangles one vertex is what
///          `flipEdges` does. All parts keep their numbers; a turned face begins with the edge.
/// Failure  null where an edge does not have two faces that walk it in opposite ways, where one of
///          them has a hole or two of the edges, or where the ends would come to one vertex.
std::shared_ptr<const MeshData>
spinEdges(const MeshData& mesh, std::span<const std::uint32_t> edges, std::int32_t offset);

} // namespace host::geometry
