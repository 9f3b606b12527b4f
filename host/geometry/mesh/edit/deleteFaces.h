// Faces taken out of a mesh.
#pragma once

#include "host/geometry/mesh/edit/MeshRewriter.h"

namespace host::geometry {

/// The mesh without some of its faces (ascending numbers). What is left closes up in order; which
/// parts that no face uses any more go too, `cleaning` says.
///
/// Failure  null as `MeshRewriter::finish` has it.
std::shared_ptr<const MeshData> deleteFaces(const MeshData& mesh,
                                            std::span<const std::uint32_t> faces,
                                            const MeshRewriter::Cleaning& cleaning);

/// The mesh without the edges, points and texture coordinates that no face uses.
std::shared_ptr<const MeshData> withoutLooseParts(const MeshData& mesh);

/// The cleaning that leaves nothing loose.
inline constexpr MeshRewriter::Cleaning kCleanAll{.edges = true, .points = true, .uvs = true};

} // namespace host::geometry
