// Holes in a mesh filled by a face each.
#pragma once

#include "host/geometry/mesh/edit/MeshRewriter.h"

namespace host::geometry {

/// The mesh with the holes filled that some of its edges (ascending numbers) are on.
///
/// Rule     from an edge with one face the border is followed over the edges with one face until it
///          comes back; each such border is filled by one face, whichever of its edges are named.
/// Numbers  new faces come last, in the order of their lowest named edges, at which they begin; no
///          other parts come about. A new face is in the groups of the face beside that edge and
///          shares the texture coordinates of the faces around it.
/// Limits   borders that pass through edges of more than two faces, or between faces turned against
///          each other, stay open.
/// Failure  null as `MeshRewriter::finish` has it.
std::shared_ptr<const MeshData> closeBorders(const MeshData& mesh,
                                             std::span<const std::uint32_t> edges);

} // namespace host::geometry
