// A mesh times a matrix.
#pragma once

#include "host/geometry/mesh/MeshData.h"
#include "host/math/Matrix4.h"

#include <cstdint>

namespace host::geometry {

/// Whether the normals that the mesh has before are locked for afterwards; the numbers are those of
/// the attribute freezeNormals.
enum class NormalFreeze : std::uint8_t {
    Never = 0,
    Always = 1,
    NonRigid = 2 ///< where the matrix shears, or scales differently along different directions
};

/// Points times the matrix. Locked normals turn with them (by the transposed inverse) and stay
/// locked, so do frozen ones; the others are computed anew from the new points.
MeshData transformed(const MeshData& mesh, const Matrix4& matrix, NormalFreeze freeze);

} // namespace host::geometry
