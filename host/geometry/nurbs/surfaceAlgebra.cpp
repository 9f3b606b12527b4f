#include "host/geometry/nurbs/surfaceAlgebra.h"

#include "host/geometry/curve/interpolation.h"
#include "host/geometry/curve/knotAlgebra.h"
#include "host/geometry/nurbs/SurfaceEvaluator.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace host::geometry {
namespace {

/// (u, v) of the old surface in the new one.
struct ParameterMap {
    double sumU = 0, sumV = 0; ///< start + end where a direction is reversed
    bool flipsU = false, flipsV = false, swaps = false;

    std::array<double, 2> operator()(double u, double v) const
    {
        u = flipsU ? sumU - u : u;
        v = flipsV ? sumV - v : v;
        return swaps ? std::array{v, u} : std::array{u, v};
    }
    /// True when what ran counter-clockwise now runs clockwise.
    bool mirrors() const { return (flipsU != flipsV) != swaps; }
};

void reverseCurve(CurveData& curve)
{
    SplineRows rows = rowsOf(curve);
    if (!rows.points.empty()) {
        reverse(rows);
        curve = curveOf(rows, curve.rational, curve.dimension);
    }
}

TrimEdge mapped(const TrimEdge& edge, const ParameterMap& map)
{
    TrimEdge result = edge;
    for (CurveData& curve : result.curves2d) {
        for (std::size_t at = 0; at + 2 <= curve.poles.size() && curve.dimension == 2;
             at += curve.stride()) {
            const auto moved = map(curve.poles[at], curve.poles[at + 1]);
            curve.poles[at] = moved[0];
            curve.poles[at + 1] = moved[1];
        }
    }
    if (map.mirrors()) {
        for (CurveData& curve : result.curves2d) {
            reverseCurve(curve);
        }
        std::reverse(result.curves2d.begin(), result.curves2d.end());
        result.reversed = !result.reversed;
    }
    return result;
}

std::shared_ptr<const TrimRegion> mapped(const TrimRegion& region, const ParameterMap& map)
{
    auto result = std::make_shared<TrimRegion>(region);
    for (TrimBoundary& boundary : result->boundaries) {
        for (TrimEdge& edge : boundary.edges) {
            edge = mapped(edge, map);
        }
        if (map.mirrors()) {
            std::reverse(boundary.edges.begin(), boundary.edges.end());
            std::reverse(boundary.edgeFlags.begin(), boundary.edgeFlags.end());
        }
    }
    return result;
}

SurfaceData exchanged(const SurfaceData& surface)
{
    // The rows along u, read as rows along v.
    const SplineRows rows = rowsOf(surface, SurfaceDirection::U);
    SurfaceData pattern = surface;
    std::swap(pattern.degreeU, pattern.degreeV);
    std::swap(pattern.formU, pattern.formV);
    std::swap(pattern.knotsU, pattern.knotsV);
    return surfaceOf(rows, pattern, SurfaceDirection::V);
}

/// Positions in which samples of a direction lie.
std::vector<double> samplesOf(const KnotVector& knots)
{
    constexpr std::size_t kPerSpan = 6;
    constexpr std::size_t kMost = 256;
    const std::vector<double> breaks = knots.breaks();
    const std::size_t perSpan = std::clamp<std::size_t>(kMost / breaks.size(), 1, kPerSpan);
    std::vector<double> samples;
    for (std::size_t i = 0; i + 1 < breaks.size(); ++i) {
        for (std::size_t s = 0; s < perSpan; ++s) {
            samples.push_back(breaks[i] + (breaks[i + 1] - breaks[i]) * static_cast<double>(s) /
                                              static_cast<double>(perSpan));
        }
    }
    samples.push_back(breaks.back());
    return samples;
}

double distanceTo(const SurfaceEvaluator& surface, const SurfaceParameters& at, const Vec3d& target)
{
    const Vec3d away = surface.point(at.u, at.v) - target;
    return dot(away, away);
}

/// Half the squared distance: its slopes, and its second derivatives or what stands for them.
struct Slopes {
    double u = 0, v = 0, uu = 0, uv = 0, vv = 0;
};

Slopes slopesAt(const SurfaceEvaluator& surface, const SurfaceParameters& at, const Vec3d& target)
{
    const SurfacePoint here = surface.evaluate(at.u, at.v);
    const Vec3d away = here.position - target;
    return {dot(away, here.du), dot(away, here.dv), dot(here.du, here.du), dot(here.du, here.dv),
            dot(here.dv, here.dv)};
}

/// The second derivatives by differences of the slopes.
void addBend(const SurfaceEvaluator& surface, const SurfaceParameters& at, const Vec3d& target,
             Slopes& slopes)
{
    constexpr double kStep = 1e-6;
    const double du = kStep * (surface.endU() - surface.startU());
    const double dv = kStep * (surface.endV() - surface.startV());
    const Slopes east = slopesAt(surface, {at.u + du, at.v}, target);
    const Slopes west = slopesAt(surface, {at.u - du, at.v}, target);
    const Slopes north = slopesAt(surface, {at.u, at.v + dv}, target);
    const Slopes south = slopesAt(surface, {at.u, at.v - dv}, target);
    slopes.uu = (east.u - west.u) / (2 * du);
    slopes.uv = (north.u - south.u) / (2 * dv);
    slopes.vv = (north.v - south.v) / (2 * dv);
}

/// True where the way down leads over the edge of a domain that does not wrap.
bool isHeld(const KnotVector& knots, double parameter, double slope)
{
    return knots.form() != SplineForm::Periodic &&
           ((parameter <= knots.start() && slope > 0) || (parameter >= knots.end() && slope < 0));
}

/// The step down the slopes; a direction that is held is left out.
SurfaceParameters stepDown(const SurfaceEvaluator& surface, const SurfaceParameters& at,
                           const Slopes& slopes)
{
    const bool holdsU = isHeld(surface.knotsU(), at.u, slopes.u) || !(slopes.uu > 0);
    const bool holdsV = isHeld(surface.knotsV(), at.v, slopes.v) || !(slopes.vv > 0);
    const double determinant = slopes.uu * slopes.vv - slopes.uv * slopes.uv;
    if (!holdsU && !holdsV && determinant > 1e-12 * slopes.uu * slopes.vv) {
        return {(slopes.v * slopes.uv - slopes.u * slopes.vv) / determinant,
                (slopes.u * slopes.uv - slopes.v * slopes.uu) / determinant};
    }
    if (!holdsU && (holdsV || slopes.u * slopes.u * slopes.vv >= slopes.v * slopes.v * slopes.uu)) {
        return {-slopes.u / slopes.uu, 0};
    }
    return {0, holdsV ? 0 : -slopes.v / slopes.vv};
}

SurfaceParameters moved(const SurfaceEvaluator& surface, const SurfaceParameters& at,
                        const SurfaceParameters& step, double share)
{
    return {surface.knotsU().inside(at.u + step.u * share),
            surface.knotsV().inside(at.v + step.v * share)};
}

/// Down the slopes by shorter and shorter steps, until none leads nearer.
SurfaceParameters descended(const SurfaceEvaluator& surface, SurfaceParameters at,
                            const Vec3d& target)
{
    constexpr int kRounds = 60;
    constexpr double kShortest = 1.0 / 256;
    double least = distanceTo(surface, at, target);
    for (int round = 0; round < kRounds; ++round) {
        const SurfaceParameters step = stepDown(surface, at, slopesAt(surface, at, target));
        double share = 1;
        double found = least;
        for (; share >= kShortest && !(found < least); share /= 2) {
            found = distanceTo(surface, moved(surface, at, step, share), target);
        }
        if (!(found < least)) {
            break;
        }
        at = moved(surface, at, step, share * 2);
        least = found;
    }
    return at;
}

/// Newton's steps as long as they lessen the slopes: distances alone tell the place to half of the
/// digits only.
SurfaceParameters polished(const SurfaceEvaluator& surface, SurfaceParameters at,
                           const Vec3d& target)
{
    const auto steepness = [](const Slopes& slopes) {
        return (slopes.uu > 0 ? slopes.u * slopes.u / slopes.uu : 0) +
               (slopes.vv > 0 ? slopes.v * slopes.v / slopes.vv : 0);
    };
    Slopes slopes = slopesAt(surface, at, target);
    for (int round = 0; round < 8; ++round) {
        Slopes bent = slopes;
        addBend(surface, at, target, bent);
        const SurfaceParameters next = moved(surface, at, stepDown(surface, at, bent), 1);
        const Slopes there = slopesAt(surface, next, target);
        if (!(steepness(there) < steepness(slopes))) {
            break;
        }
        at = next;
        slopes = there;
    }
    return at;
}

} // namespace

