#include "host/geometry/nurbs/primitives.h"

#include "host/geometry/curve/arcs.h"
#include "host/geometry/curve/interpolation.h"
#include "host/geometry/nurbs/productSurface.h"

#include <algorithm>
#include <cmath>

namespace host::geometry {
namespace {

using std::numbers::pi;

std::int32_t usableDegree(std::int32_t degree)
{
    return degree == 1 ? 1 : 3;
}

std::int32_t usableCount(std::int32_t count)
{
    return std::clamp(count, 1, kMaxPatches);
}

/// The point at a distance from the axis and a height along it.
Vec3d pointAt(const RoundPrimitive& primitive, const Frame& frame, double out, double height)
{
    return primitive.pivot + frame.x * out + frame.axis * height;
}

SurfaceData turned(const SplineRows& profile, const RoundPrimitive& primitive)
{
    const SplineRows around =
        nearArc(primitive.startSweep, primitive.endSweep, usableCount(primitive.sections),
                usableDegree(primitive.degree));
    return revolved(profile, around, primitive.pivot, frameOf(primitive.axis).axis, false);
}

SurfaceData turnedExactly(const SplineRows& profile, const RoundPrimitive& primitive)
{
    return revolved(profile, exactArc(primitive.startSweep, primitive.endSweep), primitive.pivot,
                    frameOf(primitive.axis).axis, true);
}

/// A circle in the half plane through the axis, its centre `out` away from it.
SplineRows profileCircle(const RoundPrimitive& primitive, const SplineRows& arc, double out,
                         double radius)
{
    const Frame frame = frameOf(primitive.axis);
    return placed(arc, pointAt(primitive, frame, out, 0), frame.x * radius, frame.axis * radius);
}

SplineRows profileLine(const RoundPrimitive& primitive, double outEnd, std::int32_t spans,
                       std::int32_t degree)
{
    const Frame frame = frameOf(primitive.axis);
    const double height = primitive.radius * primitive.heightRatio;
    const Vec3d from = pointAt(primitive, frame, primitive.radius, -height / 2);
    const Vec3d to = pointAt(primitive, frame, outEnd, height / 2);
    const double size = length(to - from);
    return lineRows(from, to, 0, size > 0 && std::isfinite(size) ? size : 1, spans, degree);
}

} // namespace

SplineRows lineRows(const Vec3d& from, const Vec3d& to, double start, double end,
                    std::int32_t spans, std::int32_t degree)
{
    SplineRows line{degree, SplineForm::Open, 1, {}, {}};
    const auto count = static_cast<std::size_t>(usableCount(spans));
    line.knots = uniformKnots(degree, count, start, end);
    for (const double u : grevilleParameters(line.knots, degree)) {
        const double share = (u - start) / (end - start);
        line.points.push_back(homogeneous(from * (1 - share) + to * share, 1));
    }
    return line;
}

SurfaceData sphereSurface(const RoundPrimitive& primitive)
{
    const SplineRows arc =
        nearArc(-pi / 2, pi / 2, usableCount(primitive.spans), usableDegree(primitive.degree));
    return turned(profileCircle(primitive, arc, 0, primitive.radius), primitive);
}

SurfaceData cylinderSurface(const RoundPrimitive& primitive)
{
    return turned(
        profileLine(primitive, primitive.radius, primitive.spans, usableDegree(primitive.degree)),
        primitive);
}

SurfaceData coneSurface(const RoundPrimitive& primitive)
{
    return turned(profileLine(primitive, 0, primitive.spans, usableDegree(primitive.degree)),
                  primitive);
}

SurfaceData torusSurface(const RoundPrimitive& primitive)
{
    const SplineRows arc = nearArc(-pi / 2, primitive.minorSweep - pi / 2,
                                   usableCount(primitive.spans), usableDegree(primitive.degree));
    return turned(
        profileCircle(primitive, arc, primitive.radius, primitive.radius * primitive.heightRatio),
        primitive);
}

SurfaceData exactSphere(const RoundPrimitive& primitive)
{
    return turnedExactly(profileCircle(primitive, exactArc(-pi / 2, pi / 2), 0, primitive.radius),
                         primitive);
}

SurfaceData exactCylinder(const RoundPrimitive& primitive)
{
    return turnedExactly(profileLine(primitive, primitive.radius, 1, 1), primitive);
}

SurfaceData exactCone(const RoundPrimitive& primitive)
{
    return turnedExactly(profileLine(primitive, 0, 1, 1), primitive);
}

SurfaceData exactTorus(const RoundPrimitive& primitive)
{
    const SplineRows arc = exactArc(-pi / 2, primitive.minorSweep - pi / 2);
    return turnedExactly(
        profileCircle(primitive, arc, primitive.radius, primitive.radius * primitive.heightRatio),
        primitive);
}

SurfaceData exactDisc(const RoundPrimitive& primitive)
{
    const Vec3d rim = pointAt(primitive, frameOf(primitive.axis), primitive.radius, 0);
    return turnedExactly(lineRows(rim, primitive.pivot, 0, 1, 1, 1), primitive);
}

SurfaceData planeSurface(const PlanePrimitive& primitive)
{
    const std::int32_t degree = usableDegree(primitive.degree);
    const Frame frame = frameOf(primitive.axis);
    const Vec3d across = frame.x * (primitive.width / 2);
    const Vec3d along = frame.y * (primitive.width * primitive.lengthRatio / 2);
    const SplineRows u = lineRows(primitive.pivot - across, primitive.pivot + across, 0, 1,
                                  primitive.patchesU, degree);
    const SplineRows v = lineRows(along * -1, along, 0, 1, primitive.patchesV, degree);
    return translated(u, v, {}, false);
}

std::array<SurfaceData, 6> boxSurfaces(const PlanePrimitive& primitive, double heightRatio)
{
    const Frame frame = frameOf(primitive.axis);
    const Vec3d x = frame.x * (primitive.width / 2);
    const Vec3d y = frame.axis * (primitive.width * heightRatio / 2);
    const Vec3d z = frame.y * (primitive.width * primitive.lengthRatio / -2);
    const std::int32_t degree = usableDegree(primitive.degree);
    const auto side = [&](const Vec3d& out, const Vec3d& u, const Vec3d& v) {
        const Vec3d middle = primitive.pivot + out;
        return translated(lineRows(middle - u, middle + u, 0, 1, primitive.patchesU, degree),
                          lineRows(v * -1, v, 0, 1, primitive.patchesV, degree), {}, false);
    };
    // Each side's u x v points outwards.
    return {side(y, x, z * -1),      side(y * -1, x, z), side(z, x, y),
            side(z * -1, x * -1, y), side(x, z * -1, y), side(x * -1, z, y)};
}

} // namespace host::geometry
