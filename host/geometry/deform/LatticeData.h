// A lattice of control points.
#pragma once

#include "host/math/Vec.h"

#include <cstdint>
#include <vector>

namespace host::geometry {

/// s * t * u points, s fastest, then t, then u; local coordinates (the undeformed box spans
/// -0.5..0.5).
struct LatticeData {
    std::int32_t s = 0, t = 0, u = 0;
    std::vector<Vec3d> points;
};

} // namespace host::geometry
