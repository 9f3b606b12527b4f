// One mesh in several.
#pragma once

#include "host/geometry/mesh/MeshData.h"

#include <span>
#include <vector>

namespace host::geometry {

/// The part that each face belongs to: shells are numbered in the order of their lowest faces.
struct MeshParts {
    std::vector<std::uint32_t> ofFace;
    std::uint32_t count = 0;
};

/// Shells: faces that have a vertex in common, directly or through others, are one.
MeshParts shellsOf(const MeshTopology& topology);

/// One mesh for each part, of which some may be without faces. Vertices, edges, faces, texture
/// coordinates, groups (those that have members there), creases and invisible faces keep their
/// order and close up; what two parts use, each has for itself. Locked normals, which go by fans,
/// do not come along.
///
/// Input    parts.ofFace: one for each face, below parts.count.
/// Cost     near-linear in the mesh, however many parts there are.
std::vector<std::shared_ptr<const MeshData>> splitMesh(const MeshData& mesh,
                                                       const MeshParts& parts);

} // namespace host::geometry
