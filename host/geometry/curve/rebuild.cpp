#include "host/geometry/curve/rebuild.h"

#include "host/geometry/curve/interpolation.h"
#include "host/geometry/curve/knotAlgebra.h"

#include <algorithm>
#include <cmath>

namespace host::geometry {
namespace {

/// Splines are not brought onto more common knots than this.
constexpr std::size_t kMaxCommonKnots = 4096;

std::vector<HomogeneousPoint> pointsAt(const SplineRows& rows, const KnotVector& line, double u)
{
    SplineBasis basis;
    line.evaluateValues(u, basis);
    std::vector<HomogeneousPoint> result(rows.width);
    for (std::size_t i = 0; i <= rows.order(); ++i) {
        for (std::size_t j = 0; j < rows.width; ++j) {
            result[j].add(rows.points[(basis.firstCv + i) * rows.width + j], basis.value[i]);
        }
    }
    return result;
}

SplineRows periodicUniform(const SplineRows& rows, std::size_t spans)
{
    const KnotVector line(rows.knots, rows.degree, rows.form);
    std::vector<double> parameters;
    std::vector<HomogeneousPoint> points;
    const double step = (rows.end() - rows.start()) / static_cast<double>(spans);
    for (std::size_t i = 0; i < spans; ++i) {
        parameters.push_back(rows.start() + step * static_cast<double>(i));
        const auto row = pointsAt(rows, line, parameters.back());
        points.insert(points.end(), row.begin(), row.end());
    }
    parameters.push_back(rows.end());
    return periodicCubicThrough(parameters, points, rows.width);
}

std::size_t spanCount(const SplineRows& rows)
{
    const std::size_t breaks = KnotVector(rows.knots, rows.degree, rows.form).breaks().size();
    return std::max<std::size_t>(breaks, 2) - 1;
}

/// Every knot as often as the one of both that has it more often; knots that are nearly the same
/// are.
std::vector<double> unionOf(const std::vector<double>& a, const std::vector<double>& b)
{
    std::vector<double> both;
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < a.size() || j < b.size()) {
        const bool hasBoth = i < a.size() && j < b.size();
        if (hasBoth && std::fabs(a[i] - b[j]) <= kKnotTolerance) {
            both.push_back(a[i]);
            ++i;
            ++j;
        } else if (j == b.size() || (hasBoth && a[i] < b[j])) {
            both.push_back(a[i++]);
        } else {
            both.push_back(b[j++]);
        }
    }
    return both;
}

/// Inserts the knots that are wanted and not there.
void insertMissing(SplineRows& rows, const std::vector<double>& knots)
{
    for (std::size_t i = 0; i < knots.size();) {
        const auto last = std::upper_bound(knots.begin(), knots.end(), knots[i]);
        const auto times = static_cast<std::size_t>(last - knots.begin()) - i;
        const KnotVector line(rows.knots, rows.degree, rows.form);
        const std::size_t present = line.multiplicity(knots[i], kKnotTolerance);
        if (present < times && knots[i] > rows.start() && knots[i] < rows.end()) {
            insertKnot(rows, knots[i], times - present);
        }
        i += times;
    }
}

bool haveSameKnots(const std::vector<SplineRows>& splines)
{
    const SplineRows& first = splines.front();
    return std::all_of(splines.begin(), splines.end(), [&](const SplineRows& rows) {
        return rows.degree == first.degree && rows.form == first.form &&
               rows.knots.size() == first.knots.size() &&
               std::equal(rows.knots.begin(), rows.knots.end(), first.knots.begin(),
                          [](double a, double b) { return std::fabs(a - b) <= kKnotTolerance; });
    });
}

SplineRows oriented(const SplineRows& rows, bool isReversed)
{
    SplineRows result = clamped(rows);
    if (isReversed) {
        reverse(result);
    }
    return result;
}

/// a + (b - a) * share, of points that may have weights.
HomogeneousPoint between(const HomogeneousPoint& a, const HomogeneousPoint& b, double share)
{
    const Vec3d position = a.projected() * (1 - share) + b.projected() * share;
    return homogeneous(position, a.w * (1 - share) + b.w * share);
}

} // namespace

