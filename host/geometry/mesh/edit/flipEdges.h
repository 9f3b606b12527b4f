// Edges between two triangles turned to the other diagonal of their quad.
#pragma once

#include "host/geometry/mesh/edit/MeshRewriter.h"

namespace host::geometry {

/// The mesh with some of its edges (ascending numbers) turned.
///
/// Rule     an edge a b of the triangles a b c and b a d comes to lie from d to c. The triangles
/// keep
///          their numbers and become d c a and c d b; all other parts stay.
/// Failure  null where an edge does not have two triangles that walk it in opposite ways, or two of
///          the edges have a triangle in common.
std::shared_ptr<const MeshData> flipEdges(const MeshData& mesh,
                                          std::span<const std::uint32_t> edges);

} // namespace host::geometry
