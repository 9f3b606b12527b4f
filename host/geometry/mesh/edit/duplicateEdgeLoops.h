// New edge loops beside others.
#pragma once

#include "host/geometry/mesh/MeshData.h"

#include <cstdint>
#include <memory>
#include <span>

namespace host::geometry {

struct LoopDuplication {
    double offset = 0.5;       ///< of the way along the edges that leave the loop, 0..1
    bool isDistance = false;   ///< on all of them as far as on the first one of a side
    bool deletesEnds = true;   ///< the edges on which open loops would go on
    double smoothingAngle = 0; ///< radians; up to which the new edges are smooth
};

struct DuplicatedLoops {
    std::shared_ptr<const MeshData> mesh; ///< null as `MeshCutter::finish` has it
    bool isWhole = true; ///< false where a loop ends, forks or has no edges to go by on a side:
                         ///< what is done there is only a guess
};

/// The mesh with a new loop of edges on each side of the loops that edges (ascending) make.
///
/// Numbers  A loop begins with its lowest edge. First comes the side on which the faces walk that
///          edge backward, then the other. On each side a walk goes along the loop as those faces
///          walk it, starting at the end of the lowest edge; at every edge that leaves the loop
///          there, a vertex, the second half of that edge, then the new edge and a face of the
///          strip between it and the one before. Edges keep their number up to the new vertex,
///          faces keep theirs beyond the new loop.
DuplicatedLoops duplicateEdgeLoops(const MeshData& mesh, std::span<const std::uint32_t> edges,
                                   const LoopDuplication& duplication);

} // namespace host::geometry
