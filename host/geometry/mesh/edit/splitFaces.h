// Faces cut along a line of points.
#pragma once

#include "host/geometry/mesh/MeshData.h"
#include "host/geometry/mesh/edit/MeshLinks.h"

#include <memory>
#include <span>

namespace host::geometry {

/// A point of the line: on an edge, or inside a face.
struct SplitPoint {
    std::uint32_t edge = kNone; ///< kNone: inside
    double part = 0;            ///< of the way along the edge; 0 and 1 are its vertices
    Vec3d place;                ///< inside a face; object space
};

/// The mesh cut along a line. Where the line runs along an edge nothing is cut.
///
/// Numbers  First come the new vertices, in the order of the points, and the second halves of the
///          edges (an edge keeps its number up to the new vertex); then the edges of the line and
///          one face for each cut. The face on the left of the line keeps its number.
/// Failure  null where the line begins or ends inside a face, where two points are in no face
///          together, or as `MeshRewriter::finish` has it.
std::shared_ptr<const MeshData> splitFaces(const MeshData& mesh, std::span<const SplitPoint> line,
                                           double smoothingAngle);

} // namespace host::geometry
