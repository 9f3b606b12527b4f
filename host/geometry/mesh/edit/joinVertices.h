// Vertices of a mesh that become one.
#pragma once

#include "host/geometry/mesh/edit/MeshRewriter.h"

namespace host::geometry {

/// Which vertices become one, and where.
struct VertexJoin {
    std::vector<std::uint32_t> target; ///< of each vertex: itself, or the one that it becomes,
                                       ///< which is its own target
    std::vector<Vec3f> points;         ///< of each vertex afterwards; those of targets count
};

/// No vertex joined: the start of a `VertexJoin`.
VertexJoin unjoined(const MeshData& mesh);

/// The mesh with vertices joined.
///
/// Rule     edges whose ends became one go; edges at joined vertices that have the same ends become
///          the lowest of them. Corners along gone edges go from the faces, and so do ways there
///          and straight back; a loop of less than three corners is left out, with its face when it
///          is the outer one. Edges of more than two faces may come about.
/// Numbers  the target's number stays; the others go, and all parts close up in order.
/// Failure  null as `MeshRewriter::finish` has it.
std::shared_ptr<const MeshData> joinVertices(const MeshData& mesh, const VertexJoin& join);

} // namespace host::geometry
