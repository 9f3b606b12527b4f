// Faces divided the way discs and platonic solids are.
#pragma once

#include "host/geometry/mesh/primitives/SolidBuilder.h"

#include <cstdint>
#include <vector>

namespace host::geometry {

struct PolygonMesh {
    std::vector<Vec3d> points;
    PolygonList faces;
    std::vector<std::uint32_t> newBorderPoints; ///< middles that the last division made on edges
                                                ///< of one face, and their edges' vertices
    std::vector<MeshEdge> newBorderEdges;
};

/// Every face becomes one quad for each of its corners: the middle of the edge before, the corner,
/// the middle of the edge after it, the middle of the face. New points in the order in which the
/// faces meet them: middles of edges along a face, then the middle (the mean) of the face.
PolygonMesh dividedToQuads(const PolygonMesh& mesh);

/// Every triangle becomes four: one at each corner (the corner, the middle of the edge after it,
/// the middle of the edge before), then the one of the middles. Larger faces first become a
/// triangle for each edge, about their mean.
PolygonMesh dividedToTriangles(const PolygonMesh& mesh);

/// Every face becomes a triangle for each edge, about its mean.
PolygonMesh dividedToPie(const PolygonMesh& mesh);

} // namespace host::geometry
