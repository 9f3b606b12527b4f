// Meshes whose every vertex becomes one vertex for renderers: nothing has to be split.
#pragma once

#include "host/geometry/mesh/MeshData.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace host::geometry {

/// The vertices of a plain mesh, by the vertices of the mesh itself.
struct PlainVertices {
    static constexpr std::uint32_t kUnused = 0xffffffff;

    std::vector<std::uint32_t> places;          ///< by first use of corners; kUnused: of no face
    std::vector<std::int32_t> uvs;              ///< ids, -1 none; empty: no vertex has any
    std::vector<std::uint8_t> isShared;         ///< 1: by several corners
    std::size_t count = 0;                      ///< of the used ones
    std::unique_ptr<std::uint32_t[]> ofCorners; ///< the vertex of the mesh at each corner
};

/// Numbers the vertices if the mesh is plain: faces of three or four corners without holes, all
/// shown; no locked normals; the corners of each vertex have one normal in common, by smooth edges
/// between them, and the same id in `uvs` (one per corner, or none at all).
///
/// A mesh that lists the faces of some vertex in such an order that one of them touches none of
/// those before it is not taken for plain, though it may be.
std::optional<PlainVertices> findPlainVertices(const MeshData& mesh,
                                               std::span<const std::int32_t> uvs);

} // namespace host::geometry
