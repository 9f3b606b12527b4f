// Some faces of a mesh made smooth by subdivision.
#pragma once

#include "host/geometry/mesh/MeshData.h"
#include "host/geometry/mesh/shape/SubdivisionLevel.h"

#include <cstdint>
#include <memory>
#include <span>

namespace host::geometry {

/// The most of `divisions` steps that some faces of a mesh can take within the limits.
std::uint32_t possibleDivisions(const MeshData& mesh, std::span<const std::uint32_t> faces,
                                std::uint32_t divisions);

/// Subdivides the faces (ascending) `divisions` times by the same rules as `smoothMesh`, but with
/// other numbers; faces beside them get the vertices on their edges.
///
/// Numbers  step by step, face by face in order: a vertex in its middle; for each of its edges that
///          is not cut yet a vertex, and an edge from there to its former end; then an edge from
///          each of these vertices to the middle. The face at its first corner keeps the number of
///          the face, those at the others follow all faces there are. They begin at the vertex
///          before the corner. Texture coordinates are added with their vertices, on an edge those
///          of the face first.
/// Limits   kMostSmoothedFaces, kMostDivisions (see smoothMesh.h).
/// Failure  null for faces with holes and beyond the limits.
std::shared_ptr<const MeshData> smoothFaces(const MeshData& mesh,
                                            std::span<const std::uint32_t> faces,
                                            std::uint32_t divisions, const SmoothingRules& rules);

} // namespace host::geometry
