// Faces taken apart along edges, where they are.
#pragma once

#include "host/geometry/mesh/MeshData.h"

#include <cstdint>
#include <memory>
#include <span>

namespace host::geometry {

/// The mesh with edges (ascending) taken apart: each face beside one has an edge of its own there,
/// and at a vertex faces stay together only where they hang together round it by other edges.
///
/// Numbers  The face with the lowest number keeps the edge, those that hang together with the
/// lowest
///          corner keep the vertex. New edges follow edge by edge, new vertices vertex by vertex,
///          both in the order of the faces. Faces and texture coordinates stay.
/// Failure  null as `MeshRewriter::finish` has it.
std::shared_ptr<const MeshData> detachEdges(const MeshData& mesh,
                                            std::span<const std::uint32_t> edges);

/// The same for all edges at vertices (ascending): every face has a corner of its own there.
std::shared_ptr<const MeshData> detachVertices(const MeshData& mesh,
                                               std::span<const std::uint32_t> vertices);

} // namespace host::geometry
