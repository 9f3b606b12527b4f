// Edges divided, and faces about points above their middles.
#pragma once

#include "host/geometry/mesh/MeshData.h"
#include "host/math/Matrix4.h"

#include <memory>
#include <span>

namespace host::geometry {

/// Vertices that one operation may make on edges.
inline constexpr std::uint32_t kMaxEdgeVertices = 1U << 22;

/// The mesh with `divisions` new vertices on each of the edges (ascending), evenly spaced.
///
/// Numbers  The edges are taken in order; each keeps its number up to its first new vertex, and the
///          vertices and the pieces behind them follow from its start to its end.
/// Failure  null beyond kMaxEdgeVertices.
std::shared_ptr<const MeshData>
divideEdges(const MeshData& mesh, std::span<const std::uint32_t> edges, std::uint32_t divisions);

struct Poking {
    Matrix4 toSpace;      ///< from the object to the space of the lengths
    Vec3d localTranslate; ///< of the new points, in the frame of each face
    Vec3d translate;      ///< of the new points, in the space
};

/// The mesh with each of the faces (ascending) turned into triangles about a new point.
///
/// Numbers  Face after face: the point, an edge from each corner to it, and a triangle over each
///          edge; the first one keeps the number of the face. Faces with holes stay.
/// Failure  null as `MeshRewriter::finish` has it.
std::shared_ptr<const MeshData>
pokeFaces(const MeshData& mesh, std::span<const std::uint32_t> faces, const Poking& poking);

} // namespace host::geometry
