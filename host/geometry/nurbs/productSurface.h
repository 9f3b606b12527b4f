// Surfaces of revolution and the like: one spline carried along another.
#pragma once

#include "host/geometry/curve/SplineRows.h"
#include "host/geometry/nurbs/SurfaceData.h"

namespace host::geometry {

/// The surface of a profile turned about an axis. u runs along the profile, v along the arc (a
/// unit arc in the xy plane, z = 0): control point (i, j) is profile point i, its part across the
/// axis turned by arc point j, with x = 1 where the profile is and y = 1 a quarter turn
/// clockwise about the axis. Rational when `isRational`. Empty where profile or arc is.
SurfaceData revolved(const SplineRows& profile, const SplineRows& arc, const Vec3d& pivot,
                     const Vec3d& axis, bool isRational);

/// The surface swept by one spline moved along another: control point (i, j) is profile point i +
/// path point j - origin. u runs along the profile, v along the path.
SurfaceData translated(const SplineRows& profile, const SplineRows& path, const Vec3d& origin,
                       bool isRational);

} // namespace host::geometry
