// The outline of a polygon set inwards.
#pragma once

#include "host/math/Vec.h"

#include <cstdint>
#include <span>
#include <vector>

namespace host::geometry {

/// The points of a loop when edges of it (from each point to the next; 1 set in, 0 not) come
/// inwards by an equal distance in the plane of `normal`; a point between an edge that does and one
/// that does not stays on the line of the latter. Outwards where the distance is negative.
///
/// Limits  a point at a corner sharper than about a hundredth moves no farther than there.
/// `inset` takes the points; it must not be the loop itself.
void insetLoop(std::span<const Vec3d> loop, std::span<const std::uint8_t> isSetIn,
               const Vec3d& normal, double distance, std::vector<Vec3d>& inset);

} // namespace host::geometry
