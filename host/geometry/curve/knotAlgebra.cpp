#include "host/geometry/curve/knotAlgebra.h"

#include <algorithm>
#include <cmath>

namespace host::geometry {
namespace {

using Index = std::ptrdiff_t;

/// One knot into a spline that does not wrap; u lies in its domain.
void insertOnce(SplineRows& rows, double u)
{
    const KnotVector line(rows.knots, rows.degree, SplineForm::Open);
    if (!line.isValid()) {
        return;
    }
    const std::size_t k = line.findSpan(u);
    const std::size_t p = rows.order();
    // New control point i is a mixture of i - 1 and i, for the `degree` ones that reach the span.
    std::vector<HomogeneousPoint> mixed;
    mixed.reserve(p * rows.width);
    for (std::size_t i = k + 2 - p; i <= k + 1; ++i) {
        const double low = rows.knots[i - 1];
        const double share = (u - low) / (rows.knots[i + p - 1] - low);
        for (std::size_t j = 0; j < rows.width; ++j) {
            HomogeneousPoint point;
            point.add(rows.points[i * rows.width + j], share);
            point.add(rows.points[(i - 1) * rows.width + j], 1 - share);
            mixed.push_back(point);
        }
    }
    const Index at = static_cast<Index>((k + 2 - p) * rows.width);
    const Index replaced = static_cast<Index>((p - 1) * rows.width);
    std::copy(mixed.begin(), mixed.begin() + replaced, rows.points.begin() + at);
    rows.points.insert(rows.points.begin() + at + replaced, mixed.begin() + replaced, mixed.end());
    rows.knots.insert(rows.knots.begin() + static_cast<Index>(k) + 1, u);
}

/// The knot that is meant by a parameter: one that is there already, or the parameter.
double snapped(const SplineRows& rows, double u)
{
    const double tolerance = kKnotTolerance * (rows.end() - rows.start());
    for (const double knot : rows.knots) {
        if (std::fabs(knot - u) <= tolerance) {
            return knot;
        }
    }
    return u;
}

std::size_t multiplicity(const SplineRows& rows, double u)
{
    return static_cast<std::size_t>(std::count(rows.knots.begin(), rows.knots.end(), u));
}

void insertOpen(SplineRows& rows, double u, std::size_t times)
{
    const std::size_t present = multiplicity(rows, u);
    for (std::size_t i = present; i < std::min(present + times, rows.order()); ++i) {
        insertOnce(rows, u);
    }
}

/// Knots and control points from position `first` on.
SplineRows cropped(const SplineRows& rows, std::size_t first, std::size_t cvs)
{
    SplineRows result{rows.degree, SplineForm::Open, rows.width, {}, {}};
    const auto knots = rows.knots.begin() + static_cast<Index>(first);
    result.knots.assign(knots, knots + static_cast<Index>(cvs + rows.order() - 1));
    const auto points = rows.points.begin() + static_cast<Index>(first * rows.width);
    result.points.assign(points, points + static_cast<Index>(cvs * rows.width));
    return result;
}

std::size_t lastIndexOf(const SplineRows& rows, double knot)
{
    const auto above = std::upper_bound(rows.knots.begin(), rows.knots.end(), knot);
    return static_cast<std::size_t>(above - rows.knots.begin()) - 1;
}

/// True where `cropped` finds what it is to take, from the span after knot `first` to knot `last`.
bool canCrop(const SplineRows& rows, std::size_t first, std::size_t last)
{
    return first + 1 >= rows.order() && last > first && last + rows.order() <= rows.knots.size();
}

/// False, and nothing done, for rows whose knots do not repeat themselves.
bool insertPeriodic(SplineRows& rows, double u, std::size_t times)
{
    const double start = rows.start();
    const double end = rows.end();
    const double length = end - start;
    const std::size_t period = rows.cvCount() - rows.order();
    SplineRows wide = unrolled(rows, period + rows.order(), period + rows.order());
    const bool isSeam = u == start || u == end;
    const double inside = isSeam ? start : u;
    for (const double copy :
         {inside - length, inside, isSeam ? end : inside + length, inside + 2 * length}) {
        const double knot = snapped(wide, copy);
        if (knot >= wide.start() && knot <= wide.end()) {
            insertOpen(wide, knot, times);
        }
    }
    const std::size_t first = lastIndexOf(wide, start);
    const std::size_t last = lastIndexOf(wide, end);
    if (wide.knots.size() <= rows.knots.size() + 2 * times || !canCrop(wide, first, last)) {
        return false;
    }
    rows = cropped(wide, first + 1 - rows.order(), last - first + rows.order());
    rows.form = SplineForm::Periodic;
    return true;
}

/// Where pieces begin and end, ascending.
std::vector<double> cutsOf(const SplineRows& rows, std::span<const double> parameters)
{
    std::vector<double> cuts;
    if (rows.points.empty()) {
        return cuts;
    }
    const double tolerance = kKnotTolerance * (rows.end() - rows.start());
    const bool isPeriodic = rows.form == SplineForm::Periodic && rows.cvCount() > rows.order();
    for (const double u : parameters) {
        const bool isInside = u > rows.start() + tolerance && u < rows.end() - tolerance;
        const bool isSeam = isPeriodic && u >= rows.start() && u <= rows.end();
        if (isInside || isSeam) {
            cuts.push_back(isInside ? u : rows.start());
        }
    }
    if (!isPeriodic) {
        cuts.push_back(rows.start());
        cuts.push_back(rows.end());
    }
    std::sort(cuts.begin(), cuts.end());
    cuts.erase(std::unique(cuts.begin(), cuts.end(),
                           [&](double a, double b) { return b - a <= tolerance; }),
               cuts.end());
    if (isPeriodic && !cuts.empty()) {
        cuts.push_back(cuts.front() + (rows.end() - rows.start()));
    }
    return cuts;
}

} // namespace

bool insertKnot(SplineRows& rows, double u, std::size_t times)
{
    if (rows.points.empty() || !(u >= rows.start() && u <= rows.end()) || times == 0) {
        return true;
    }
    if (!canHold(rows.cvCount() + std::min(times, rows.order()), rows.width)) {
        return false;
    }
    const double knot = std::clamp(snapped(rows, u), rows.start(), rows.end());
    const bool wraps = rows.form == SplineForm::Periodic && rows.cvCount() > rows.order();
    if (!wraps || !insertPeriodic(rows, knot, times)) {
        rows.form = wraps ? SplineForm::Closed : rows.form;
        insertOpen(rows, knot, times);
    }
    return true;
}

SplineRows partOf(const SplineRows& rows, double from, double to)
{
    SplineRows part{rows.degree, SplineForm::Open, rows.width, {}, {}};
    if (rows.points.empty()) {
        return part;
    }
    const double length = rows.end() - rows.start();
    const bool wraps = rows.form == SplineForm::Periodic && rows.cvCount() > rows.order();
    if (!(from >= rows.start()) || !(to <= rows.end() + (wraps ? length : 0)) ||
        !(to - from > kKnotTolerance * length)) {
        return part;
    }
    part = wraps ? unrolled(rows, 0, rows.cvCount()) : rows;
    from = std::clamp(snapped(part, from), part.start(), part.end());
    to = std::clamp(snapped(part, to), part.start(), part.end());
    if (from < to) {
        insertOpen(part, from, part.order());
        insertOpen(part, to, part.order());
    }
    if (!(from < to) || multiplicity(part, from) < part.order() ||
        multiplicity(part, to) < part.order()) {
        return {part.degree, SplineForm::Open, part.width, {}, {}};
    }
    const std::size_t first = lastIndexOf(part, from);
    const auto last = static_cast<std::size_t>(
        std::lower_bound(part.knots.begin(), part.knots.end(), to) - part.knots.begin());
    return canCrop(part, first, last)
               ? cropped(part, first + 1 - part.order(), last - first + part.order())
               : SplineRows{part.degree, SplineForm::Open, part.width, {}, {}};
}

SplineRows clamped(const SplineRows& rows)
{
    if (rows.points.empty()) {
        return rows;
    }
    SplineRows result = partOf(rows, rows.start(), rows.end());
    result.form = rows.form == SplineForm::Open ? SplineForm::Open : SplineForm::Closed;
    return result;
}

SplineRows piece(const SplineRows& rows, std::span<const double> parameters, std::size_t position)
{
    const std::vector<double> cuts = cutsOf(rows, parameters);
    if (cuts.empty() && position == 0) {
        return rows;
    }
    return position + 1 < cuts.size() ? partOf(rows, cuts[position], cuts[position + 1])
                                      : SplineRows();
}

void reverse(SplineRows& rows)
{
    if (rows.points.empty()) {
        return;
    }
    const double sum = rows.start() + rows.end();
    std::reverse(rows.knots.begin(), rows.knots.end());
    for (double& knot : rows.knots) {
        knot = sum - knot;
    }
    std::vector<HomogeneousPoint> points;
    points.reserve(rows.points.size());
    for (std::size_t i = rows.cvCount(); i-- > 0;) {
        const auto row = rows.points.begin() + static_cast<Index>(i * rows.width);
        points.insert(points.end(), row, row + static_cast<Index>(rows.width));
    }
    rows.points = std::move(points);
}

void setDomain(SplineRows& rows, double start, double end)
{
    if (rows.points.empty() || !(end > start)) {
        return;
    }
    const double oldStart = rows.start();
    const double oldEnd = rows.end();
    for (double& knot : rows.knots) {
        const double placed = start + (knot - oldStart) / (oldEnd - oldStart) * (end - start);
        const bool isInside = knot >= oldStart && knot <= oldEnd;
        knot = knot == oldStart ? start
               : knot == oldEnd ? end
               : isInside       ? std::clamp(placed, start, end)
                                : placed;
    }
}

bool isClosed(const SplineRows& rows, double tolerance)
{
    if (rows.points.empty()) {
        return false;
    }
    if (rows.form == SplineForm::Periodic) {
        return true;
    }
    const SplineRows ends = clamped(rows);
    const std::size_t last = (ends.cvCount() - 1) * ends.width;
    double extent = 0;
    double gap = 0;
    for (std::size_t i = 0; i < ends.points.size(); ++i) {
        const Vec3d first = ends.points[i % ends.width].projected();
        extent = std::max(extent, length(ends.points[i].projected() - first));
    }
    for (std::size_t j = 0; j < ends.width; ++j) {
        gap = std::max(gap, length(ends.points[last + j].projected() - ends.points[j].projected()));
    }
    return gap <= tolerance * extent;
}

} // namespace host::geometry
