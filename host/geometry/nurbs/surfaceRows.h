// Surfaces as parallel curves in one of their directions.
#pragma once

#include "host/geometry/curve/SplineRows.h"
#include "host/geometry/nurbs/SurfaceData.h"

namespace host::geometry {

enum class SurfaceDirection : std::uint8_t { U, V };

/// The curves of a surface along a direction: row i are the control points with that index in it.
/// No points where the surface is not valid.
SplineRows rowsOf(const SurfaceData& surface, SurfaceDirection direction);

/// The surface with other rows in one direction: their number of curves is that of `surface`'s
/// control points in the other one. Trim regions are not carried over.
SurfaceData surfaceOf(const SplineRows& rows, const SurfaceData& surface,
                      SurfaceDirection direction);

} // namespace host::geometry
