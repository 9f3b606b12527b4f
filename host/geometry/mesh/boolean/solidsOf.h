// Parts of a mesh as solids.
#pragma once

#include "host/geometry/mesh/MeshData.h"
#include "host/geometry/mesh/boolean/Solid.h"
#include "host/geometry/mesh/triangulate.h"

#include <cstdint>
#include <span>
#include <vector>

namespace host::geometry {

/// The triangles of each part, which has no vertex in common with another; their sources are the
/// numbers of the triangulation. What is inside out is turned, so that every solid has its inside
/// within. `firstFaces`: of each part, ascending, the first is 0.
std::vector<Solid> solidsOf(const MeshData& mesh, const Triangulation& triangles,
                            std::span<const std::uint32_t> firstFaces, const SolidGrid& grid);

} // namespace host::geometry
