// Normals of single vertices and corners, given by hand.
#pragma once

#include "host/geometry/mesh/MeshData.h"

#include <cstdint>
#include <memory>
#include <span>

namespace host::geometry {

/// Every face of the vertex.
inline constexpr std::uint32_t kAllFaces = 0xffffffff;

/// The normal of a vertex in one face or in all of them. Components of 1e19 or more: no longer
/// locked.
struct GivenNormal {
    std::uint32_t vertex = 0;
    std::uint32_t face = kAllFaces;
    Vec3f normal;
};

/// Locks (or unlocks) the normals, one after the other; vertices and faces that the mesh does not
/// have are left out.
///
/// Corners that got different normals cannot share one any more: the edges between them turn hard,
/// and where such an edge ends at a vertex that shared a computed normal, that normal is locked as
/// it was.
std::shared_ptr<const MeshData> lockNormals(const MeshData& mesh,
                                            std::span<const GivenNormal> given);

/// The same normals added to what each corner has, computed or locked, and made of unit length.
std::shared_ptr<const MeshData> addNormals(const MeshData& mesh,
                                           std::span<const GivenNormal> given);

} // namespace host::geometry
