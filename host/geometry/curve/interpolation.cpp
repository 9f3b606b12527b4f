#include "host/geometry/curve/interpolation.h"

#include "host/geometry/curve/BandSystem.h"
#include "host/geometry/curve/CurveEvaluator.h"
#include "host/geometry/curve/knotAlgebra.h"

#include <algorithm>

namespace host::geometry {
namespace {

/// Coefficients of one system of equations beyond which none is solved.
constexpr std::size_t kMaxBandNumbers = 1u << 24;

void evaluateRow(const SplineRows& rows, const KnotVector& line, double u,
                 std::vector<HomogeneousPoint>& out)
{
    SplineBasis basis;
    line.evaluateValues(u, basis);
    for (std::size_t j = 0; j < rows.width; ++j) {
        HomogeneousPoint sum;
        for (std::size_t i = 0; i <= rows.order(); ++i) {
            sum.add(rows.points[(basis.firstCv + i) * rows.width + j], basis.value[i]);
        }
        out.push_back(sum);
    }
}

void setValues(BandSystem& system, std::size_t row, const KnotVector& line, double u)
{
    SplineBasis basis;
    line.evaluateValues(u, basis);
    for (std::size_t i = 0; i <= static_cast<std::size_t>(line.degree()); ++i) {
        if (system.reaches(row, basis.firstCv + i)) {
            system.at(row, basis.firstCv + i) = basis.value[i];
        }
    }
}

void setSlopes(BandSystem& system, std::size_t row, const KnotVector& line, double u)
{
    SplineBasis basis;
    line.evaluate(u, basis);
    for (std::size_t i = 0; i <= static_cast<std::size_t>(line.degree()); ++i) {
        if (system.reaches(row, basis.firstCv + i)) {
            system.at(row, basis.firstCv + i) = basis.first[i];
        }
    }
}

} // namespace

std::vector<double> grevilleParameters(const std::vector<double>& knots, std::int32_t degree)
{
    const auto p = static_cast<std::size_t>(degree);
    std::vector<double> result;
    for (std::size_t i = 0; i + p <= knots.size(); ++i) {
        double sum = 0;
        for (std::size_t j = i; j < i + p; ++j) {
            sum += knots[j];
        }
        result.push_back(sum / degree);
    }
    return result;
}

std::vector<double> uniformKnots(std::int32_t degree, std::size_t spans, double start, double end)
{
    std::vector<double> knots(static_cast<std::size_t>(degree), start);
    for (std::size_t i = 1; i < spans; ++i) {
        knots.push_back(start +
                        (end - start) * static_cast<double>(i) / static_cast<double>(spans));
    }
    knots.insert(knots.end(), static_cast<std::size_t>(degree), end);
    return knots;
}

SplineRows resampled(const SplineRows& rows, const std::vector<double>& knots, std::int32_t degree)
{
    SplineRows result{degree, SplineForm::Open, rows.width, knots, {}};
    const KnotVector target(knots, degree, SplineForm::Open);
    const KnotVector source(rows.knots, rows.degree, SplineForm::Open);
    if (rows.points.empty() || !source.isValid() || !target.isValid() ||
        target.cvCount() > kMaxBandNumbers / (2 * static_cast<std::size_t>(degree) + 1) ||
        !canHold(target.cvCount(), rows.width)) {
        return result;
    }
    const double scale = (source.end() - source.start()) / (target.end() - target.start());
    BandSystem system(target.cvCount(), static_cast<std::size_t>(degree));
    std::vector<HomogeneousPoint> sides;
    const std::vector<double> parameters = grevilleParameters(knots, degree);
    for (std::size_t row = 0; row < parameters.size(); ++row) {
        setValues(system, row, target, parameters[row]);
        evaluateRow(rows, source, source.start() + (parameters[row] - target.start()) * scale,
                    sides);
    }
    if (system.solve(sides, rows.width)) {
        result.points = std::move(sides);
    }
    return result;
}

SplineRows throughGreville(const SplineRows& rows)
{
    SplineRows result{rows.degree, rows.form, rows.width, rows.knots, {}};
    const KnotVector line(rows.knots, rows.degree, SplineForm::Open);
    const std::vector<double> parameters = grevilleParameters(rows.knots, rows.degree);
    if (!line.isValid() || parameters.size() != rows.cvCount() ||
        parameters.size() > kMaxBandNumbers / (2 * rows.order() + 1)) {
        return result;
    }
    BandSystem system(parameters.size(), rows.order());
    for (std::size_t row = 0; row < parameters.size(); ++row) {
        setValues(system, row, line, parameters[row]);
    }
    std::vector<HomogeneousPoint> sides = rows.points;
    if (system.solve(sides, rows.width)) {
        result.points = std::move(sides);
    }
    return result;
}

SplineRows offset(const SplineRows& curve, const Vec3d& normal, double distance)
{
    SplineRows moved = clamped(curve);
    const CurveEvaluator evaluator(curveOf(moved, true));
    if (!evaluator.isValid()) {
        return {};
    }
    const std::vector<double> parameters = grevilleParameters(moved.knots, moved.degree);
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        const CurvePoint here = evaluator.evaluate(parameters[i]);
        const Vec3d away = normalized(cross(here.first, normal));
        moved.points[i] = homogeneous(here.position + away * distance, 1);
    }
    return throughGreville(moved);
}

