// Splines through given points, and changes of degree.
#pragma once

#include "host/geometry/curve/SplineRows.h"

#include <span>

namespace host::geometry {

/// The parameters at which control points stand for themselves: means of `degree` neighbouring
/// knots (Greville).
std::vector<double> grevilleParameters(const std::vector<double>& knots, std::int32_t degree);

/// Knots 0 0 0 1 2 .. n n n: `spans` unit steps between ends of multiplicity `degree`.
std::vector<double> uniformKnots(std::int32_t degree, std::size_t spans, double start, double end);

/// The spline on `knots` that agrees with `rows` at the Greville parameters of the knots, brought
/// to the domain of `rows`. Exactly the same spline where the new space holds it. No points when
/// the equations have no solution or there would be too many (kMaxSplineCvs).
SplineRows resampled(const SplineRows& rows, const std::vector<double>& knots, std::int32_t degree);

/// The spline on the rows' knots that goes through the rows' points at the Greville parameters. No
/// points when the equations have no solution.
SplineRows throughGreville(const SplineRows& rows);

/// A curve at a distance in the plane across `normal`: its Greville points moved along tangent x
/// normal, and the curve of the same knots through them. Exact for straight lines, near for others.
SplineRows offset(const SplineRows& curve, const Vec3d& normal, double distance);

/// The same spline with a higher degree; clamped.
SplineRows elevated(const SplineRows& rows, std::int32_t degree);

/// The cubic spline with knots at the parameters that goes through the points, `width` of them per
/// parameter, with the given derivatives at both ends. Parameters ascend; at least two.
SplineRows cubicThrough(std::span<const double> parameters,
                        const std::vector<HomogeneousPoint>& points, std::size_t width,
                        std::span<const HomogeneousPoint> startSlopes,
                        std::span<const HomogeneousPoint> endSlopes);

/// The closed cubic spline of period parameters.back() - parameters.front() through the points,
/// one row fewer than parameters; at least three rows. The point of parameter i is row i. No points
/// where there would be too many.
SplineRows periodicCubicThrough(std::span<const double> parameters,
                                const std::vector<HomogeneousPoint>& points, std::size_t width);

} // namespace host::geometry