SplineRows uniform(const SplineRows& rows, std::int32_t degree, std::size_t spans)
{
    if (rows.points.empty() || degree > kMaxSplineDegree) {
        return rows;
    }
    degree = degree < 1 ? rows.degree : degree;
    spans = std::min(spans == 0 ? spanCount(rows) : spans, kMaxRebuiltSpans);
    if (!canHold(spans + static_cast<std::size_t>(degree), rows.width)) {
        return {};
    }
    if (rows.form == SplineForm::Periodic && degree == 3 && spans >= 3) {
        return periodicUniform(rows, spans);
    }
    const SplineRows ends = clamped(rows);
    SplineRows result =
        resampled(ends, uniformKnots(degree, spans, ends.start(), ends.end()), degree);
    result.form = ends.form;
    return result;
}

SplineRows uniformKnotsKeepingPoints(const SplineRows& rows)
{
    SplineRows result = rows;
    if (rows.points.empty()) {
        return result;
    }
    const std::size_t spans = rows.cvCount() - rows.order();
    if (rows.form != SplineForm::Periodic) {
        result.knots = uniformKnots(rows.degree, spans, rows.start(), rows.end());
        return result;
    }
    const double step = (rows.end() - rows.start()) / static_cast<double>(spans);
    for (std::size_t i = 0; i < result.knots.size(); ++i) {
        const double steps = static_cast<double>(i) - static_cast<double>(rows.order() - 1);
        result.knots[i] = rows.start() + step * steps;
    }
    return result;
}

SplineRows withKnotsOf(const SplineRows& rows, const SplineRows& model)
{
    if (rows.points.empty() || model.points.empty()) {
        return rows;
    }
    const SplineRows ends = clamped(rows);
    SplineRows shape = clamped(model);
    setDomain(shape, ends.start(), ends.end());
    SplineRows result = resampled(ends, shape.knots, shape.degree);
    result.form = ends.form;
    return result.points.empty() ? rows : result;
}

SplineRows withSimpleKnots(const SplineRows& rows)
{
    if (rows.points.empty()) {
        return rows;
    }
    const SplineRows ends = clamped(rows);
    const auto breaks = KnotVector(ends.knots, ends.degree, SplineForm::Open).breaks();
    std::vector<double> knots(ends.order() - 1, breaks.front());
    knots.insert(knots.end(), breaks.begin(), breaks.end());
    knots.insert(knots.end(), ends.order() - 1, breaks.back());
    if (knots.size() == rows.knots.size()) {
        return rows;
    }
    SplineRows result = resampled(ends, knots, ends.degree);
    result.form = ends.form;
    return result.points.empty() ? rows : result;
}

SplineRows inBezierPieces(const SplineRows& rows)
{
    SplineRows result = clamped(rows);
    if (result.points.empty()) {
        return result;
    }
    const auto breaks = KnotVector(result.knots, result.degree, SplineForm::Open).breaks();
    const std::size_t insertions = breaks.size() * result.order();
    if (!canHold(insertions, result.width) ||
        insertions > kMaxInsertionWork / (result.points.size() * result.order())) {
        return {};
    }
    for (const double u : breaks) {
        insertKnot(result, u, result.order());
    }
    return result;
}

void setRange(SplineRows& rows, KeptRange range, double start, double end)
{
    if (rows.points.empty()) {
        return;
    }
    switch (range) {
    case KeptRange::ZeroToOne:
        return setDomain(rows, 0, 1);
    case KeptRange::ZeroToSpans:
        return setDomain(rows, 0, static_cast<double>(spanCount(rows)));
    case KeptRange::Same:
        return setDomain(rows, start, end);
    }
}

