// Parallel curves on one knot vector: what a curve is, and a surface in either direction, so that
// the algebra of knots is written once.
#pragma once

#include "host/geometry/curve/HomogeneousPoint.h"
#include "host/geometry/curve/KnotVector.h"

#include <cstddef>
#include <vector>

namespace host::geometry {

/// `width` curves: control point i of curve j is points[i * width + j]. Knots as in CurveData.
struct SplineRows {
    std::int32_t degree = 0;
    SplineForm form = SplineForm::Open;
    std::size_t width = 1;
    std::vector<double> knots;
    std::vector<HomogeneousPoint> points;

    std::size_t order() const { return static_cast<std::size_t>(degree); }
    std::size_t cvCount() const { return points.size() / width; }
    double start() const { return knots[order() - 1]; }
    double end() const { return knots[cvCount() - 1]; }
};

/// The rows of a curve; no points where it is not valid.
SplineRows rowsOf(const CurveData& curve);
/// A curve of the first row. `isRational` and `dimension` say what it keeps.
CurveData curveOf(const SplineRows& rows, bool isRational, std::int32_t dimension = 3);

/// The same rows without wrapping: those of a periodic direction lengthened by whole control points
/// on both sides so that the domain reaches `before` and `after` spans further; others, and those
/// whose knots do not repeat themselves, as they are.
SplineRows unrolled(const SplineRows& rows, std::size_t before, std::size_t after);

} // namespace host::geometry
