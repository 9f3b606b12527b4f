// The round of a bevel.
#pragma once

#include "host/math/Vec.h"

namespace host::geometry {

/// A point on the way from `from` to `to` about the corner `tip` that both are beside: `part` of
/// the angle along the arc that touches both legs where they are equally long; legs of different
/// lengths stretch it. `depth` 1: on the arc, 0: on the straight line, others in proportion.
Vec3d bevelArc(const Vec3d& tip, const Vec3d& from, const Vec3d& to, double part, double depth);

} // namespace host::geometry
