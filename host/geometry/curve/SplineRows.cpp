#include "host/geometry/curve/SplineRows.h"

#include "host/geometry/curve/CurveEvaluator.h"

#include <algorithm>

namespace host::geometry {

SplineRows rowsOf(const CurveData& curve)
{
    SplineRows rows;
    if (!isValidCurve(curve)) {
        return rows;
    }
    rows.degree = curve.degree;
    rows.form = curve.form;
    rows.knots = curve.knots;
    rows.points = homogeneousPoints(curve);
    return rows;
}

CurveData curveOf(const SplineRows& rows, bool isRational, std::int32_t dimension)
{
    CurveData curve;
    curve.degree = rows.degree;
    curve.form = rows.form;
    curve.rational = isRational;
    curve.dimension = dimension;
    curve.knots = rows.knots;
    curve.poles.reserve(rows.cvCount() * curve.stride());
    for (std::size_t i = 0; i < rows.cvCount(); ++i) {
        const HomogeneousPoint& point = rows.points[i * rows.width];
        const Vec3d position = isRational ? point.projected() : point.vector();
        curve.poles.push_back(position.x);
        curve.poles.push_back(position.y);
        if (dimension == 3) {
            curve.poles.push_back(position.z);
        }
        if (isRational) {
            curve.poles.push_back(point.w);
        }
    }
    curve.spans = static_cast<std::int32_t>(rows.cvCount()) - rows.degree;
    return curve;
}

SplineRows unrolled(const SplineRows& rows, std::size_t before, std::size_t after)
{
    const std::size_t period = rows.cvCount() - rows.order();
    SplineRows plain = rows;
    plain.form = SplineForm::Open;
    if (rows.form != SplineForm::Periodic || period == 0) {
        return plain;
    }
    SplineRows result{rows.degree, SplineForm::Open, rows.width, {}, {}};
    const double length = rows.end() - rows.start();
    // Control point and knot i of the endless curve are those of i modulo the period.
    const std::size_t turns = before / period + 1;
    const auto knotAt = [&](std::size_t shifted) {
        const std::size_t turn = shifted / period;
        return rows.knots[shifted % period] +
               length * (static_cast<double>(turn) - static_cast<double>(turns));
    };
    const std::size_t first = turns * period - before;
    const std::size_t cvs = rows.cvCount() + before + after;
    for (std::size_t i = 0; i < cvs + rows.order() - 1; ++i) {
        const bool isOwn = i >= before && i - before < rows.knots.size();
        result.knots.push_back(isOwn ? rows.knots[i - before] : knotAt(first + i));
    }
    for (std::size_t i = 0; i < cvs; ++i) {
        const auto own =
            rows.points.begin() + static_cast<std::ptrdiff_t>((first + i) % period * rows.width);
        result.points.insert(result.points.end(), own,
                             own + static_cast<std::ptrdiff_t>(rows.width));
    }
    // Knots that do not repeat themselves cannot be lengthened.
    return std::is_sorted(result.knots.begin(), result.knots.end()) ? result : plain;
}

} // namespace host::geometry
