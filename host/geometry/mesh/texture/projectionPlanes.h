// The sides from which faces are seen when several planes project at once.
#pragma once

#include "host/math/Vec.h"

#include <cstdint>
#include <vector>

namespace host::geometry {

/// A plane that looks against `normal`; the three are unit vectors, at right angles.
struct ProjectionPlane {
    Vec3d right;
    Vec3d up;
    Vec3d normal;
};

/// The sides of a solid with 4, 5 (a prism), 6, 8 or 12 of them; of a cube for other counts.
std::vector<ProjectionPlane> projectionPlanes(std::uint32_t count);

} // namespace host::geometry
