#include "host/geometry/hair/HairSpine.h"

#include "host/geometry/hair/guidePoints.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace host::geometry {
namespace {

/// Turns along the whole hair where the clump's curl is 1. The rate is not published.
constexpr double kCurlTurns = 2;

bool isFinite(const Vec3d& vector)
{
    return std::isfinite(vector.x) && std::isfinite(vector.y) && std::isfinite(vector.z);
}

double finiteOr(double number, double fallback)
{
    return std::isfinite(number) ? number : fallback;
}

/// The slope of the curve at a point of the guide, per segment.
Vec3d slopeAt(const HairGuide& guide, std::size_t i)
{
    const std::vector<Vec3d>& points = guide.points;
    if (i == 0) {
        const Vec3d first = points[1] - points[0];
        return guide.isAlongNormal && dot(guide.normal, guide.normal) > 0
                   ? normalized(guide.normal) * length(first)
                   : first;
    }
    return i + 1 == points.size() ? points[i] - points[i - 1]
                                  : (points[i + 1] - points[i - 1]) * 0.5;
}

/// Pieces that a segment of the guide is cut into.
std::size_t piecesOf(const HairGuide& guide, double subSegments)
{
    const double wanted = std::clamp(std::floor(finiteOr(subSegments, 0)), 0.0, kMaxSubSegments);
    const std::size_t room = (kMaxSpinePoints - 1) / (guide.points.size() - 1);
    return std::clamp<std::size_t>(room, 1, static_cast<std::size_t>(wanted) + 1);
}

std::vector<Vec3d> refinedPoints(const HairGuide& guide, double subSegments)
{
    const std::vector<Vec3d>& points = guide.points;
    const std::size_t pieces = piecesOf(guide, subSegments);
    if (pieces == 1) {
        return points;
    }
    std::vector<Vec3d> refined;
    refined.reserve((points.size() - 1) * pieces + 1);
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
        const Vec3d slope0 = slopeAt(guide, i);
        const Vec3d slope1 = slopeAt(guide, i + 1);
        refined.push_back(points[i]);
        for (std::size_t piece = 1; piece < pieces; ++piece) {
            const double t = static_cast<double>(piece) / static_cast<double>(pieces);
            const double rest = 1 - t;
            refined.push_back(points[i] + (points[i + 1] - points[i]) * (t * t * (3 - 2 * t)) +
                              slope0 * (t * rest * rest) - slope1 * (t * t * rest));
        }
    }
    refined.push_back(points.back());
    return refined;
}

/// A unit vector at right angles to a unit axis.
Vec3d anyAcross(const Vec3d& axis)
{
    const double x = std::fabs(axis.x);
    const double y = std::fabs(axis.y);
    const double z = std::fabs(axis.z);
    const Vec3d least = x <= y && x <= z ? Vec3d{1, 0, 0}
                        : y <= z         ? Vec3d{0, 1, 0}
                                         : Vec3d{0, 0, 1};
    return normalized(cross(axis, least));
}

/// What of a vector is at right angles to a unit axis, at unit length.
Vec3d across(const Vec3d& vector, const Vec3d& axis)
{
    constexpr double kLeast = 1e-12;
    const Vec3d rest = vector - axis * dot(vector, axis);
    return dot(rest, rest) > kLeast * dot(vector, vector) ? normalized(rest) : anyAcross(axis);
}

/// The direction of the hair at a point; the one before where it does not move.
Vec3d directionAt(const std::vector<Vec3d>& points, std::size_t i, const Vec3d& before)
{
    const Vec3d& low = points[i > 0 ? i - 1 : 0];
    const Vec3d& high = points[std::min(i + 1, points.size() - 1)];
    const Vec3d way = high - low;
    return dot(way, way) > 0 ? normalized(way) : before;
}

void addSections(const HairGuide& guide, double bendFollow, const std::vector<Vec3d>& points,
                 HairSpine& spine)
{
    const Vec3d up = dot(guide.normal, guide.normal) > 0 ? normalized(guide.normal) : Vec3d{};
    Vec3d direction = dot(up, up) > 0 ? up : Vec3d{0, 1, 0};
    direction = directionAt(points, 0, direction);
    const Vec3d root = dot(up, up) > 0 ? up : direction;
    Vec3d along = guide.tangent;
    Vec3d axis = root;
    for (std::size_t i = 0; i < points.size(); ++i) {
        direction = directionAt(points, i, direction);
        const Vec3d blended = root * (1 - bendFollow) + direction * bendFollow;
        axis = dot(blended, blended) > 0 ? normalized(blended) : axis;
        along = across(along, axis);
        spine.points[i].position = points[i];
        spine.points[i].along = along;
        spine.points[i].across = cross(axis, along);
        spine.length += i > 0 ? length(points[i] - points[i - 1]) : 0;
    }
}

void addSettings(const HairGuide& guide, const HairStyle& style, HairSpine& spine)
{
    using std::numbers::pi;
    const Ramp<double>& profile =
        guide.clumpWidthScale.isEmpty() ? style.clumpWidthScale : guide.clumpWidthScale;
    const double width = finiteOr(guide.clumpWidth.value_or(style.clumpWidth), 0) *
                         finiteOr(guide.clumpWidthFactor, 1);
    const double step = 1 / static_cast<double>(spine.points.size() - 1);
    double turns = finiteOr(style.clumpTwist, 0) + finiteOr(guide.clumpTwistOffset, 0);
    double rateBefore = 0;
    for (std::size_t i = 0; i < spine.points.size(); ++i) {
        const double t = static_cast<double>(i) * step;
        const double rate = kCurlTurns * (finiteOr(style.clumpCurl.at(t, 0.5), 0.5) - 0.5);
        turns += i > 0 ? (rateBefore + rate) / 2 * step : 0;
        rateBefore = rate;
        SpinePoint& point = spine.points[i];
        point.radius = width * finiteOr(profile.at(t, 1), 0);
        point.squeeze = 1 - std::clamp(finiteOr(style.clumpFlatness.at(t, 0), 0), 0.0, 1.0);
        point.turn = 2 * pi * turns;
        point.displacement = finiteOr(style.displacementScale.at(t, 1), 0);
    }
}

} // namespace

std::size_t spineSize(const HairGuide& guide, const HairStyle& style)
{
    return guide.points.size() < 2
               ? 0
               : (guide.points.size() - 1) * piecesOf(guide, style.subSegments) + 1;
}

bool isSpineLimited(const HairGuide& guide, const HairStyle& style)
{
    // A guide of as many points as are made of a curve has, all but surely, been cut to them.
    const double wanted = std::floor(finiteOr(style.subSegments, 0)) + 1;
    return guide.points.size() >= kMaxGuidePoints ||
           (guide.points.size() > 1 &&
            wanted > static_cast<double>(piecesOf(guide, style.subSegments)) && wanted > 1);
}

HairSpine makeSpine(const HairGuide& guide, const HairStyle& style)
{
    HairSpine spine;
    if (guide.points.size() < 2 || guide.points.size() > kMaxSpinePoints ||
        !std::all_of(guide.points.begin(), guide.points.end(), isFinite) ||
        !isFinite(guide.normal) || !isFinite(guide.tangent)) {
        return spine;
    }
    const std::vector<Vec3d> points = refinedPoints(guide, style.subSegments);
    spine.points.resize(points.size());
    addSections(guide, std::clamp(finiteOr(style.bendFollow, 1), 0.0, 1.0), points, spine);
    addSettings(guide, style, spine);
    return spine;
}

} // namespace host::geometry