SurfaceData reversed(const SurfaceData& surface, Reversal reversal)
{
    const SurfaceEvaluator evaluator(surface);
    if (!evaluator.isValid()) {
        return surface;
    }
    ParameterMap map;
    map.flipsU = reversal == Reversal::U || reversal == Reversal::Both;
    map.flipsV = reversal == Reversal::V || reversal == Reversal::Both;
    map.swaps = reversal == Reversal::Swap;
    map.sumU = evaluator.startU() + evaluator.endU();
    map.sumV = evaluator.startV() + evaluator.endV();
    SurfaceData result = map.swaps ? exchanged(surface) : surface;
    if (map.flipsU) {
        result = changed(result, SurfaceDirection::U, [](SplineRows& rows) { reverse(rows); });
    }
    if (map.flipsV) {
        result = changed(result, SurfaceDirection::V, [](SplineRows& rows) { reverse(rows); });
    }
    result.trims.clear();
    for (const auto& region : surface.trims) {
        if (region != nullptr) {
            result.trims.push_back(mapped(*region, map));
        }
    }
    return result;
}

CurveData isoparametricCurve(const SurfaceData& surface, SurfaceDirection direction,
                             double parameter)
{
    const SplineRows rows = rowsOf(surface, direction);
    if (rows.points.empty()) {
        return {};
    }
    const bool isU = direction == SurfaceDirection::U;
    const KnotVector line(rows.knots, rows.degree, rows.form);
    SplineBasis basis;
    line.evaluateValues(parameter, basis);
    SplineRows curve{isU ? surface.degreeV : surface.degreeU, isU ? surface.formV : surface.formU,
                     1, isU ? surface.knotsV : surface.knotsU,
                     std::vector<HomogeneousPoint>(rows.width)};
    for (std::size_t j = 0; j < rows.width; ++j) {
        for (std::size_t i = 0; i <= rows.order(); ++i) {
            curve.points[j].add(rows.points[(basis.firstCv + i) * rows.width + j], basis.value[i]);
        }
    }
    return curveOf(curve, surface.rational);
}

