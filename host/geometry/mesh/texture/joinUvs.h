// Texture coordinates that become one: pieces brought together along edges, neighbours in the
// image.
#pragma once

#include "host/geometry/mesh/MeshData.h"

#include <cstdint>
#include <limits>
#include <memory>
#include <span>

namespace host::geometry {

/// The mesh with one of its sets sewn along edges (ascending), where the smaller of two pieces, by
/// the count of its faces, first comes to the larger one: moved, turned and scaled so that both
/// ends of the edge lie as there. Of pieces of one size the one of the second face moves. An edge
/// stays as it is where the piece to be moved has more than `mostFaces`.
///
/// Numbers  (Believed.) As `sewUvs`: the lowest id stays; the others close up.
std::shared_ptr<const MeshData>
moveAndSewUvs(const MeshData& mesh, std::size_t set, std::span<const std::uint32_t> edges,
              std::uint32_t mostFaces = std::numeric_limits<std::uint32_t>::max());

/// Corners of a vertex of which all pairs of coordinates are looked at; beyond, only neighbours
/// along u.
inline constexpr std::size_t kMaxUvPairs = 256;

/// The mesh with coordinates (ascending ids) of one of its sets joined that belong to one vertex
/// and lie no further apart than a distance, directly or by way of others.
///
/// Numbers  (Believed.) The lowest id stays, in the middle of all; the others close up.
std::shared_ptr<const MeshData> mergeUvs(const MeshData& mesh, std::size_t set,
                                         std::span<const std::uint32_t> ids, double distance);

} // namespace host::geometry
