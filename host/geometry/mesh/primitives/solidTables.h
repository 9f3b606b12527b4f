// Corners and faces of regular solids.
#pragma once

#include "host/geometry/mesh/primitives/divideFaces.h"
#include "host/geometry/mesh/primitives/platonicSolids.h"

namespace host::geometry {

/// On the unit sphere; faces seen from outside run counter-clockwise.
PolygonMesh regularSolid(RegularSolid solid);

} // namespace host::geometry
