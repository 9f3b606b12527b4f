// Creases from level to level of subdivision.
#pragma once

#include "host/geometry/mesh/MeshData.h"
#include "host/geometry/mesh/shape/SubdivisionLevel.h"

#include <cstdint>
#include <span>

namespace host::geometry {

/// Puts the creases of a mesh on a level. `placeOf`: the level's edge of each edge of the mesh.
void applyCreases(const MeshData& mesh, std::span<const std::uint32_t> placeOf,
                  SubdivisionLevel& level);

/// What the edges and vertices of the next level have left. Its vertices begin with those of the
/// level; the halves of edge e are `firstHalf` + 2 e and the one after it.
void divideCreases(const SubdivisionLevel& level, CreaseRule rule, std::uint32_t firstHalf,
                   SubdivisionLevel& next);

} // namespace host::geometry
