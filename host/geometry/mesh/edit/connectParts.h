// New edges through faces, between vertices or the middles of edges.
#pragma once

#include "host/geometry/mesh/MeshData.h"

#include <cstdint>
#include <memory>
#include <span>

namespace host::geometry {

struct Connected {
    std::shared_ptr<const MeshData> mesh; ///< null as `MeshRewriter::finish` has it
    bool isExact = true;                  ///< false where a face has more than two of the parts
};

/// The mesh with each two of the vertices (ascending) that lie in one face, not side by side,
/// joined by an edge; a face with more of them gets one from each to the next.
///
/// Numbers  face by face: the cut, and a face for what lies on its right.
Connected connectVertices(const MeshData& mesh, std::span<const std::uint32_t> vertices);

/// The same between the middles of edges (ascending). Edges whose faces have no other one are only
/// halved.
///
/// Numbers  face by face: a vertex and a second half for each of its edges in turn that is not
///          halved yet, then the cut.
Connected connectEdges(const MeshData& mesh, std::span<const std::uint32_t> edges);

} // namespace host::geometry
