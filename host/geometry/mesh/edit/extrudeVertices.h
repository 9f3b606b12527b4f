// Vertices drawn out to points.
#pragma once

#include "host/geometry/mesh/MeshData.h"
#include "host/math/Matrix4.h"

#include <memory>
#include <span>

namespace host::geometry {

struct VertexExtrusion {
    Matrix4 toSpace;   ///< from the object to the space in which lengths are
    double width = 0;  ///< part of each edge, from the vertex, at which the foot stands
    double length = 0; ///< how far the vertex goes along its normal
};

/// The mesh with vertices (ascending) drawn out: each edge of a vertex is split, and each face
/// about it gives up the triangle between.
///
/// Numbers  Vertex after vertex: the edges of the vertex in ascending order give a vertex each (the
///          half from the edge's start keeps its number, the other is new); then each face about
///          it, ascending, gives an edge and a triangle. The vertex keeps its number.
/// Failure  null as `MeshRewriter::finish` has it.
std::shared_ptr<const MeshData> extrudeVertices(const MeshData& mesh,
                                                std::span<const std::uint32_t> vertices,
                                                const VertexExtrusion& extrusion);

} // namespace host::geometry
