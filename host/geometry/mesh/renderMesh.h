// A mesh as renderers and viewports take it: one index per corner into vertices that carry
// everything.
#pragma once

#include "host/geometry/mesh/MeshData.h"

#include <string_view>
#include <vector>

namespace host::geometry {

struct RenderMesh {
    std::vector<Vec3f> positions;       ///< as in the mesh
    std::vector<Vec3f> normals;         ///< unit length
    std::vector<Vec2f> uvs;             ///< (0 0) where the corner has none
    std::vector<std::uint32_t> indices; ///< three per triangle, faces ascending
    std::vector<std::uint32_t>
        faceFirstTriangle; ///< per face, and the number of triangles as last entry
};

/// The set of texture coordinates of a name, else the current one, else the first; null if there is
/// none.
const UvSet* renderedUvSet(const MeshData& mesh, std::string_view name);

/// Splits the vertices of a mesh and cuts its faces.
///
/// A vertex is one distinct combination of mesh vertex, normal value and uv id, in the order of
/// first use by faces and corners. Faces in `invisibleFaces` take no part: they have an empty run
/// of triangles and use no vertex. The uvs are those of the set `uvSetName` (see above).
/// Precondition: isConsistent(mesh).
RenderMesh extractRenderMesh(const MeshData& mesh, std::string_view uvSetName);

} // namespace host::geometry
