// Pairs of triangles that become quads.
#pragma once

#include "host/geometry/mesh/edit/MeshRewriter.h"

namespace host::geometry {

struct QuadRules {
    double angle = 0; ///< radians; largest between the normals of the two triangles
    bool keepsGroupBorders = true;
    bool keepsTextureBorders = true; ///< of any uv set
    bool keepsHardEdges = true;
};

struct JoinedTriangles {
    std::shared_ptr<const MeshData> mesh; ///< null where it cannot be made
    bool isOnlyWay = false;               ///< no triangle had more than one other to go with
};

/// The mesh with pairs of triangles among some faces (ascending numbers) made quads.
///
/// Rule     of all pairs that share an edge of two faces and that the rules allow, those whose quad
///          is nearest to a rectangle (its worst corner nearest to a right angle) go first, at the
///          same shape those with the lower edge. Which pairs Maya takes is not known where there
///          is a choice.
/// Numbers  as in `dissolveEdges`.
JoinedTriangles joinTriangles(const MeshData& mesh, std::span<const std::uint32_t> faces,
                              const QuadRules& rules);

} // namespace host::geometry
