// Several meshes in one.
#pragma once

#include "host/geometry/mesh/MeshData.h"
#include "host/math/Matrix4.h"

#include <span>

namespace host::geometry {

struct UnitedMesh {
    const MeshData* mesh = nullptr; ///< never null
    Matrix4 matrix;                 ///< its points and locked normals are multiplied by it
};

/// What becomes of the texture coordinate sets of the parts; the numbers are those of the attribute
/// mergeUVSets.
enum class UvSetMerging : std::uint8_t {
    None = 0,   ///< every set stays one; a name that is taken gets the lowest number behind it
    ByName = 1, ///< sets of one name become one
    ByLinks = 2 ///< those that the same textures use; taken for ByName
};

/// The parts one after the other, in their order: vertices, edges, faces and texture coordinates
/// keep their order and move up behind those of the parts before. Nothing is shared or joined, the
/// winding stays as it is whatever the matrix.
///
/// Groups   of faces or points of the same number become one. Creases and invisible faces come
/// along; ways of weighing
///          normals and cutting quads are those of the first part.
/// Limits   where sets that are not merged would take more than 2^26 entries for corners, they are
///          merged by name.
/// Failure  null for no parts and for more than 2^28 points, edges or corners.
std::shared_ptr<const MeshData> uniteMeshes(std::span<const UnitedMesh> parts,
                                            UvSetMerging merging);

} // namespace host::geometry
