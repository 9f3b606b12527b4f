#include "host/geometry/deform/nonLinearShapes.h"

#include "host/math/angle.h"

#include <algorithm>
#include <cmath>

namespace host::geometry {
namespace {

double clampedTo(const AxisRange& range, double y)
{
    return std::fmin(std::fmax(y, range.low), range.high);
}

/// Where y lies between the ends of a range, 0..1.
double wayAlong(const AxisRange& range, double y)
{
    const double length = range.high - range.low;
    return length > 0 ? (clampedTo(range, y) - range.low) / length : 0;
}

double between(double from, double to, double way)
{
    return from + (to - from) * way;
}

double waveAt(double place, double wavelength, double offset)
{
    const double length = wavelength != 0 ? wavelength : 1;
    return sineCosine(2 * std::numbers::pi * (place / length + offset)).sine;
}

/// How much is left at `distance` (0..1) from the middle: 1 without dropoff.
double leftOver(double dropoff, double distance)
{
    return dropoff >= 0 ? 1 - dropoff * distance : 1 + dropoff * (1 - distance);
}

/// y becomes an arc about a centre on the x axis; beyond the range it goes on straight.
Vec3d moved(const BendShape& shape, const Vec3d& p)
{
    const double y = clampedTo(shape.range, p.y);
    const SineCosine turn = sineCosine(shape.curvature * y);
    const double rest = p.y - y;
    constexpr double kStraight = 1e-9;
    if (std::fabs(shape.curvature) < kStraight) {
        return p;
    }
    const double radius = 1 / shape.curvature;
    const double fromCentre = radius - p.x;
    return {radius - fromCentre * turn.cosine + rest * turn.sine,
            fromCentre * turn.sine + rest * turn.cosine, p.z};
}

Vec3d moved(const TwistShape& shape, const Vec3d& p)
{
    const SineCosine turn =
        sineCosine(between(shape.startAngle, shape.endAngle, wayAlong(shape.range, p.y)));
    return {p.x * turn.cosine + p.z * turn.sine, p.y, p.z * turn.cosine - p.x * turn.sine};
}

Vec3d moved(const FlareShape& shape, const Vec3d& p)
{
    const double way = wayAlong(shape.range, p.y);
    const double bulge = 1 + shape.curve * 4 * way * (1 - way);
    return {p.x * between(shape.startX, shape.endX, way) * bulge, p.y,
            p.z * between(shape.startZ, shape.endZ, way) * bulge};
}

Vec3d moved(const SineShape& shape, const Vec3d& p)
{
    const double y = clampedTo(shape.range, p.y);
    const double end = y < 0 ? -shape.range.low : shape.range.high;
    const double distance = end > 0 ? std::fmin(std::fabs(y) / end, 1) : 0;
    const double height = shape.amplitude * leftOver(shape.dropoff, distance);
    return {p.x + height * waveAt(y, shape.wavelength, shape.offset), p.y, p.z};
}

Vec3d moved(const SquashShape& shape, const Vec3d& p)
{
    const double stretch = shape.factor >= 0 ? 1 + shape.factor : 1 / (1 - shape.factor);
    const double way = wayAlong(shape.range, p.y);
    const double most = std::clamp(shape.maxExpandPos, 0.01, 0.99);
    const double side = way < most ? way / most : (1 - way) / (1 - most);
    const double profile = side * (2 - side); // 0 at the ends, level where it is most
    const double thin = 1 / std::sqrt(stretch) - 1;
    const double width = 1 + thin * shape.expand * profile;
    const double y = clampedTo(shape.range, p.y);
    return {p.x * width, y * stretch + (p.y - y), p.z * width};
}

Vec3d moved(const WaveShape& shape, const Vec3d& p)
{
    const double radius = std::sqrt(p.x * p.x + p.z * p.z);
    const double low = std::fmin(shape.minRadius, shape.maxRadius);
    const AxisRange range{low, shape.maxRadius};
    if (radius < range.low || radius > range.high) {
        return p;
    }
    const double height = shape.amplitude * leftOver(shape.dropoff, wayAlong(range, radius));
    return {p.x, p.y + height * waveAt(radius, shape.wavelength, shape.offset), p.z};
}

bool isFinite(const Vec3d& v)
{
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

} // namespace

bool isWellKnown(const NonLinearShape& shape)
{
    if (const auto* const flare = std::get_if<FlareShape>(&shape)) {
        return flare->curve == 0;
    }
    if (const auto* const squash = std::get_if<SquashShape>(&shape)) {
        return squash->factor == 0;
    }
    if (const auto* const sine = std::get_if<SineShape>(&shape)) {
        return sine->amplitude == 0;
    }
    if (const auto* const wave = std::get_if<WaveShape>(&shape)) {
        return wave->amplitude == 0;
    }
    if (const auto* const twist = std::get_if<TwistShape>(&shape)) {
        return twist->startAngle == 0 && twist->endAngle == 0;
    }
    return true;
}

void applyShape(const NonLinearShape& shape, std::span<Vec3d> points)
{
    std::visit(
        [&](const auto& one) {
            for (Vec3d& point : points) {
                const Vec3d result = moved(one, point);
                point = isFinite(result) ? result : point;
            }
        },
        shape);
}

} // namespace host::geometry
