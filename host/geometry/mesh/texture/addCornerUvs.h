// Texture coordinates for single corners.
#pragma once

#include "host/geometry/mesh/MeshData.h"

#include <cstdint>
#include <memory>
#include <span>

namespace host::geometry {

/// A new coordinate for the first corner of a face that stands at a vertex.
struct CornerUv {
    std::uint32_t face = 0;
    std::uint32_t vertex = 0;
    Vec2f point;
};

/// Corners that one operation looks at; what is named beyond is left out.
inline constexpr std::size_t kMaxCornersSearched = std::size_t{1} << 26;

/// The mesh with new coordinates in one of its sets, behind all others in the order given. Faces
/// and vertices that it does not have are left out. Nothing closes up.
std::shared_ptr<const MeshData> addCornerUvs(const MeshData& mesh, std::size_t set,
                                             std::span<const CornerUv> uvs);

} // namespace host::geometry
