#include "host/geometry/nurbs/skin.h"

#include "host/geometry/curve/CurveEvaluator.h"
#include "host/geometry/curve/interpolation.h"
#include "host/geometry/curve/knotAlgebra.h"
#include "host/geometry/curve/rebuild.h"
#include "host/geometry/nurbs/productSurface.h"
#include "host/geometry/nurbs/surfaceRows.h"
#include "host/math/angle.h"

#include <algorithm>
#include <cmath>

namespace host::geometry {
namespace {

using Points = std::vector<HomogeneousPoint>;

double meanDistance(const SplineRows& a, const SplineRows& b)
{
    double sum = 0;
    for (std::size_t i = 0; i < a.points.size(); ++i) {
        sum += length(a.points[i].projected() - b.points[i].projected());
    }
    return sum / static_cast<double>(a.points.size());
}

/// Where the curves stand across the surface.
std::vector<double> stations(const std::vector<SplineRows>& curves, const LoftOptions& options)
{
    const std::size_t count = curves.size() + (options.isClosed ? 1 : 0);
    std::vector<double> result{0};
    for (std::size_t i = 1; i < count; ++i) {
        const double gap =
            options.isUniform ? 1 : meanDistance(curves[i - 1], curves[i % curves.size()]);
        result.push_back(result.back() + (gap > 0 && std::isfinite(gap) ? gap : 1));
    }
    return result;
}

/// The slope at the first of three rows of the parabola through them; of two rows that of the line.
/// `a`, `b`, `c` are positions of rows, in order from the end.
Points endSlopes(const std::vector<double>& t, const Points& points, std::size_t width,
                 std::size_t a, std::size_t b, std::size_t c)
{
    Points slopes(width);
    const double ab = t[b] - t[a];
    const double ac = t[c] - t[a];
    for (std::size_t j = 0; j < width; ++j) {
        HomogeneousPoint& slope = slopes[j];
        if (b == c) {
            slope.add(points[b * width + j], 1 / ab);
            slope.add(points[a * width + j], -1 / ab);
            continue;
        }
        // Derivative of Lagrange's polynomial at t[a].
        slope.add(points[a * width + j], -(ab + ac) / (ab * ac));
        slope.add(points[b * width + j], ac / (ab * (ac - ab)));
        slope.add(points[c * width + j], -ab / (ac * (ac - ab)));
    }
    return slopes;
}

/// A polygon through rows.
SplineRows linearThrough(const std::vector<double>& t, Points points, std::size_t width,
                         bool isClosed)
{
    SplineRows rows{1, isClosed ? SplineForm::Periodic : SplineForm::Open, width, t, {}};
    if (isClosed) {
        const Points first(points.begin(), points.begin() + static_cast<std::ptrdiff_t>(width));
        points.insert(points.end(), first.begin(), first.end());
    }
    rows.points = std::move(points);
    return rows;
}

SplineRows cubicAcross(const std::vector<double>& t, const Points& points, std::size_t width)
{
    const std::size_t last = t.size() - 1;
    const std::size_t third = std::min<std::size_t>(2, last);
    const Points first = endSlopes(t, points, width, 0, 1, third);
    const Points end = endSlopes(t, points, width, last, last - 1, last - third);
    return cubicThrough(t, points, width, first, end);
}

/// One row of `points` for every station.
SplineRows across(const std::vector<double>& t, const Points& points, std::size_t width,
                  const LoftOptions& options)
{
    if (options.degree == 1) {
        return linearThrough(t, points, width, options.isClosed);
    }
    return options.isClosed && t.size() > 3 ? periodicCubicThrough(t, points, width)
                                            : cubicAcross(t, points, width);
}

void divideSpans(SplineRows& rows, const std::vector<double>& t, std::int32_t parts)
{
    parts = std::clamp(parts, 1, 64);
    const std::size_t insertions = t.size() * static_cast<std::size_t>(parts - 1);
    const std::size_t cvs = rows.cvCount() + insertions;
    if (!canHold(cvs, rows.width) || insertions > kMaxInsertionWork / (cvs * rows.width)) {
        return; // the same shape with fewer knots
    }
    for (std::size_t i = 0; i + 1 < t.size(); ++i) {
        for (std::int32_t part = 1; part < parts; ++part) {
            insertKnot(rows, t[i] + (t[i + 1] - t[i]) * part / parts, 1);
        }
    }
}

/// The surface whose rows across are `rows`, each as wide as `along` has control points.
SurfaceData surfaceAcross(const SplineRows& rows, const SplineRows& along, bool isRational)
{
    SurfaceData pattern;
    pattern.rational = isRational;
    pattern.degreeU = along.degree;
    pattern.formU = along.form;
    pattern.knotsU = along.knots;
    return surfaceOf(rows, pattern, SurfaceDirection::V);
}

/// Two unit vectors across a path, carried along it.
struct PathFrame {
    Vec3d origin, tangent, x, y;
};

Vec3d anyAcross(const Vec3d& tangent)
{
    const Vec3d size{std::fabs(tangent.x), std::fabs(tangent.y), std::fabs(tangent.z)};
    const Vec3d helper = size.x <= size.y && size.x <= size.z ? Vec3d{1, 0, 0}
                         : size.y <= size.z                   ? Vec3d{0, 1, 0}
                                                              : Vec3d{0, 0, 1};
    return normalized(cross(tangent, helper));
}

/// Carries a vector from one place of a path to the next without roll: reflected in the plane
/// between the places, then in the plane between the tangents (the double reflection of Wang,
/// Juettler, Zheng and Liu, 2008).
Vec3d carried(const Vec3d& vector, const PathFrame& from, const Vec3d& origin, const Vec3d& tangent)
{
    const auto reflected = [](const Vec3d& v, const Vec3d& normal) {
        const double size = dot(normal, normal);
        return size > 0 ? v - normal * (2 * dot(normal, v) / size) : v;
    };
    const Vec3d way = origin - from.origin;
    return reflected(reflected(vector, way), tangent - reflected(from.tangent, way));
}

std::vector<double> placesOf(const CurveEvaluator& path)
{
    const std::vector<double> breaks = path.knots().breaks();
    const std::size_t perSpan =
        std::clamp<std::size_t>(kMaxProfiles / breaks.size(), 1, kProfilesPerSpan);
    std::vector<double> places;
    for (std::size_t i = 0; i + 1 < breaks.size(); ++i) {
        for (std::size_t s = 0; s < perSpan; ++s) {
            const double share = static_cast<double>(s) / static_cast<double>(perSpan);
            places.push_back(breaks[i] + (breaks[i + 1] - breaks[i]) * share);
        }
    }
    places.push_back(breaks.back());
    if (places.size() > kMaxProfiles) {
        places.clear();
    }
    return places;
}

std::vector<PathFrame> framesAlong(const CurveEvaluator& path, const std::vector<double>& places)
{
    std::vector<PathFrame> frames;
    for (const double u : places) {
        const CurvePoint here = path.evaluate(u);
        const Vec3d tangent = normalized(here.first);
        PathFrame frame{here.position, tangent, {}, {}};
        if (frames.empty()) {
            frame.x = anyAcross(tangent);
        } else if (dot(tangent, tangent) > 0) {
            frame.x = carried(frames.back().x, frames.back(), here.position, tangent);
        } else {
            frame.tangent = frames.back().tangent;
            frame.x = frames.back().x;
        }
        frame.y = cross(frame.tangent, frame.x);
        frames.push_back(frame);
    }
    return frames;
}

/// The profile's points as they stand at a place of the path.
void addProfile(const SplineRows& profile, const PathFrame& first, const PathFrame& here,
                const ExtrudeOptions& options, double share, Points& points)
{
    const Vec3d base = options.movesToPath ? options.pivot : first.origin;
    const SineCosine roll = sineCosine(options.rotation * share);
    const double scale = 1 + (options.scale - 1) * share;
    const Vec3d x = options.turns ? here.x : first.x;
    const Vec3d y = options.turns ? here.y : first.y;
    const Vec3d z = options.turns ? here.tangent : first.tangent;
    for (const HomogeneousPoint& own : profile.points) {
        const Vec3d away = (own.projected() - base) * scale;
        const double ax = dot(away, first.x);
        const double ay = dot(away, first.y);
        const Vec3d placed = here.origin + x * (ax * roll.cosine - ay * roll.sine) +
                             y * (ax * roll.sine + ay * roll.cosine) + z * dot(away, first.tangent);
        points.push_back(homogeneous(placed, own.w));
    }
}

} // namespace

SurfaceData lofted(std::vector<SplineRows> curves, const LoftOptions& options, bool isRational)
{
    if (curves.size() < 2 || !makeCompatible(curves) ||
        curves.size() > kMaxSplineCvs / curves.front().cvCount()) {
        return {};
    }
    const std::vector<double> t = stations(curves, options);
    Points points;
    for (const SplineRows& curve : curves) {
        points.insert(points.end(), curve.points.begin(), curve.points.end());
    }
    const bool isRing = options.isClosed && (options.degree == 1 || t.size() > 3);
    LoftOptions usable = options;
    usable.isClosed = isRing;
    const std::vector<double> used(t.begin(), t.end() - (options.isClosed && !isRing ? 1 : 0));
    SplineRows rows = across(used, points, curves.front().cvCount(), usable);
    if (rows.points.empty()) {
        return {};
    }
    divideSpans(rows, used, options.sectionSpans);
    return surfaceAcross(rows, curves.front(), isRational);
}

SurfaceData extruded(const SplineRows& profile, const SplineRows& path,
                     const ExtrudeOptions& options, bool isRational)
{
    if (profile.points.empty() || path.points.empty()) {
        return {};
    }
    const CurveEvaluator along(curveOf(path, true));
    if (!along.isValid()) {
        return {};
    }
    const bool isPlain = !options.turns && options.rotation == 0 && options.scale == 1;
    if (isPlain) {
        const Vec3d origin = options.movesToPath ? options.pivot : along.point(along.start());
        return translated(profile, path, origin, isRational);
    }
    const std::vector<double> places = placesOf(along);
    if (places.size() < 2 || places.size() > kMaxSplineCvs / profile.cvCount()) {
        return {};
    }
    const std::vector<PathFrame> frames = framesAlong(along, places);
    Points points;
    for (std::size_t i = 0; i < frames.size(); ++i) {
        const double share = (places[i] - places.front()) / (places.back() - places.front());
        addProfile(profile, frames.front(), frames[i], options, share, points);
    }
    const SplineRows rows = path.degree == 1
                                ? linearThrough(places, points, profile.cvCount(), false)
                                : cubicAcross(places, points, profile.cvCount());
    return rows.points.empty() ? SurfaceData() : surfaceAcross(rows, profile, isRational);
}

} // namespace host::geometry
