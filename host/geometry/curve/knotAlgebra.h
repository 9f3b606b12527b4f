// Insertion of knots, parts, and reversal: the shape of a spline stays what it is.
#pragma once

#include "host/geometry/curve/SplineRows.h"

#include <span>

namespace host::geometry {

/// Control points beyond this number, those of a whole surface, are not made; an operation that
/// would need more leaves its input as it is.
inline constexpr std::size_t kMaxSplineCvs = 1u << 20;
constexpr bool canHold(std::size_t cvs, std::size_t width)
{
    return width == 0 || cvs <= kMaxSplineCvs / width;
}
/// Insertions times control points that one operation may take.
inline constexpr std::size_t kMaxInsertionWork = 1u << 28;

/// Inserts the knot `u` of the domain up to `times` times (Boehm), never beyond multiplicity
/// `degree`. A periodic spline stays periodic. Knots within `kKnotTolerance` of the domain's length
/// beside each other are the same. False, and nothing done, where there would be too many control
/// points.
bool insertKnot(SplineRows& rows, double u, std::size_t times);
inline constexpr double kKnotTolerance = 1e-10;

/// The part between two parameters, clamped at both ends. Of a periodic spline `to` may lie up to
/// one turn beyond the end of the domain. No points where from < to does not hold inside.
SplineRows partOf(const SplineRows& rows, double from, double to);
/// All of it, clamped at both ends; a periodic one becomes closed.
SplineRows clamped(const SplineRows& rows);
/// The piece at a position, in ascending order, of those into which parameters cut a spline: a
/// periodic one is opened at the first, so that n parameters make n pieces; of an open one they
/// make n + 1. Parameters at the ends of an open one and outside do not count. No points where
/// there are fewer pieces.
SplineRows piece(const SplineRows& rows, std::span<const double> parameters, std::size_t position);

/// Backwards over the same domain: the point at u is that which was at start + end - u.
void reverse(SplineRows& rows);
/// Stretches the knots over another domain.
void setDomain(SplineRows& rows, double start, double end);
/// Rows whose ends meet within `tolerance` of their extent.
bool isClosed(const SplineRows& rows, double tolerance = 1e-9);

} // namespace host::geometry
