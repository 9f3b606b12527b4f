// How sharp edges and vertices are when the mesh is smoothed.
#pragma once

#include "host/geometry/mesh/MeshData.h"

#include <cstdint>
#include <memory>
#include <span>

namespace host::geometry {

/// A new sharpness of an edge or a vertex; 0 or less takes it away.
struct Crease {
    std::uint32_t part = 0;
    float value = 0;
};

/// The mesh with other creases at some of its edges and vertices (each ascending, no number twice);
/// those that are not named stay, and those that it does not have are left out.
std::shared_ptr<const MeshData> setCreases(const MeshData& mesh, std::span<const Crease> edges,
                                           std::span<const Crease> vertices);

} // namespace host::geometry
