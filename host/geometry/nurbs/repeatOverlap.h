// The control points that periodic curves and surfaces store twice.
#pragma once

#include "host/geometry/nurbs/SurfaceData.h"

namespace host::geometry {

/// Puts the last `degree` control points of a periodic curve where the first ones are.
void repeatOverlap(CurveData& curve);
/// The same in every periodic direction. Precondition: a valid surface.
void repeatOverlap(SurfaceData& surface);

} // namespace host::geometry
