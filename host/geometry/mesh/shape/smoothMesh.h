// Whole meshes made smooth by subdivision.
#pragma once

#include "host/geometry/mesh/MeshData.h"
#include "host/geometry/mesh/shape/SubdivisionLevel.h"

#include <cstdint>
#include <memory>

namespace host::geometry {

/// Faces that smoothing makes at most.
inline constexpr std::uint32_t kMostSmoothedFaces = std::uint32_t{1} << 22;
/// Steps that smoothing takes at most.
inline constexpr std::uint32_t kMostDivisions = 8;

/// The most of `divisions` steps that a mesh can take within the limits.
std::uint32_t possibleDivisions(const MeshData& mesh, std::uint32_t divisions);

/// Subdivides all faces `divisions` times by the rules of Catmull and Clark, with the creases of
/// the mesh, which it has no more afterwards. Texture coordinates, face groups and invisible faces
/// are carried along; locked normals are gone.
///
/// Numbers  vertices: those before; then a point for each edge, in the order in which a walk over
///          the faces first meets them, but begun where as many are left as there are faces and
///          going on at its beginning (a trace of their exchange with the points that follow); then
///          one for each face. Further steps add their points for faces, for the edges inside faces
///          and for those on former edges.
///          edges: each gives its pieces in order from its start; those inside faces follow in the
///          order and direction in which a walk over the new faces first meets them.
///          faces: each gives one for each of its corners in order. They begin at the former corner
///          (faces of four: where the former corner has the place that it had before).
///          texture coordinates: by vertices, those of each in the order of its faces; then by
///          faces; then by edges, those of each in the order of its faces; further steps as above.
/// Failure  null for faces with holes and beyond the limits.
std::shared_ptr<const MeshData> smoothMesh(const MeshData& mesh, std::uint32_t divisions,
                                           const SmoothingRules& rules);

} // namespace host::geometry
