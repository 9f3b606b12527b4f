// Faces cut in parts along a plane.
#pragma once

#include "host/geometry/mesh/edit/MeshRewriter.h"
#include "host/math/Matrix4.h"

namespace host::geometry {

struct CutPlane {
    Matrix4 toSpace; ///< from the object to the space of point and normal
    Vec3d point;
    Vec3d normal{0, 0, 1}; ///< of length 1; to where it points is before the plane
};

/// What lies no farther from a plane lies in it, in centimetres.
inline constexpr double kCutTolerance = 1e-5;

struct CutMesh {
    std::shared_ptr<const MeshData> mesh; ///< null where it cannot be made
    std::vector<int> sides; ///< of each face: 0 it was not named, 1 it is a part of a named face
                            ///< and lies before the plane, -1 it does not
};

/// The mesh with some of its faces (ascending numbers) cut.
///
/// Numbers  each edge of these faces that passes through the plane gets a vertex there (see
///          `insertVertices`); the cuts, smooth ones, come behind all edges, in the order of the
///          faces and along the loops. The part of a face with its first corner that is off the
///          plane keeps the face's number, the others come last. Each part begins at its first
///          corner off the plane.
/// Limits   faces with holes stay whole.
CutMesh cutFaces(const MeshData& mesh, std::span<const std::uint32_t> faces, const CutPlane& plane);

struct KeptBehind {
    std::shared_ptr<const MeshData> mesh; ///< null where it cannot be made
    std::vector<std::uint32_t> faces;     ///< what is left of the named ones
};

/// What lies behind a plane: the faces are cut, those of them before it go, and all closes up.
KeptBehind keepBehind(const MeshData& mesh, std::span<const std::uint32_t> faces,
                      const CutPlane& plane);

} // namespace host::geometry
