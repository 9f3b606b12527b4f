// Faces replaced by the triangles that they are cut into.
#pragma once

#include "host/geometry/mesh/edit/MeshRewriter.h"

namespace host::geometry {

/// The mesh with some of its faces (ascending numbers) cut into triangles.
///
/// Numbers  the triangles of a face stand where the face stood, so that later faces move up; the
///          edges of the cuts, smooth ones, come behind all others in the order of the faces and of
///          the triangles that first use them. Vertices and texture coordinates stay.
/// Shape    see triangulate.h; of a quad's triangles the second begins along the cut, as in
///          (0 1 3) (3 1 2). A face that cannot be cut stays as it is.
/// Failure  null as `MeshRewriter::finish` has it.
std::shared_ptr<const MeshData> triangulateFaces(const MeshData& mesh,
                                                 std::span<const std::uint32_t> faces);

} // namespace host::geometry
