// The normals of a plain mesh and the cuts of its quads, found in one walk over the faces.
#pragma once

#include "host/geometry/mesh/PlainVertices.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace host::geometry {

struct PlainShading {
    std::vector<Vec3f> normals; ///< by vertex of the mesh; those of unused ones mean nothing
    /// 1 for each quad that is cut from its second corner to its fourth.
    std::vector<std::uint8_t> isCutFromSecond;
};

/// What `computeNormals` and `triangulate` find. Nothing when the normals of some vertex have no
/// sum (a fold, or no face with an area), which those two know how to deal with.
///
/// `found.ofCorners` is given back on the way.
std::optional<PlainShading> shadePlain(const MeshData& mesh, PlainVertices& found);

} // namespace host::geometry