SurfaceParameters nearestParameters(const SurfaceData& surface, const Vec3d& target)
{
    const SurfaceEvaluator evaluator(surface);
    if (!evaluator.isValid()) {
        return {};
    }
    const std::vector<double> us = samplesOf(evaluator.knotsU());
    const std::vector<double> vs = samplesOf(evaluator.knotsV());
    std::vector<Vec3d> grid(us.size() * vs.size());
    evaluator.pointGrid(us, vs, grid);
    std::size_t nearest = 0;
    double least = INFINITY;
    for (std::size_t i = 0; i < grid.size(); ++i) {
        const Vec3d away = grid[i] - target;
        if (dot(away, away) < least) {
            least = dot(away, away);
            nearest = i;
        }
    }
    const SurfaceParameters near{us[nearest / vs.size()], vs[nearest % vs.size()]};
    return polished(evaluator, descended(evaluator, near, target), target);
}

SurfaceData offset(const SurfaceData& surface, double distance)
{
    const auto unclosed = [](SplineRows& rows) { rows = clamped(rows); };
    const SurfaceData ends =
        changed(changed(surface, SurfaceDirection::U, unclosed), SurfaceDirection::V, unclosed);
    const SurfaceEvaluator evaluator(ends);
    if (!evaluator.isValid()) {
        return {};
    }
    const auto us = grevilleParameters(ends.knotsU, ends.degreeU);
    const auto vs = grevilleParameters(ends.knotsV, ends.degreeV);
    std::vector<SurfacePoint> grid(us.size() * vs.size());
    evaluator.evaluateGrid(us, vs, grid);
    SurfaceData moved = ends;
    moved.rational = false;
    moved.poles.clear();
    for (const SurfacePoint& point : grid) {
        const Vec3d position = point.position + point.normal * distance;
        moved.poles.insert(moved.poles.end(), {position.x, position.y, position.z});
    }
    const auto through = [](SplineRows& rows) { rows = throughGreville(rows); };
    return changed(changed(moved, SurfaceDirection::U, through), SurfaceDirection::V, through);
}

} // namespace host::geometry