SplineRows elevated(const SplineRows& rows, std::int32_t degree)
{
    if (rows.points.empty() || degree <= rows.degree || degree > kMaxSplineDegree) {
        return rows;
    }
    const SplineRows ends = clamped(rows);
    const KnotVector line(ends.knots, ends.degree, SplineForm::Open);
    const auto raise = static_cast<std::size_t>(degree - rows.degree);
    std::vector<double> knots;
    for (const double knot : line.breaks()) {
        const std::size_t times = std::min(line.multiplicity(knot), ends.order()) + raise;
        knots.insert(knots.end(), times, knot);
    }
    SplineRows result = resampled(ends, knots, degree);
    result.form = ends.form;
    return result;
}

SplineRows cubicThrough(std::span<const double> parameters,
                        const std::vector<HomogeneousPoint>& points, std::size_t width,
                        std::span<const HomogeneousPoint> startSlopes,
                        std::span<const HomogeneousPoint> endSlopes)
{
    SplineRows result{3, SplineForm::Open, width, {}, {}};
    result.knots.assign(2, parameters.front());
    result.knots.insert(result.knots.end(), parameters.begin(), parameters.end());
    result.knots.insert(result.knots.end(), 2, parameters.back());
    const KnotVector line(result.knots, 3, SplineForm::Open);
    if (!line.isValid()) {
        return result;
    }
    // The first point, the slope there, the points between, the slope at the end, the last point.
    const std::size_t size = parameters.size() + 2;
    BandSystem system(size, 3);
    std::vector<HomogeneousPoint> sides(points.begin(),
                                        points.begin() + static_cast<std::ptrdiff_t>(width));
    sides.insert(sides.end(), startSlopes.begin(), startSlopes.end());
    sides.insert(sides.end(), points.begin() + static_cast<std::ptrdiff_t>(width),
                 points.end() - static_cast<std::ptrdiff_t>(width));
    sides.insert(sides.end(), endSlopes.begin(), endSlopes.end());
    sides.insert(sides.end(), points.end() - static_cast<std::ptrdiff_t>(width), points.end());
    setValues(system, 0, line, parameters.front());
    setSlopes(system, 1, line, parameters.front());
    for (std::size_t i = 1; i + 1 < parameters.size(); ++i) {
        setValues(system, i + 1, line, parameters[i]);
    }
    setSlopes(system, size - 2, line, parameters.back());
    setValues(system, size - 1, line, parameters.back());
    if (system.solve(sides, width)) {
        result.points = std::move(sides);
    }
    return result;
}

SplineRows periodicCubicThrough(std::span<const double> parameters,
                                const std::vector<HomogeneousPoint>& points, std::size_t width)
{
    // Beyond this many spans a point's influence is below the last digit.
    constexpr std::size_t kReach = 40;
    // The unrolled rows may be so many times larger than what is kept of them.
    constexpr std::size_t kMostTurnedOver = 8;
    const std::size_t period = parameters.size() - 1;
    const double length = parameters.back() - parameters.front();
    std::vector<double> wide;
    std::vector<HomogeneousPoint> sides;
    const std::size_t turns = kReach / period + 1;
    if (!canHold(period + 3, width) ||
        !canHold((2 * turns + 1) * period / kMostTurnedOver, width)) {
        return {3, SplineForm::Periodic, width, {}, {}};
    }
    for (std::size_t i = 0; i <= (2 * turns + 1) * period; ++i) {
        const double turn = static_cast<double>(i / period) - static_cast<double>(turns);
        wide.push_back(parameters[i % period] + length * turn);
        const auto row = points.begin() + static_cast<std::ptrdiff_t>(i % period * width);
        sides.insert(sides.end(), row, row + static_cast<std::ptrdiff_t>(width));
    }
    const std::vector<HomogeneousPoint> flat(width);
    const SplineRows open = cubicThrough(wide, sides, width, flat, flat);
    SplineRows result{3, SplineForm::Periodic, width, {}, {}};
    if (open.points.empty()) {
        return result;
    }
    // Knot `turns * period` of the wide ones (two more stand before it) is the start.
    const std::size_t first = turns * period;
    result.knots.assign(open.knots.begin() + static_cast<std::ptrdiff_t>(first),
                        open.knots.begin() + static_cast<std::ptrdiff_t>(first + period + 5));
    const auto cvs = open.points.begin() + static_cast<std::ptrdiff_t>(first * width);
    result.points.assign(cvs, cvs + static_cast<std::ptrdiff_t>(period * width));
    for (std::size_t i = 0; i < 3 * width; ++i) {
        const HomogeneousPoint repeated = result.points[i % (period * width)];
        result.points.push_back(repeated);
    }
    return result;
}

} // namespace host::geometry
