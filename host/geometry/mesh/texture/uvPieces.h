// The pieces of a set of texture coordinates.
#pragma once

#include "host/geometry/mesh/MeshData.h"

#include <cstdint>
#include <span>
#include <vector>

namespace host::geometry {

/// Faces that share coordinates, directly or by way of others. Pieces are numbered in the order of
/// their lowest faces.
struct UvPieces {
    std::uint32_t count = 0;
    std::vector<std::uint32_t> ofId;   ///< of each coordinate; kNone for what no corner has
    std::vector<std::uint32_t> ofFace; ///< of each face; kNone for those without coordinates
};

/// `corners` has one id below `idCount`, or -1, for each corner of the topology.
UvPieces uvPieces(const MeshTopology& topology, std::span<const std::int32_t> corners,
                  std::size_t idCount);

/// Twice the area that the faces of each piece cover, counted negative where a face lies with its
/// back up.
std::vector<double> pieceAreas(const MeshTopology& topology, std::span<const std::int32_t> corners,
                               std::span<const Vec2f> points, const UvPieces& pieces);

} // namespace host::geometry
