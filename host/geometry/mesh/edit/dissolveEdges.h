// Edges taken out of a mesh: the faces beside them become one.
#pragma once

#include "host/geometry/mesh/edit/MeshRewriter.h"

namespace host::geometry {

/// The mesh without some of its edges (ascending numbers).
///
/// Rule     an edge goes when it has two sides, walked in opposite ways; others (borders, edges of
///          three faces, faces turned against each other) stay as they are. The faces that were
///          beside gone edges become one with the number of the lowest of them; its loop begins at
///          that face's first corner that stays. Where more than one loop is left the one that
///          encloses the largest area is the outer one, the others are holes. A loop of less than
///          three corners is left out, and with the outer one its face.
/// Cleaning edges that no face has any more go; vertices stay, whatever edges are left at them,
///          unless `cleaning` says otherwise.
/// Failure  null as `MeshRewriter::finish` has it.
std::shared_ptr<const MeshData> dissolveEdges(const MeshData& mesh,
                                              std::span<const std::uint32_t> edges,
                                              MeshRewriter::Cleaning cleaning);

/// The mesh without some of its edges and without what is loose then. With `cleansVertices` the
/// ends of gone edges go too where exactly two edges are left at them (see `dissolveVertices`).
std::shared_ptr<const MeshData>
deleteEdges(const MeshData& mesh, std::span<const std::uint32_t> edges, bool cleansVertices);

} // namespace host::geometry
