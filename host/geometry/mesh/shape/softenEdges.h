// Hard and soft edges by the angle between their faces.
#pragma once

#include "host/geometry/mesh/MeshData.h"
#include "host/math/Matrix4.h"

#include <cstdint>
#include <memory>
#include <span>

namespace host::geometry {

/// The given edges (ascending numbers below the count) turn hard where the polygon normals of their
/// faces include more than `angle` (radians), soft elsewhere; with an angle of 0 or less all of
/// them turn hard. Edges with fewer than two faces keep what they are.
///
/// Angles are those of the points times `space`. Locked normals stay with their corners; where
/// corners come to share a normal the first locked one holds.
std::shared_ptr<const MeshData> softenEdges(const MeshData& mesh,
                                            std::span<const std::uint32_t> edges, double angle,
                                            const Matrix4& space);

} // namespace host::geometry
