// The points of whatever geometry a value holds: vertices, control points, points of lattices.
#pragma once

#include "host/math/Vec.h"
#include "host/types/ComputeContext.h"
#include "host/types/Value.h"

#include <cstdint>
#include <vector>

namespace host::nodes {

/// In the order of their numbers, of surfaces v fastest. None where the value holds no geometry, or
/// a curve in a parameter plane.
std::vector<Vec3d> pointsOf(const Value& geometry);
/// The geometry with other points, as many as it has; everything else is shared.
Value withPoints(const Value& geometry, const std::vector<Vec3d>& points);

/// How many numbers each bracket of a component's text ranges over: vertices and control points of
/// curves one, surfaces two, lattices three.
std::vector<std::uint32_t> pointBrackets(const Value& geometry);

/// The points that carry a group number; null where the geometry knows no such group of a part of
/// its points.
std::shared_ptr<const std::vector<std::uint32_t>> pointGroup(const Value& geometry,
                                                             std::int32_t id);

/// The matrix from the geometry's own space to the world; identity where nothing says which shape
/// it came from.
Matrix4 worldOf(ComputeContext& context, const Value& geometry);

} // namespace host::nodes