bool makeCompatible(std::vector<SplineRows>& splines)
{
    std::int32_t degree = 1;
    for (SplineRows& rows : splines) {
        if (rows.points.empty()) {
            return false;
        }
        setDomain(rows, 0, 1);
        degree = std::max(degree, rows.degree);
    }
    if (splines.empty() || haveSameKnots(splines)) {
        return !splines.empty();
    }
    std::vector<double> knots;
    std::size_t width = 0;
    for (SplineRows& rows : splines) {
        width = std::max(width, rows.width);
        rows = elevated(clamped(rows), degree);
        if (rows.points.empty() || knots.size() > kMaxCommonKnots) {
            return false;
        }
        knots = unionOf(knots, rows.knots);
    }
    if (knots.size() > kMaxCommonKnots || !canHold(knots.size(), width) ||
        knots.size() * knots.size() > kMaxInsertionWork / splines.size() / width) {
        return false;
    }
    for (SplineRows& rows : splines) {
        insertMissing(rows, knots);
        if (rows.knots.size() != knots.size()) {
            return false;
        }
        rows.knots = knots;
    }
    return true;
}

SplineRows attached(const SplineRows& first, const SplineRows& second, const AttachOptions& options)
{
    if (first.points.empty() || second.points.empty() || first.width != second.width ||
        !canHold(first.cvCount() + second.cvCount(), first.width)) {
        return {};
    }
    const std::int32_t degree = std::max(first.degree, second.degree);
    SplineRows result = elevated(oriented(first, options.reversesFirst), degree);
    SplineRows next = elevated(oriented(second, options.reversesSecond), degree);
    if (result.points.empty() || next.points.empty() ||
        !canHold(result.cvCount() + next.cvCount(), result.width)) {
        return {};
    }
    setDomain(next, result.end(), result.end() + (next.end() - next.start()));
    const std::size_t joint = (result.cvCount() - 1) * result.width;
    for (std::size_t j = 0; j < result.width; ++j) {
        HomogeneousPoint& end = result.points[joint + j];
        end = between(end, next.points[j], options.blends ? options.blendBias : 0.5);
    }
    result.points.insert(result.points.end(),
                         next.points.begin() + static_cast<std::ptrdiff_t>(next.width),
                         next.points.end());
    result.knots.insert(result.knots.end(),
                        next.knots.begin() + static_cast<std::ptrdiff_t>(next.order()),
                        next.knots.end());
    result.form = SplineForm::Open;
    return result;
}

SplineRows closedUp(const SplineRows& rows, double blendBias)
{
    if (rows.points.empty() || rows.form == SplineForm::Periodic) {
        return rows;
    }
    SplineRows result = clamped(rows);
    const std::size_t last = (result.cvCount() - 1) * result.width;
    for (std::size_t j = 0; j < result.width; ++j) {
        const HomogeneousPoint joint =
            between(result.points[last + j], result.points[j], blendBias);
        result.points[j] = joint;
        result.points[last + j] = joint;
    }
    result.form = SplineForm::Closed;
    return result;
}

SplineRows closedByLine(const SplineRows& rows)
{
    if (rows.points.empty() || rows.form == SplineForm::Periodic) {
        return rows;
    }
    const SplineRows ends = clamped(rows);
    const auto width = static_cast<std::ptrdiff_t>(ends.width);
    const double span = (ends.end() - ends.start()) / static_cast<double>(spanCount(ends));
    SplineRows line{1, SplineForm::Open, ends.width, {0, span}, {}};
    line.points.assign(ends.points.end() - width, ends.points.end());
    line.points.insert(line.points.end(), ends.points.begin(), ends.points.begin() + width);
    SplineRows result = attached(ends, line, {});
    if (result.points.empty()) {
        return rows;
    }
    result.form = SplineForm::Closed;
    return result;
}

} // namespace host::geometry
