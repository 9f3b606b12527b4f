// Edges drawn out of a mesh, with walls between where they were and where they are.
#pragma once

#include "host/geometry/mesh/edit/ComponentMotion.h"

#include <memory>

namespace host::geometry {

struct EdgeExtrusion {
    ComponentMotion motion;
    bool isTogether = true;      ///< edges that share a vertex stay joined
    std::uint32_t divisions = 1; ///< faces of a wall from bottom to top; at least 1
    double smoothingAngle = 0;   ///< radians; up to which the edges of the walls are smooth
};

/// The mesh with edges (ascending) drawn out. Edges without a face are left out.
///
/// Numbers  All that is there keeps its number. New vertices, uprights and edges along the tops
///          follow in the order in which a walk over the edges and their two ends first meets them,
///          each a run from the bottom upwards where there are divisions; a vertex comes with its
///          uprights before the edge along the top. So do the walls.
/// Places   Each edge is moved in its own frame: its middle, x as its first face walks it, y into
///          that face, z along the face's normal. A vertex of several edges comes to the mean of
///          its places.
/// Uvs      As the edge has them in its first face, at the top as new ones in the same place.
/// Failure  null beyond a limit, or as `MeshRewriter::finish` has it.
std::shared_ptr<const MeshData> extrudeEdges(const MeshData& mesh,
                                             std::span<const std::uint32_t> edges,
                                             const EdgeExtrusion& extrusion);

} // namespace host::geometry
