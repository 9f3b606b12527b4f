// Where texture coordinates are shared between faces: cut, sewn, taken away.
#pragma once

#include "host/geometry/mesh/MeshData.h"

#include <cstdint>
#include <memory>
#include <span>

namespace host::geometry {

/// The mesh with one of its sets cut along edges (ascending): faces that only meet over cut edges
/// share no coordinate there any more. Where the cut only ends nothing changes.
///
/// Numbers  (Believed; which side keeps an id, and the order of the new ones, may differ in Maya.)
///          Vertices are taken as the edges come to them, each edge at its start, then at its end.
///          Of the corners that share an id those that hang together with the lowest corner keep
///          it; each other group gets a new one behind all others, in the order of the corners.
std::shared_ptr<const MeshData> cutUvs(const MeshData& mesh, std::size_t set,
                                       std::span<const std::uint32_t> edges);

/// The mesh with one of its sets sewn along edges (ascending): at both ends of each the coordinates
/// of the faces beside it become one, in the middle of all that come together in it.
///
/// Numbers  (Believed.) The lowest id stays; the others close up.
std::shared_ptr<const MeshData> sewUvs(const MeshData& mesh, std::size_t set,
                                       std::span<const std::uint32_t> edges);

/// The mesh without the coordinates of some faces (ascending); ids that no other face has close up.
std::shared_ptr<const MeshData> deleteUvs(const MeshData& mesh, std::size_t set,
                                          std::span<const std::uint32_t> faces);

} // namespace host::geometry
