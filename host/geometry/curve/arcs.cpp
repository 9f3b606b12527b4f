#include "host/geometry/curve/arcs.h"

#include "host/geometry/curve/interpolation.h"
#include "host/math/angle.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace host::geometry {
namespace {

using std::numbers::pi;

/// Which leaves a gap below 1e-10 of the radius.
constexpr std::int32_t kMostSectionsByTolerance = 256;

HomogeneousPoint onCircle(double angle, double radius = 1)
{
    const SineCosine turn = sineCosine(angle);
    return {turn.cosine * radius, turn.sine * radius, 0, 1};
}

/// The sweep as it is made: none for numbers that are not finite, at most a turn.
double usableSweep(double start, double end)
{
    const double sweep = end - start;
    return std::isfinite(sweep) ? std::clamp(sweep, -2 * pi, 2 * pi) : 0;
}

bool isFullTurn(double sweep)
{
    return std::fabs(sweep) >= 2 * pi - kFullTurnTolerance;
}

SplineRows periodicArc(double start, double sweep, std::int32_t sections)
{
    SplineRows arc{3, SplineForm::Periodic, 1, {}, {}};
    const double step = sweep / sections;
    const double radius = 3 / (2 + sineCosine(step).cosine);
    for (std::int32_t i = 0; i < sections + 3; ++i) {
        // Control point 1 stands at the start; the last three are the first ones again.
        arc.points.push_back(onCircle(start + step * (i % sections - 1), radius));
    }
    for (std::int32_t i = -2; i <= sections + 2; ++i) {
        arc.knots.push_back(i);
    }
    return arc;
}

SplineRows polygonArc(double start, double sweep, std::int32_t sections, bool isFull)
{
    SplineRows arc{1, isFull ? SplineForm::Periodic : SplineForm::Open, 1, {}, {}};
    for (std::int32_t i = 0; i <= sections; ++i) {
        arc.points.push_back(onCircle(start + sweep / sections * (isFull ? i % sections : i)));
        arc.knots.push_back(i);
    }
    return arc;
}

HomogeneousPoint tangent(double angle, double size)
{
    const SineCosine turn = sineCosine(angle);
    return {-turn.sine * size, turn.cosine * size, 0, 0};
}

SplineRows openCubicArc(double start, double sweep, std::int32_t sections)
{
    std::vector<double> parameters;
    std::vector<HomogeneousPoint> points;
    for (std::int32_t i = 0; i <= sections; ++i) {
        parameters.push_back(i);
        points.push_back(onCircle(start + sweep / sections * i));
    }
    // The chord of one section is 2 sin(step / 2), along the tangent in the sense of the sweep.
    const double chord = 2 * sineCosine(sweep / sections / 2).sine;
    const HomogeneousPoint first = tangent(start, chord);
    const HomogeneousPoint last = tangent(start + sweep, chord);
    return cubicThrough(parameters, points, 1, {&first, 1}, {&last, 1});
}

/// Distance from the unit circle in the middle of a section of the periodic arc, where the weights
/// of the four control points are 1, 23, 23, 1 over 48.
double gapOf(double step)
{
    const double radius = 3 / (2 + sineCosine(step).cosine);
    const double middle =
        radius * (46 * sineCosine(step / 2).cosine + 2 * sineCosine(step * 1.5).cosine) / 48;
    return std::fabs(middle - 1);
}

} // namespace

SplineRows nearArc(double start, double end, std::int32_t sections, std::int32_t degree)
{
    const double sweep = usableSweep(start, end);
    const bool isFull = isFullTurn(sweep);
    start = std::isfinite(start) ? start : 0;
    sections = std::clamp(sections, isFull ? 3 : 1, kMaxSections);
    if (degree == 1) {
        return polygonArc(start, sweep, sections, isFull);
    }
    return isFull ? periodicArc(start, sweep, sections) : openCubicArc(start, sweep, sections);
}

SplineRows exactArc(double start, double end)
{
    const double sweep = usableSweep(start, end);
    start = std::isfinite(start) ? start : 0;
    const bool isFull = isFullTurn(sweep);
    const auto parts = std::max(1, static_cast<int>(std::ceil(std::fabs(sweep) / (pi / 2) - 1e-9)));
    const double step = sweep / parts;
    const double weight = sineCosine(step / 2).cosine;
    SplineRows arc{2, isFull ? SplineForm::Closed : SplineForm::Open, 1, {}, {}};
    for (int i = 0; i <= parts; ++i) {
        if (i > 0) {
            // The corner between two points of the circle: at radius 1 / weight, times the weight.
            HomogeneousPoint corner = onCircle(start + step * (i - 0.5));
            corner.w = weight;
            arc.points.push_back(corner);
        }
        arc.points.push_back(onCircle(start + step * (isFull ? i % parts : i)));
        arc.knots.insert(arc.knots.end(), 2, i);
    }
    return arc;
}

std::int32_t sectionsWithin(double tolerance, double radius, double sweep)
{
    std::int32_t sections = 4;
    while (sections < kMostSectionsByTolerance &&
           !(gapOf(sweep / sections) * std::fabs(radius) <= tolerance)) {
        sections *= 2;
    }
    return sections;
}

Frame frameOf(const Vec3d& axis)
{
    Frame frame;
    const double size = length(axis);
    if (!(size > 0) || !std::isfinite(size)) {
        return frame;
    }
    const Vec3d a = axis * (1 / size);
    // The rotation of +y into a by the shortest way: x moves by the angle about y x a. Towards -y
    // the turn is about z.
    if (a.y < -1 + 1e-12) {
        frame.x = {-1, 0, 0};
    } else {
        const double k = 1 / (1 + a.y);
        frame.x = {1 - a.x * a.x * k, -a.x, -a.x * a.z * k};
    }
    frame.axis = a;
    frame.y = cross(a, frame.x);
    return frame;
}

SplineRows placed(const SplineRows& arc, const Vec3d& center, const Vec3d& vx, const Vec3d& vy)
{
    SplineRows result = arc;
    for (HomogeneousPoint& point : result.points) {
        const Vec3d position = vx * point.x + vy * point.y + center * point.w;
        point = {position.x, position.y, position.z, point.w};
    }
    return result;
}

} // namespace host::geometry
