// Vertices in the middle of two edges taken out of a mesh: the two become one.
#pragma once

#include "host/geometry/mesh/edit/MeshRewriter.h"

namespace host::geometry {

/// The mesh without some of its vertices (ascending numbers).
///
/// Rule     a vertex goes when exactly two edges of faces end at it and no loop is left with less
///          than three corners; others stay. They are looked at in ascending order. The lower of
///          the two edges becomes the edge between their far ends, its direction and its flags
///          stay; the other goes.
/// Failure  null as `MeshRewriter::finish` has it.
std::shared_ptr<const MeshData> dissolveVertices(const MeshData& mesh,
                                                 std::span<const std::uint32_t> vertices,
                                                 MeshRewriter::Cleaning cleaning);

} // namespace host::geometry
