// Faces drawn out of a mesh, with walls between where they were and where they are.
#pragma once

#include "host/geometry/mesh/edit/ComponentMotion.h"

#include <memory>

namespace host::geometry {

/// Walls that one extrusion may make.
inline constexpr std::uint32_t kMaxExtrudedFaces = 1U << 22;

struct FaceExtrusion {
    ComponentMotion motion;
    bool isTogether = true;      ///< faces that share an edge stay joined, without a wall between
    std::uint32_t divisions = 1; ///< faces of a wall from bottom to top; at least 1
    double smoothingAngle = 0;   ///< radians; up to which the edges of the walls are smooth
};

/// The mesh with faces (ascending) drawn out.
///
/// Numbers  A face that is drawn out keeps its number; its edges and vertices are new ones, in the
///          order in which a walk over the faces, corners and the two ends of each edge (as the
///          edge has them) first meets them. A vertex where a wall stands comes with its upright
///          edges, then comes the edge along the top; with divisions each is a run from the bottom
///          upwards. What no face uses any more (edges between two faces that are drawn out) goes,
///          and the rest closes up. Walls come last, in the order of that walk, each from the
///          bottom upwards; a wall starts with its bottom edge. Where all faces that hang together
///          are drawn out, each leaves a copy behind that looks the other way; the copies come
///          before the walls.
/// Places   Each face is moved in its own frame (`faceFrame`); a vertex of several faces comes to
///          the mean of its places. Layers of divisions go equal parts of the way.
/// Uvs      The walls have the texture coordinates of the edge they stand on, at the top as new
///          ones in the same place.
/// Failure  null beyond kMaxExtrudedFaces, or as `MeshRewriter::finish` has it.
std::shared_ptr<const MeshData> extrudeFaces(const MeshData& mesh,
                                             std::span<const std::uint32_t> faces,
                                             const FaceExtrusion& extrusion);

} // namespace host::geometry
