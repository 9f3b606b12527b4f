// Rings of points that close to a tube without ends: tori, pipes.
#pragma once

#include "host/geometry/mesh/primitives/SolidBuilder.h"

#include <cstdint>
#include <span>

namespace host::geometry {

/// Edges and faces between rings of `sides` points that are all of the builder's points so far; the
/// last ring joins the first. Edges: around the rings, smooth or hard as `isRingSmooth` says, one
/// entry a ring; then from ring to ring, smooth. Faces between the rings; a loop begins at point 1.
/// Texture coordinates are the unit square in rows from above, each with the first point again at
/// its end, and the first row again below.
void addClosedRings(SolidBuilder& builder, std::uint32_t sides,
                    std::span<const std::uint8_t> isRingSmooth, bool hasUvs);

} // namespace host::geometry
