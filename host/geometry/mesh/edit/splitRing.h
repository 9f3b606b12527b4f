// A loop of new edges across a ring of edges.
#pragma once

#include "host/geometry/mesh/MeshData.h"
#include "host/geometry/mesh/edit/MeshLinks.h"

#include <memory>
#include <span>

namespace host::geometry {

/// Loops that one operation makes.
inline constexpr std::uint32_t kMaxRingLoops = 1000;

/// Faces that one operation adds.
inline constexpr std::uint64_t kMostRingFaces = 4194304;

/// How the place on each edge of a ring comes from the place on its first one; the numbers are
/// those of the attribute splitType.
enum class RingSplit : std::uint8_t {
    EqualDistance = 0, ///< as far from the end as on the first edge
    EqualPart = 1,     ///< the same part of the way
    Many = 2           ///< several loops, evenly spaced
};

struct RingSplitting {
    std::uint32_t rootEdge = kNone; ///< the first edge; kNone or one that is none of the ring: the
                                    ///< lowest of the ring
    RingSplit type = RingSplit::EqualPart;
    double weight = 0.5;           ///< on the first edge, from its start
    bool measuresFromStart = true; ///< equal distance: from the starts, else from the ends
    std::uint32_t loopCount = 1;   ///< with Many
    double smoothingAngle = 0;     ///< radians; up to which the new edges are smooth
};

/// The mesh with loops across the rings that the edges (ascending) make.
///
/// Numbers  A ring starts at the root edge and goes on through the face on its left, across each
///          face to the opposite edge (of a face of four) or to its only other edge of the ring.
///          A ring that does not close goes on from its first edge to the other side then. Edges
///          keep their number up to the new vertex; the face on the side of the root edge's start
///          keeps its own. New vertices, halves of edges, edges across and faces come one after
///          the other along the ring. Several loops are made one after the other, the one farthest
///          from the start first.
/// Failure  null for more than kMostRingFaces new faces, one for each edge and loop, and as
///          `MeshRewriter::finish` has it.
std::shared_ptr<const MeshData> splitRing(const MeshData& mesh,
                                          std::span<const std::uint32_t> edges,
                                          const RingSplitting& splitting);

} // namespace host::geometry
